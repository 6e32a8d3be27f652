#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/SettingsTestSupport.h"
#include "settings/DocumentRasterSettings.h"
#include "shell/ErrorCodes.h"

namespace {

using Writes = std::vector<std::string>;

class DocumentSettingsWrite : public fake::HostTest {
 protected:
  // An RGB document at level 11 with an empty settings entry and no preferences: its settings are
  // type 4, 72 ppi, no anti-aliasing, no spot colours, no mask, padding 36.
  void freshDocument() {
    host.colorMode = kDWRGBColorMode;
    host.level = 11;
    host.preferences.clear();
    host.document->entries.clear();
    host.settingsEntry(true);
    host.writes.clear();
    host.recorded.clear();
  }
  fake::Dictionary* entry() { return host.settingsEntry(); }
};

struct ChangeCase {
  const char* name;
  void (*change)(RasterizeSettings&);
  Writes writes;
};

TEST_F(DocumentSettingsWrite, WritesOnlyWhatChangedToTheDocumentThenThePreferences) {
  const ChangeCase cases[] = {
      {"nothing", [](RasterizeSettings&) {}, {}},
      {"type 0", [](RasterizeSettings& s) { s.type = 0; }, {"settings:colr", "pref:Type"}},
      {"type 1 in RGB is stored as 0", [](RasterizeSettings& s) { s.type = 1; }, {"settings:colr", "pref:Type"}},
      {"type 5 in RGB equals the current 4", [](RasterizeSettings& s) { s.type = 5; }, {}},
      {"resolution 150.7", [](RasterizeSettings& s) { s.resolution = 150.7; }, {"settings:dpi.", "pref:DPI"}},
      {"antialiasing 1", [](RasterizeSettings& s) { s.antialiasing = 1; }, {"settings:alis", "pref:Alias"}},
      {"spot colours on", [](RasterizeSettings& s) { s.preserveSpotColors = 1; }, {"settings:spot", "pref:Spot"}},
      {"spot colours 0 stays", [](RasterizeSettings& s) { s.preserveSpotColors = 0; }, {}},
      {"mask 2 is on", [](RasterizeSettings& s) { s.createClippingMask = 2; }, {"settings:mask", "pref:Mask"}},
      {"padding 10", [](RasterizeSettings& s) { s.padding = 10; }, {"settings:padd", "pref:Padding"}},
      {"options, reserved and forEffect are not stored",
       [](RasterizeSettings& s) {
         s.options = 0xFFFF;
         s.reserved = 9;
         s.forEffect = 0;
       },
       {}},
      {"everything",
       [](RasterizeSettings& s) {
         s.type = 3;
         s.resolution = 300;
         s.antialiasing = 4;
         s.preserveSpotColors = 1;
         s.createClippingMask = 1;
         s.padding = 0;
       },
       {"settings:colr", "pref:Type", "settings:dpi.", "pref:DPI", "settings:alis", "pref:Alias", "settings:spot",
        "pref:Spot", "settings:mask", "pref:Mask", "settings:padd", "pref:Padding"}},
  };
  for (const ChangeCase& c : cases) {
    freshDocument();
    RasterizeSettings s = dw::currentDocumentRasterSettings();
    s.forEffect = 1;
    c.change(s);
    EXPECT_EQ(dw::writeDocumentRasterSettings(&s), kDWNoErr) << c.name;
    EXPECT_EQ(host.writes, c.writes) << c.name;
    EXPECT_EQ(host.outstandingReferences(), 0) << c.name;
  }
}

TEST_F(DocumentSettingsWrite, StoredValuesAndTheirReadBack) {
  struct Case {
    const char* name;
    int16_t mode;
    void (*change)(RasterizeSettings&);
    const char* key;
    const char* preference;
    fake::Value stored;
    void (*readBack)(const RasterizeSettings&, const char*);
  } const cases[] = {
      {"150.7 ppi is stored as 150", kDWRGBColorMode, [](RasterizeSettings& s) { s.resolution = 150.7; }, "dpi.",
       "DPI", fake::Value::ofInteger(150),
       [](const RasterizeSettings& s, const char* n) { EXPECT_EQ(s.resolution, 150.0) << n; }},
      {"RGB in a gray document is stored as Grayscale", kDWGrayColorMode,
       [](RasterizeSettings& s) { s.type = 0; }, "colr", "Type", fake::Value::ofInteger(2),
       [](const RasterizeSettings& s, const char* n) { EXPECT_EQ(s.type, 2) << n; }},
      {"antialiasing 1 is stored on and reads back as 4", kDWRGBColorMode,
       [](RasterizeSettings& s) { s.antialiasing = 1; }, "alis", "Alias", fake::Value::ofBoolean(true),
       [](const RasterizeSettings& s, const char* n) { EXPECT_EQ(s.antialiasing, 4) << n; }},
      {"padding 2.25 is stored as it is", kDWRGBColorMode, [](RasterizeSettings& s) { s.padding = 2.25; }, "padd",
       "Padding", fake::Value::ofReal(2.25),
       [](const RasterizeSettings& s, const char* n) { EXPECT_EQ(s.padding, 2.25) << n; }},
  };
  for (const auto& c : cases) {
    freshDocument();
    host.colorMode = c.mode;
    RasterizeSettings s = dw::currentDocumentRasterSettings();
    c.change(s);
    ASSERT_EQ(dw::writeDocumentRasterSettings(&s), kDWNoErr) << c.name;
    const fake::Value& inDocument = entry()->entries.at(c.key);
    const fake::Value& inPreferences = host.preferences.at(c.preference);
    for (const fake::Value* v : {&inDocument, &inPreferences}) {
      EXPECT_EQ(int(v->kind), int(c.stored.kind)) << c.name;
      EXPECT_EQ(v->integer, c.stored.integer) << c.name;
      EXPECT_EQ(v->boolean, c.stored.boolean) << c.name;
      EXPECT_EQ(v->real, c.stored.real) << c.name;
    }
    c.readBack(dw::currentDocumentRasterSettings(), c.name);
  }
}

TEST_F(DocumentSettingsWrite, ANullRecordIsABadParameter) {
  freshDocument();
  EXPECT_EQ(dw::writeDocumentRasterSettings(nullptr), dw::BadParameterError);
  EXPECT_TRUE(host.writes.empty());
}

TEST_F(DocumentSettingsWrite, TheFirstWriteCreatesTheEntry) {
  freshDocument();
  host.document->entries.clear();
  RasterizeSettings s = dw::currentDocumentRasterSettings();
  s.resolution = 96;
  ASSERT_EQ(dw::writeDocumentRasterSettings(&s), kDWNoErr);
  ASSERT_NE(entry(), nullptr);
  EXPECT_EQ(fake::integerOf(entry(), "dpi."), 96);
  EXPECT_EQ(host.writes, (Writes{"document:DW Auto Rasterize", "settings:dpi.", "pref:DPI"}));
  EXPECT_EQ(host.outstandingReferences(), 0);
}

TEST_F(DocumentSettingsWrite, HostFailuresEndTheWriteAtTheirField) {
  struct Case {
    const char* name;
    void (*setUp)(fake::FakeHost&);
    DWErr result;
    Writes writes;
  } const cases[] = {
      {"document entry write refused",
       [](fake::FakeHost& h) { h.failures["SetInteger dpi."] = fake::kInjected; }, fake::kInjected,
       {"settings:colr", "pref:Type"}},
      {"preference refused", [](fake::FakeHost& h) { h.failures["SetPreference DPI"] = fake::kInjected; },
       fake::kInjected, {"settings:colr", "pref:Type", "settings:dpi."}},
      {"colour mode refused before anything is written",
       [](fake::FakeHost& h) { h.failures["GetColorMode"] = fake::kInjected; }, fake::kInjected, {}},
      {"document dictionary refused: its code at the first change",
       [](fake::FakeHost& h) { h.failures["GetDictionary"] = fake::kInjected; }, fake::kInjected, {}},
      {"settings entry refused: its code at the first change",
       [](fake::FakeHost& h) { h.failures["GetDictEntry DW Auto Rasterize"] = fake::kInjected; }, fake::kInjected, {}},
      {"document without a dictionary fails at the first change",
       [](fake::FakeHost& h) { h.documentHasDictionary = false; }, fake::kNoDictionary, {}},
      {"entry cannot be created",
       [](fake::FakeHost& h) {
         h.document->entries.clear();
         h.failures["CreateDictionary"] = fake::kInjected;
       },
       fake::kInjected, {}},
      {"entry cannot be stored",
       [](fake::FakeHost& h) {
         h.document->entries.clear();
         h.failures["SetDictEntry DW Auto Rasterize"] = fake::kInjected;
       },
       fake::kInjected, {}},
  };
  for (const auto& c : cases) {
    freshDocument();
    host.failures.clear();
    host.documentHasDictionary = true;
    c.setUp(host);
    RasterizeSettings s = dw::currentDocumentRasterSettings();
    s.type = 0;
    s.resolution = 144;
    s.antialiasing = 4;
    EXPECT_EQ(dw::writeDocumentRasterSettings(&s), c.result) << c.name;
    EXPECT_EQ(host.writes, c.writes) << c.name;
    EXPECT_EQ(host.outstandingReferences(), 0) << c.name;
  }
}

TEST_F(DocumentSettingsWrite, AnUnchangedRecordSucceedsEvenWithoutADictionary) {
  freshDocument();
  host.documentHasDictionary = false;
  RasterizeSettings s = dw::currentDocumentRasterSettings();
  EXPECT_EQ(dw::writeDocumentRasterSettings(&s), kDWNoErr);
  EXPECT_TRUE(host.writes.empty());
}

TEST_F(DocumentSettingsWrite, AFailingPaddingPreferenceIsTheResultButTheEventIsStillRecorded) {
  freshDocument();
  host.holdActionSuite(true);
  host.recording = true;
  host.failures["SetPreference Padding"] = fake::kInjected;
  RasterizeSettings s = dw::currentDocumentRasterSettings();
  s.padding = 12;
  EXPECT_EQ(dw::writeDocumentRasterSettings(&s), fake::kInjected);
  EXPECT_EQ(fake::realOf(entry(), "padd"), 12.0);
  ASSERT_EQ(host.recorded.size(), 1u);
  EXPECT_EQ(host.recorded[0].name, "dw_plugin_rasterEffectSettings");
}

TEST_F(DocumentSettingsWrite, RecordsTheSettingsEventOnlyWhileTheHostRecords) {
  struct Case {
    const char* name;
    bool held;
    bool recording;
    size_t events;
  } const cases[] = {
      {"recording", true, true, 1},
      {"not recording", true, false, 0},
      {"no action suite", false, true, 0},
  };
  for (const Case& c : cases) {
    freshDocument();
    host.holdActionSuite(c.held);
    host.recording = c.recording;
    // An unchanged record writes nothing but is still recorded.
    RasterizeSettings s = dw::currentDocumentRasterSettings();
    EXPECT_EQ(dw::writeDocumentRasterSettings(&s), kDWNoErr) << c.name;
    EXPECT_TRUE(host.writes.empty()) << c.name;
    EXPECT_EQ(host.recorded.size(), c.events) << c.name;
    EXPECT_EQ(host.liveBlocks, 0) << c.name;
  }
}

}  // namespace
