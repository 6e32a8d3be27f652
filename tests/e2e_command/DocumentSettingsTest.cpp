// The Document Raster Effects Settings command delivered by the host: what it reads from the
// document and the preferences, what it writes back, and the usage data it reports.
#include <gtest/gtest.h>

#include "tests/e2e_command/CommandHost.h"

namespace e2e_command {
namespace {

const char kEntry[] = "DW Auto Rasterize";
const char kPrefix[] = "Rasterize/Defaults";

DictionaryPtr settingsEntry(const Document& doc) { return doc.dictionary()->getDictionary(kEntry); }

// What the dialog shows for a document without settings: its colour mode, its level and the
// preferences decide.
TEST(DocumentSettings, DefaultsComeFromTheModeTheLevelAndThePreferences) {
  struct Case {
    const char* name;
    ColorMode mode;
    int32_t level;
    std::function<void(Preferences&)> preferences;
    int32_t type;
    double resolution;
    int16_t antialiasing;
    int32_t spot, mask;
    double padding;
  };
  const auto none = [](Preferences&) {};
  const Case cases[] = {
      {"gray, old level", ColorMode::Gray, 0, none, 6, 72, 0, 0, 0, 36},
      {"RGB, level 11", ColorMode::Rgb, 11, none, 4, 72, 0, 0, 0, 36},
      {"CMYK, level 12", ColorMode::Cmyk, 12, none, 5, 72, 0, 1, 0, 36},
      {"preferences fill every field",
       ColorMode::Rgb, 12,
       [](Preferences& p) {
         p.setInteger(kPrefix, "Type", 0);
         p.setInteger(kPrefix, "DPI", 150);
         p.setBoolean(kPrefix, "Alias", true);
         p.setBoolean(kPrefix, "Spot", false);
         p.setBoolean(kPrefix, "Mask", true);
         p.setReal(kPrefix, "Padding", 10.0);
       },
       0, 150, 4, 0, 1, 10},
      {"a preferred type follows the document's mode", ColorMode::Gray, 0,
       [](Preferences& p) { p.setInteger(kPrefix, "Type", 5); }, 6, 72, 0, 0, 0, 36},
      {"spot colours of an old document ignore the preference", ColorMode::Rgb, 11,
       [](Preferences& p) { p.setBoolean(kPrefix, "Spot", true); }, 4, 72, 0, 0, 0, 36},
  };
  for (const Case& c : cases) {
    CommandHost h;
    h.doc->setColorMode(c.mode);
    h.doc->setLevelNumber(c.level);
    c.preferences(h.host.preferences());
    RasterizeSettings shown{};
    ASSERT_EQ(h.documentSettings({}, 1, &shown), 0) << c.name << ": a cancelled dialog is no failure";
    EXPECT_EQ(shown.type, c.type) << c.name;
    EXPECT_EQ(shown.resolution, c.resolution) << c.name;
    EXPECT_EQ(shown.antialiasing, c.antialiasing) << c.name;
    EXPECT_EQ(shown.preserveSpotColors, c.spot) << c.name;
    EXPECT_EQ(shown.createClippingMask, c.mask) << c.name;
    EXPECT_EQ(shown.padding, c.padding) << c.name;
    EXPECT_EQ(settingsEntry(*h.doc), nullptr) << c.name << ": cancelled, nothing written";
  }
}

TEST(DocumentSettings, TheDocumentsEntryComesBeforeThePreferences) {
  CommandHost h;
  DictionaryPtr entry = Dictionary::create();
  entry->setInteger("dpi.", 300);
  entry->setReal("padd", 0.0);
  h.doc->dictionary()->setDictionary(kEntry, entry);
  h.host.preferences().setInteger(kPrefix, "DPI", 150);
  h.host.preferences().setReal(kPrefix, "Padding", 10.0);
  RasterizeSettings shown{};
  ASSERT_EQ(h.documentSettings({}, 1, &shown), 0);
  EXPECT_EQ(shown.resolution, 300.0);
  EXPECT_EQ(shown.padding, 0.0);
}

// Only the fields the dialog changed reach the document's entry and the preferences.
TEST(DocumentSettings, OnlyWhatChangedIsWritten) {
  struct Written {
    std::string entryKey;
    std::string preference;
    Dictionary::Value value;
  };
  struct Case {
    const char* name;
    ColorMode mode;
    Edit edit;
    std::vector<Written> written;
  };
  const Case cases[] = {
      {"nothing changed", ColorMode::Rgb, [](RasterizeSettings&) {}, {}},
      {"150.7 ppi is kept as 150", ColorMode::Rgb, [](RasterizeSettings& s) { s.resolution = 150.7; },
       {{"dpi.", "DPI", int32_t(150)}}},
      {"RGB in a gray document is stored as gray", ColorMode::Gray, [](RasterizeSettings& s) { s.type = 0; },
       {{"colr", "Type", int32_t(2)}}},
      {"anti-aliasing and padding", ColorMode::Rgb,
       [](RasterizeSettings& s) {
         s.antialiasing = 1;
         s.padding = 12.5;
       },
       {{"alis", "Alias", true}, {"padd", "Padding", 12.5}}},
  };
  for (const Case& c : cases) {
    CommandHost h;
    h.doc->setColorMode(c.mode);
    ASSERT_EQ(h.documentSettings(c.edit), 0) << c.name;
    const DictionaryPtr entry = settingsEntry(*h.doc);
    ASSERT_NE(entry, nullptr) << c.name << ": the first write makes the entry";
    EXPECT_EQ(entry->size(), c.written.size()) << c.name;
    EXPECT_EQ(h.host.preferences().values().size(), c.written.size()) << c.name;
    for (const Written& w : c.written) {
      ASSERT_NE(entry->find(w.entryKey), nullptr) << c.name << ": " << w.entryKey;
      EXPECT_TRUE(*entry->find(w.entryKey) == w.value) << c.name << ": " << w.entryKey;
      const auto stored = h.host.preferences().values().find({kPrefix, w.preference});
      ASSERT_NE(stored, h.host.preferences().values().end()) << c.name << ": " << w.preference;
      EXPECT_EQ(std::visit([](const auto& v) { return Dictionary::Value(v); }, stored->second), w.value)
          << c.name << ": " << w.preference;
    }
    EXPECT_EQ(h.doc->nextUndoText(), "Undo Rasterize") << c.name;
  }
}

// The event the dialog reports when it closes, confirmed or not.
TEST(DocumentSettings, TheDialogReportsUsageData) {
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  struct Case {
    const char* name;
    Edit edit;
    int32_t result;
    Attributes attributes;
  };
  const Case cases[] = {
      {"the defaults, cancelled", {}, 1,
       {{"Color Model", "RGB"}, {"Resolution", "72"}, {"Background", "Transparent"}, {"Create Clipping Mask", "Off"},
        {"Add Around Object", "36.00"}, {"Anti-Alias", "Off"}, {"Preserve Spot Color", "Off"}}},
      {"changed and confirmed",
       [](RasterizeSettings& s) {
         s.type = 3;
         s.resolution = 299.6;
         s.padding = 10;
         s.antialiasing = 4;
         s.createClippingMask = 1;
         s.preserveSpotColors = 1;
       },
       0,
       {{"Color Model", "Bitmap"}, {"Resolution", "300"}, {"Background", "White"}, {"Create Clipping Mask", "On"},
        {"Add Around Object", "Custom"}, {"Anti-Alias", "On"}, {"Preserve Spot Color", "On"}}},
      {"no padding", [](RasterizeSettings& s) { s.padding = 0; }, 0,
       {{"Color Model", "RGB"}, {"Resolution", "72"}, {"Background", "Transparent"}, {"Create Clipping Mask", "Off"},
        {"Add Around Object", "0.00"}, {"Anti-Alias", "Off"}, {"Preserve Spot Color", "Off"}}},
  };
  for (const Case& c : cases) {
    CommandHost h;
    ASSERT_EQ(h.documentSettings(c.edit, c.result), 0) << c.name;
    ASSERT_EQ(h.host.usage().events().size(), 1u) << c.name;
    const UsageEvent& event = h.host.usage().events().front();
    EXPECT_EQ(event.name, "Document Raster Effects Settings") << c.name;
    EXPECT_EQ(event.attributes, c.attributes) << c.name;
  }
}

}  // namespace
}  // namespace e2e_command
