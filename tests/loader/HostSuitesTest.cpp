// The reference host's own suites and test controls, called as a plug-in calls them.
#include <gtest/gtest.h>

#include <string>

#include "host/all_suites.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"
#include "refhost/suites/Placeholder.h"
#include "shell/HostSuites.h"

namespace {

using refhost::Host;

template <typename Suite>
const Suite& acquire(Host& host, const char* name, int32_t version) {
  const void* table = nullptr;
  EXPECT_EQ(host.basicSuite()->AcquireSuite(name, version, &table), 0) << name;
  return *static_cast<const Suite*>(table);
}

TEST(HostRegistry, EveryRequiredSuiteIsOffered) {
  Host host;
  const dw::SuiteTable required = dw::requiredSuiteTable();
  for (size_t i = 0; i < required.count; ++i)
    EXPECT_NE(host.suites().find(required.rows[i].name, required.rows[i].version), nullptr) << required.rows[i].name;
}

// A placeholder answers 'HNIM' where a function returns an error code and 0 elsewhere, never a
// false success.
TEST(HostRegistry, PlaceholderTablesAnswerNotImplemented) {
  using refhost::placeholder::N;
  using refhost::placeholder::Z;
  const DWBlendStyleSuite table = refhost::placeholder::placeholderTable<DWBlendStyleSuite>(N, Z, Z);
  EXPECT_EQ(table.SetBlendFlag(nullptr, 1), refhost::kHostNotImplemented);
  EXPECT_EQ(table.GetBlendValue(nullptr), 0u);
  EXPECT_EQ(table.GetDocumentBlendValue(), 0u);
}

TEST(HostRegistry, AcquireAndReleaseAreCountedByNameAndExactVersion) {
  Host host;
  const void* table = nullptr;
  EXPECT_EQ(host.basicSuite()->AcquireSuite(kDWMenuSuite, kDWMenuSuiteVersion + 1, &table), refhost::kHostSuiteNotFound);
  EXPECT_EQ(table, nullptr);
  EXPECT_EQ(host.basicSuite()->AcquireSuite("DW No Such Suite", 1, &table), refhost::kHostSuiteNotFound);
  EXPECT_EQ(host.basicSuite()->ReleaseSuite(kDWMenuSuite, kDWMenuSuiteVersion), refhost::kHostNotHeld);
  ASSERT_EQ(host.basicSuite()->AcquireSuite(kDWMenuSuite, kDWMenuSuiteVersion, &table), 0);
  EXPECT_EQ(host.suites().held(kDWMenuSuite, kDWMenuSuiteVersion), 1);
  EXPECT_EQ(host.basicSuite()->ReleaseSuite(kDWMenuSuite, kDWMenuSuiteVersion), 0);
  EXPECT_EQ(host.suites().held(kDWMenuSuite, kDWMenuSuiteVersion), 0);
}

TEST(HostRegistry, AWithheldSuiteCannotBeAcquired) {
  Host host;
  host.controls().withholdSuite(kDWUserSuite);
  const void* table = &host;
  EXPECT_EQ(host.basicSuite()->AcquireSuite(kDWUserSuite, kDWUserSuiteVersion, &table), refhost::kHostSuiteNotFound);
  EXPECT_EQ(table, nullptr);
  host.controls().restoreSuite(kDWUserSuite);
  EXPECT_EQ(host.basicSuite()->AcquireSuite(kDWUserSuite, kDWUserSuiteVersion, &table), 0);
}

TEST(HostRegistry, OnlyOneHostAtATime) {
  Host host;
  EXPECT_THROW(Host(), refhost::HostError);
  EXPECT_EQ(&Host::current(), &host);
}

TEST(TestControls, TheNthCountedCallFailsOnce) {
  Host host;
  const auto& blocks = acquire<DWBlockSuite>(host, kDWBlockSuite, kDWBlockSuiteVersion);
  constexpr DWErr kInjected = refhost::hostCode("TEST");
  host.controls().failCall(2, kInjected, kDWBlockSuite, "AllocateBlock");
  void* first = nullptr;
  void* second = &host;
  void* third = nullptr;
  EXPECT_EQ(blocks.AllocateBlock(16, &first), 0);
  EXPECT_EQ(blocks.DisposeBlock(first), 0) << "other functions are not counted towards n";
  EXPECT_EQ(blocks.AllocateBlock(16, &second), kInjected);
  EXPECT_EQ(second, &host) << "an injected failure does no work";
  EXPECT_EQ(blocks.AllocateBlock(16, &third), 0);
  EXPECT_TRUE(host.controls().failureDelivered());
  EXPECT_EQ(blocks.DisposeBlock(third), 0);
}

TEST(TestControls, BlockCapsRefuseLargeAndExcessAllocations) {
  Host host;
  const auto& blocks = acquire<DWBlockSuite>(host, kDWBlockSuite, kDWBlockSuiteVersion);
  host.controls().blockSizeCap = 1000;
  host.controls().blockTotalCap = 1500;
  void* a = nullptr;
  void* b = nullptr;
  EXPECT_EQ(blocks.AllocateBlock(1001, &a), refhost::kHostOutOfMemory);
  EXPECT_EQ(a, nullptr);
  EXPECT_EQ(blocks.AllocateBlock(1000, &a), 0);
  EXPECT_EQ(blocks.AllocateBlock(600, &b), refhost::kHostOutOfMemory) << "would pass the total";
  EXPECT_EQ(blocks.AllocateBlock(500, &b), 0);
  EXPECT_EQ(host.memory().outstandingWorkingBytes(), 1500u);
  EXPECT_EQ(blocks.DisposeBlock(a), 0);
  EXPECT_EQ(blocks.DisposeBlock(a), refhost::kHostBadParameter) << "freed twice";
  EXPECT_EQ(blocks.DisposeBlock(b), 0);
  EXPECT_EQ(host.memory().outstandingWorkingBytes(), 0u);
}

TEST(UnicodeStrings, LocalisableStringsFallBackToTheTextAfterTheFirstEquals) {
  Host host;
  const auto& strings = acquire<DWUnicodeStringSuite>(host, kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion);
  host.strings().setTranslation("$$$/Test/Known", "Bekannt");
  struct Case {
    const char* source;
    const char* text;
  };
  const Case cases[] = {
      {"$$$/Rasterize/Str/Undo=Undo Rasterize", "Undo Rasterize"},
      {"$$$/Rasterize/Str/11008=Resolution (ppi): ", "Resolution (ppi): "},
      {"$$$/Test/Equals=a=b", "a=b"},
      {"$$$/Test/Known=Known", "Bekannt"},
      {"$$$/Test/Empty=", ""},
      {"plain text", "plain text"},
  };
  for (const Case& c : cases) {
    DWUnicodeString string = nullptr;
    ASSERT_EQ(strings.NewFromLocalizable(c.source, &string), 0) << c.source;
    int32_t length = -1;
    ASSERT_EQ(strings.GetBytes(string, kDWPlatformEncoding, nullptr, 0, &length), 0) << c.source;
    std::string text(size_t(length), '?');
    ASSERT_EQ(strings.GetBytes(string, kDWPlatformEncoding, &text[0], length, &length), 0) << c.source;
    EXPECT_EQ(text, c.text) << c.source;
    EXPECT_EQ(strings.IsEmpty(string) != 0, std::string(c.text).empty()) << c.source;
    strings.Dispose(string);
  }
  EXPECT_EQ(host.strings().live(), 0u);
}

TEST(UnicodeStrings, BytesAreCutToTheCapacityAndUnknownHandlesRefused) {
  Host host;
  const auto& strings = acquire<DWUnicodeStringSuite>(host, kDWUnicodeStringSuite, kDWUnicodeStringSuiteVersion);
  DWUnicodeString string = nullptr;
  ASSERT_EQ(strings.NewFromBytes("abcdef", 6, kDWUTF8Encoding, &string), 0);
  char buffer[4] = {'x', 'x', 'x', 'x'};
  int32_t length = 0;
  EXPECT_EQ(strings.GetBytes(string, kDWPlatformEncoding, buffer, 3, &length), 0);
  EXPECT_EQ(length, 6);
  EXPECT_EQ(std::string(buffer, 4), "abcx");
  DWUnicodeString copy = nullptr;
  EXPECT_EQ(strings.Copy(string, &copy), 0);
  strings.Dispose(string);
  EXPECT_EQ(strings.GetBytes(string, kDWPlatformEncoding, nullptr, 0, &length), refhost::kHostBadParameter);
  EXPECT_EQ(strings.GetBytes(copy, kDWPlatformEncoding, nullptr, 0, &length), 0);
  EXPECT_EQ(strings.NewFromBytes("x", 1, 99, &string), refhost::kHostBadParameter) << "unknown encoding";
  strings.Dispose(copy);
}

TEST(UserSuite, AlertsAreRecordedAndQuestionsAnswered) {
  Host host;
  const auto& user = acquire<DWUserSuite>(host, kDWUserSuite, kDWUserSuiteVersion);
  DWUnicodeString text = host.strings().create("Careful");
  std::vector<std::string> heard;
  host.ui().onAlert = [&](const refhost::Alert& alert) { heard.push_back(alert.text); };
  user.ErrorAlert(text);
  user.WarningAlert(text);
  EXPECT_EQ(user.QuestionAlert(text, 1, 0), 1) << "the question's own default";
  host.controls().questionAnswer = false;
  EXPECT_EQ(user.QuestionAlert(text, 1, 0), 0);
  host.controls().questionAnswers = {true};
  EXPECT_EQ(user.QuestionAlert(text, 0, 0), 1) << "a queued answer comes first";
  EXPECT_EQ(user.QuestionAlert(text, 1, 0), 0);
  ASSERT_EQ(host.ui().alerts().size(), 6u);
  EXPECT_EQ(host.ui().alerts()[0].kind, refhost::Alert::Kind::Error);
  EXPECT_EQ(host.ui().alerts()[1].kind, refhost::Alert::Kind::Warning);
  EXPECT_EQ(host.ui().alerts()[2].kind, refhost::Alert::Kind::Question);
  EXPECT_EQ(heard.size(), 6u);
  host.strings().dispose(text);
}

TEST(UserSuite, ProgressAndCancellation) {
  Host host;
  const auto& user = acquire<DWUserSuite>(host, kDWUserSuite, kDWUserSuiteVersion);
  DWUnicodeString text = host.strings().create("Working");
  host.controls().cancelAfterProgressUpdates = 3;
  EXPECT_EQ(user.SetProgressText(text), 0);
  user.UpdateProgress(1, 10);
  user.UpdateProgress(2, 10);
  EXPECT_EQ(user.Cancelled(), 0);
  user.UpdateProgress(3, 10);
  EXPECT_NE(user.Cancelled(), 0);
  EXPECT_EQ(host.ui().progress().text, "Working");
  EXPECT_EQ(host.ui().progress().current, 3);
  user.CloseProgress();
  EXPECT_FALSE(host.ui().progress().open);
  DWUnicodeString number = nullptr;
  ASSERT_EQ(user.FormatNumber(72.126, 2, &number), 0);
  EXPECT_EQ(*host.strings().text(number), "72.13");
  host.strings().dispose(number);
  host.strings().dispose(text);
}

TEST(ActionManagerSuite, TypedValuesComeBackAsStored) {
  Host host;
  const auto& actions = acquire<DWActionManagerSuite>(host, kDWActionManagerSuite, kDWActionManagerSuiteVersion);
  DWActionParamBlock block = nullptr;
  ASSERT_EQ(actions.NewParamBlock(&block), 0);
  EXPECT_EQ(actions.SetEnumerated(block, 1, "CMYK", 1), 0);
  EXPECT_EQ(actions.SetInteger(block, 2, 300), 0);
  EXPECT_EQ(actions.SetBoolean(block, 3, 7), 0);
  EXPECT_EQ(actions.SetUnitReal(block, 4, 0x2350786C, 36.5), 0);

  char name[3];
  int32_t value = 0;
  EXPECT_EQ(actions.GetEnumerated(block, 1, name, sizeof name, &value), 0);
  EXPECT_EQ(std::string(name), "CM") << "cut to the capacity, terminated";
  EXPECT_EQ(value, 1);
  EXPECT_EQ(actions.GetEnumerated(block, 1, nullptr, 0, &value), 0);
  EXPECT_EQ(actions.GetInteger(block, 2, &value), 0);
  EXPECT_EQ(value, 300);
  DWBool flag = 0;
  EXPECT_EQ(actions.GetBoolean(block, 3, &flag), 0);
  EXPECT_EQ(flag, 1);
  uint32_t unit = 0;
  double real = 0;
  EXPECT_EQ(actions.GetUnitReal(block, 4, &unit, &real), 0);
  EXPECT_EQ(unit, 0x2350786Cu);
  EXPECT_EQ(real, 36.5);

  EXPECT_EQ(actions.GetInteger(block, 9, &value), refhost::kHostNotFound);
  EXPECT_EQ(actions.GetInteger(block, 1, &value), refhost::kHostWrongType);
  EXPECT_EQ(actions.DisposeParamBlock(block), 0);
  EXPECT_EQ(actions.GetInteger(block, 2, &value), refhost::kHostBadParameter) << "disposed";
}

TEST(ActionManagerSuite, EventsAreRecordedOnlyWhileRecording) {
  Host host;
  const auto& actions = acquire<DWActionManagerSuite>(host, kDWActionManagerSuite, kDWActionManagerSuiteVersion);
  DWActionParamBlock block = nullptr;
  ASSERT_EQ(actions.NewParamBlock(&block), 0);
  actions.SetInteger(block, 2, 72);
  EXPECT_EQ(actions.RecordEvent("unknown_event", 3, block), refhost::kHostNotFound);
  refhost::ActionEventRecord event;
  event.name = "known_event";
  ASSERT_EQ(host.actions().registerEvent(event), 0);
  DWBool recording = 1;
  EXPECT_EQ(actions.IsRecording(&recording), 0);
  EXPECT_EQ(recording, 0);
  EXPECT_EQ(actions.RecordEvent("known_event", 3, block), 0);
  EXPECT_TRUE(host.actions().recorded().empty());
  host.actions().recording = true;
  EXPECT_EQ(actions.RecordEvent("known_event", 3, block), 0);
  actions.DisposeParamBlock(block);
  ASSERT_EQ(host.actions().recorded().size(), 1u);
  EXPECT_EQ(host.actions().recorded()[0].dialogState, 3);
  EXPECT_EQ(host.actions().recorded()[0].parameters.values.at(2).integer, 72) << "the host keeps its own copy";
}

TEST(DevUtilsSuite, OnlyKeptLogsHaveTheirOwnHandle) {
  Host host;
  const auto& dev = acquire<DWDevUtilsSuite>(host, kDWDevUtilsSuite, kDWDevUtilsSuiteVersion);
  EXPECT_EQ(dev.GetLog("DWPerformance.log"), dev.GetLog(nullptr)) << "not kept: the default log";
  host.logs().keep("DWPerformance.log");
  DWLogHandle log = dev.GetLog("DWPerformance.log");
  EXPECT_NE(log, dev.GetLog(nullptr));
  EXPECT_EQ(log, dev.GetLog("DWPerformance.log"));
  dev.WriteLine(log, "%12u\t%s\t(%s)", 42u, "Rasterize", "End");
  EXPECT_EQ(host.logs().lines("DWPerformance.log"), std::vector<std::string>{"          42\tRasterize\t(End)"});
  const DWTimeStamp start = dev.GetStartStamp();
  EXPECT_GE(dev.DurationMilliseconds(dev.Difference(dev.ReadClock(dev.GetClock()), start)), 0u);
  EXPECT_EQ(dev.DurationMilliseconds(dev.Difference(start + 2500, start)), 2u);
}

TEST(MenuSuite, ItemsNeedAKnownGroupAndGroupsAUniqueName) {
  Host host;
  const auto& menus = acquire<DWMenuSuite>(host, kDWMenuSuite, kDWMenuSuiteVersion);
  EXPECT_EQ(menus.AddMenuGroup("Mine", 0, "No Such Group", nullptr), refhost::kHostNotFound);
  EXPECT_EQ(menus.AddMenuGroup("Mine", 0, "Object Utilities", nullptr), 0);
  EXPECT_EQ(menus.AddMenuGroup("Mine", 0, "Object Utilities", nullptr), refhost::kHostDuplicate);
  const DWMenuItemData data = {"Mine", "$$$/Test=Item"};
  DWMenuItemHandle item = nullptr;
  EXPECT_EQ(menus.AddMenuItem(nullptr, "item", &data, 0, &item), refhost::kHostBadParameter)
      << "no such plug-in";
  EXPECT_EQ(menus.UpdateMenuItemAutomatically(item, 1, 0, 0, 0, 0, 0, 0), refhost::kHostBadParameter);
}

TEST(RealMathSuite, MatricesConcatenateFirstThenSecond) {
  Host host;
  const auto& math = acquire<DWRealMathSuite>(host, kDWRealMathSuite, kDWRealMathSuiteVersion);
  DWRealMatrix scale, move, both;
  math.SetMatrixScale(&scale, 2, 3);
  math.SetIdentityMatrix(&move);
  math.ConcatTranslate(&move, 10, 20);
  math.ConcatMatrix(&scale, &move, &both);
  const DWRealPoint p = {1, 1};
  DWRealPoint q;
  math.TransformPoint(&both, &p, &q);
  EXPECT_EQ(q.h, 12);
  EXPECT_EQ(q.v, 23);
  DWRealRect empty, a, u;
  math.SetRect(&empty, 0, 0, 0, 0);
  math.SetRect(&a, 1, 5, 4, 2);
  EXPECT_TRUE(math.IsRectEmpty(&empty));
  EXPECT_FALSE(math.IsRectEmpty(&a));
  math.UnionRect(&empty, &a, &u);
  EXPECT_EQ(u.left, 1);
  EXPECT_EQ(u.top, 5);
}

}  // namespace
