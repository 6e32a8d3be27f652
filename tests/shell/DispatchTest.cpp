// The dispatcher as one table: which message reaches which handler, and what it answers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/Dispatch.h"
#include "shell/ErrorCodes.h"
#include "shell/HostSuites.h"
#include "tests/shell/FakeHost.h"

namespace {

std::vector<std::string> gCalled;

// Each recording handler answers a code of its own, so the test also sees the code pass through.
template <int id>
DWErr record(const char* name) {
  gCalled.push_back(name);
  return 0x100 + id;
}

const dw::MessageHandlers kRecording = {
    [](MessageHeader&) { return record<1>("reload"); },
    [](MessageHeader&) { return record<2>("unload"); },
    [](MessageHeader&) { return record<3>("startup"); },
    [](MessageHeader&) { return record<4>("shutdown"); },
    []() { return record<5>("applicationStarted"); },
    [](MenuMessage&) { return record<6>("goMenuItem"); },
    [](DoActionMessage&) { return record<7>("doAction"); },
    [](LiveEffectEditParamMessage&) { return record<8>("editParameters"); },
    [](LiveEffectGoMessage&) { return record<9>("goLive"); },
    [](LiveEffectInterpParamMessage&) { return record<10>("interpolateParameters"); },
    [](LiveEffectGetConversionParamsMessage&) { return record<11>("getConversionParameters"); },
    [](LiveEffectConvertColorMessage&) { return record<12>("convertColorSpace"); },
};

struct Case {
  const char* caller;
  const char* selector;
  const char* notifierType;  // notifier messages only
  bool interactive;
  const char* handler;       // null: none runs and the answer is 0
  DWErr result;
  bool asksInteractive;      // whether the runtime query is asked for this message
};

const Case kCases[] = {
    {"QK Access", "Reload", nullptr, true, "reload", 0x101, false},
    {"QK Access", "Unload", nullptr, true, "unload", 0x102, false},
    {"QK Access", "Startup", nullptr, true, nullptr, 0, false},
    {"QK Access", "reload", nullptr, true, nullptr, 0, false},
    {"QK Interface", "Startup", nullptr, true, "startup", 0x103, false},
    {"QK Interface", "Shutdown", nullptr, true, "shutdown", 0x104, false},
    {"QK Interface", "Reload", nullptr, true, nullptr, 0, false},
    {"DW Notifier", "DW Notify", "DW Application Started Notifier", true, "applicationStarted", 0x105, false},
    {"DW Notifier", "anything", "DW Application Started Notifier", false, "applicationStarted", 0x105, false},
    {"DW Notifier", "DW Notify", "DW Document Changed Notifier", true, nullptr, 0, false},
    {"DW Notifier", "DW Notify", "dw application started notifier", true, nullptr, 0, false},
    {"DW Notifier", "DW Notify", nullptr, true, nullptr, 0, false},
    {"DW Menu", "DW Go", nullptr, true, "goMenuItem", 0x106, true},
    {"DW Menu", "DW Go", nullptr, false, nullptr, 0, true},
    {"DW Menu", "Go", nullptr, true, nullptr, 0, true},
    {"Action Manager", "Do Action", nullptr, true, "doAction", 0x107, true},
    {"Action Manager", "Do Action", nullptr, false, nullptr, 0, true},
    {"DW Action Manager", "Do Action", nullptr, true, nullptr, 0, true},
    {"DW Live Effect", "DW Live Effect Edit Parameters", nullptr, false, "editParameters", 0x108, true},
    {"DW Live Effect", "DW Live Effect Go Live", nullptr, false, "goLive", 0x109, true},
    {"DW Live Effect", "DW Live Effect Interpolate Parameters", nullptr, true, "interpolateParameters", 0x10A, true},
    {"DW Live Effect", "DW Live Effect Get Conversion Parameters", nullptr, true, "getConversionParameters", 0x10B,
     true},
    {"DW Live Effect", "DW Live Effect Convert Color Space", nullptr, true, "convertColorSpace", 0x10C, true},
    {"DW Live Effect", "Go Live", nullptr, true, nullptr, 0, true},
    {"DW Live Effect", "DW Live Effect Go live", nullptr, true, nullptr, 0, true},
    {"dw live effect", "DW Live Effect Go Live", nullptr, true, nullptr, 0, true},
    {"qk access", "Reload", nullptr, true, nullptr, 0, true},
    {"QK Access ", "Reload", nullptr, true, nullptr, 0, true},
    {"QK Suites", "Startup", nullptr, true, nullptr, 0, true},
    {"", "", nullptr, true, nullptr, 0, true},
};

TEST(Dispatch, RoutesEachMessageToItsHandlerOnly) {
  for (const Case& c : kCases) {
    FakeHost host;
    host.interactive = c.interactive;
    dw::gSuites.runtime = static_cast<const DWRuntimeSuite*>(host.dummyTable(kDWRuntimeSuite));
    // A record big enough for every message kind, with a basic suite of its own.
    union {
      NotifierMessage notifier;
      MenuMessage menu;
      DoActionMessage action;
      LiveEffectGoMessage goLive;
      LiveEffectInterpParamMessage interpolate;
    } message = {};
    const DWBasicSuite messageBasic = *host.basic();
    message.notifier.d = host.header();
    message.notifier.d.basicSuite = &messageBasic;
    message.notifier.notifierType = c.notifierType;
    gCalled.clear();

    const std::string name = std::string("\"") + c.caller + "\"/\"" + c.selector + "\"" +
                             (c.notifierType ? std::string(" type \"") + c.notifierType + "\"" : "") +
                             (c.interactive ? " interactive" : " not interactive");
    EXPECT_EQ(dw::dispatchMessage(c.caller, c.selector, &message, kRecording), c.result) << name;
    if (c.handler)
      EXPECT_EQ(gCalled, std::vector<std::string>{c.handler}) << name;
    else
      EXPECT_TRUE(gCalled.empty()) << name;
    EXPECT_EQ(host.interactiveQueries, c.asksInteractive ? 1 : 0) << name;
    EXPECT_EQ(dw::gSuites.basic, &messageBasic) << name;
  }
}

TEST(Dispatch, KeepsTheBasicSuiteOfTheLatestMessageEvenWhenUnrecognised) {
  FakeHost host;
  const DWBasicSuite one = *host.basic(), other = *host.basic();
  MessageHeader first = host.header();
  MessageHeader second = host.header();
  first.basicSuite = &one;
  second.basicSuite = &other;
  dw::dispatchMessage("QK Access", "Reload", &first, kRecording);
  EXPECT_EQ(dw::gSuites.basic, &one);
  dw::dispatchMessage("Nobody", "Nothing", &second, kRecording);
  EXPECT_EQ(dw::gSuites.basic, &other);
}

TEST(Dispatch, MenuAndActionMessagesWithoutARuntimeSuiteAreIgnored) {
  FakeHost host;
  MenuMessage menu = {};
  menu.d = host.header();
  gCalled.clear();
  EXPECT_EQ(dw::dispatchMessage("DW Menu", "DW Go", &menu, kRecording), 0);
  EXPECT_TRUE(gCalled.empty());
}

TEST(Dispatch, NullArgumentsAreRefused) {
  FakeHost host;
  MessageHeader header = host.header();
  EXPECT_EQ(dw::dispatchMessage(nullptr, "Reload", &header, kRecording), dw::BadParameterError);
  EXPECT_EQ(dw::dispatchMessage("QK Access", nullptr, &header, kRecording), dw::BadParameterError);
  EXPECT_EQ(dw::dispatchMessage("QK Access", "Reload", nullptr, kRecording), dw::BadParameterError);
}

TEST(Dispatch, EverySlotOfThePluginsTableIsFilled) {
  const dw::MessageHandlers& handlers = dw::pluginMessageHandlers();
  // Every slot is filled: a null slot would crash the host on that message.
  const void* const* slots = reinterpret_cast<const void* const*>(&handlers);
  for (size_t i = 0; i < sizeof handlers / sizeof(void*); ++i) EXPECT_NE(slots[i], nullptr) << "slot " << i;
}

}  // namespace
