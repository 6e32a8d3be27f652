#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/EffectParameters.h"

namespace {

using fake::Dictionary;
using Writes = std::vector<std::string>;

// The document: RGB, level 11, so its settings are type 4, 72 ppi, no anti-aliasing, no mask,
// padding 36 and spot colours as the case says.
struct Case {
  const char* name;
  bool documentSpot;
  void (*fill)(Dictionary*);
  Writes writes;
};

void matching(Dictionary* d) {
  fake::setInteger(d, "colr", 4);
  fake::setInteger(d, "dpi.", 72);
  fake::setBoolean(d, "alis", false);
  fake::setBoolean(d, "mask", false);
  fake::setReal(d, "padd", 36);
}

class ConversionParameters : public fake::HostTest {};

TEST_F(ConversionParameters, BringTheDictionaryInLineKeyByKey) {
  const Case cases[] = {
      {"empty dictionary", false, [](Dictionary*) {},
       {"p:colr", "p:dpi.", "p:alis", "p:mask", "p:padd", "p:spot"}},
      {"everything matches", false,
       [](Dictionary* d) {
         matching(d);
         fake::setBoolean(d, "spot", false);
       },
       {}},
      {"matching without spot: spot is added", true, matching, {"p:spot"}},
      {"colr differs", false,
       [](Dictionary* d) {
         matching(d);
         fake::setInteger(d, "colr", 0);
         fake::setBoolean(d, "spot", false);
       },
       {"p:colr"}},
      {"spot on while the document says off, nothing else written: kept", false,
       [](Dictionary* d) {
         matching(d);
         fake::setBoolean(d, "spot", true);
       },
       {}},
      {"spot on while the document says off, dpi written: turned off", false,
       [](Dictionary* d) {
         matching(d);
         fake::setInteger(d, "dpi.", 300);
         fake::setBoolean(d, "spot", true);
       },
       {"p:dpi.", "p:spot"}},
      {"spot off while the document says on: turned on", true,
       [](Dictionary* d) {
         matching(d);
         fake::setBoolean(d, "spot", false);
       },
       {"p:spot"}},
      {"alis on while the document says off", false,
       [](Dictionary* d) {
         matching(d);
         fake::setBoolean(d, "alis", true);
         fake::setBoolean(d, "spot", false);
       },
       {"p:alis"}},
      {"mask and padding differ", false,
       [](Dictionary* d) {
         matching(d);
         fake::setBoolean(d, "mask", true);
         fake::setReal(d, "padd", 36.5);
         fake::setBoolean(d, "spot", false);
       },
       {"p:mask", "p:padd"}},
      {"keys of the wrong type count as missing", false,
       [](Dictionary* d) {
         matching(d);
         fake::setReal(d, "dpi.", 72);
         fake::setBoolean(d, "spot", false);
       },
       {"p:dpi."}},
  };
  for (const Case& c : cases) {
    host.colorMode = kDWRGBColorMode;
    host.level = 11;
    host.document->entries.clear();
    fake::setBoolean(host.settingsEntry(true), "spot", c.documentSpot);
    Dictionary* p = host.newDictionary("p");
    c.fill(p);
    host.writes.clear();
    EXPECT_EQ(dw::alignConversionParameters(fake::handleOf(p)), kDWNoErr) << c.name;
    EXPECT_EQ(host.writes, c.writes) << c.name;
    EXPECT_EQ(fake::integerOf(p, "colr"), 4) << c.name;
    EXPECT_EQ(fake::integerOf(p, "dpi."), 72) << c.name;
    EXPECT_EQ(fake::booleanOf(p, "alis"), false) << c.name;
    EXPECT_EQ(fake::booleanOf(p, "mask"), false) << c.name;
    EXPECT_EQ(fake::realOf(p, "padd"), 36.0) << c.name;
    EXPECT_EQ(host.outstandingReferences(), 0) << c.name;
  }
}

TEST_F(ConversionParameters, AntiAliasingFollowsTheDocumentAndDpiIsTruncated) {
  host.colorMode = kDWCMYKColorMode;
  Dictionary* settings = host.settingsEntry(true);
  fake::setBoolean(settings, "alis", true);
  fake::setInteger(settings, "dpi.", 150);
  Dictionary* p = host.newDictionary("p");
  fake::setBoolean(p, "alis", false);
  fake::setInteger(p, "dpi.", 150);
  ASSERT_EQ(dw::alignConversionParameters(fake::handleOf(p)), kDWNoErr);
  EXPECT_EQ(fake::booleanOf(p, "alis"), true);
  EXPECT_EQ(fake::integerOf(p, "colr"), 5);
  EXPECT_EQ(std::count(host.writes.begin(), host.writes.end(), "p:dpi."), 0);
}

TEST_F(ConversionParameters, TheFirstRefusedWriteEndsTheAlignment) {
  Dictionary* p = host.newDictionary("p");
  host.failures["SetBoolean alis"] = fake::kInjected;
  EXPECT_EQ(dw::alignConversionParameters(fake::handleOf(p)), fake::kInjected);
  EXPECT_EQ(host.writes, (Writes{"p:colr", "p:dpi."}));
}

}  // namespace
