#include <memory>
#include <utility>

#include "refhost/loader/ActionPlayback.h"
#include "tests/e2e_command/CommandHost.h"
#include "tests/faults/Scenarios.h"

namespace faults {

namespace {

using namespace e2e_command;

constexpr DWErr kOutOfMemory = hostCode("!MEM");
constexpr DWErr kMaskOutOfMemory = hostCode("!Mmk");

// The settings writer takes a refused dictionary lookup for a missing dictionary or entry, as its
// reader does, and then fails at the first write with the host's answer to a null dictionary.
const std::vector<std::string> kSettingsLookups = {"DW Document Suite/GetDictionary",
                                                   "DW Dictionary Suite/GetDictEntry"};

const char kReverts[] = "the injected code; the document as it was before the command";

// The menu command over art that `arrange` makes and selects; a failure must revert everything.
class CommandRun : public ScenarioRun {
 public:
  CommandRun(const std::function<std::vector<Art*>(CommandHost&)>& arrange, Edit edit)
      : edit_(std::move(edit)) {
    h_.select(arrange(h_));
    before_ = h_.content();
  }
  Host& host() override { return h_.host; }
  DWErr act() override { return h_.rasterize(edit_); }
  std::string checkAfterFailure() override {
    return h_.content() == before_ ? std::string() : "the document differs from before the command";
  }

 private:
  CommandHost h_;
  Edit edit_;
  std::string before_;
};

// A 2 x 2 pixel image placed over (x, y) to (x + 8, y + 8).
Art* placedImage(CommandHost& h, double x, double y) {
  Art* art = h.doc->newArt(ArtKind::Placed, PaintOrder::AboveAll, nullptr);
  auto image = std::make_shared<Image>();
  image->width = 2;
  image->height = 2;
  image->rgba = {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 128};
  art->placed()->image = image;
  art->placed()->bounds = Rect{x, y + 8, x + 8, y};
  art->placed()->matrix = Matrix{};
  return art;
}

struct Selection {
  const char* name;
  std::function<std::vector<Art*>(CommandHost&)> arrange;
};

const std::vector<Selection>& selections() {
  static const std::vector<Selection> list = {
      {"one path", [](CommandHost& h) { return std::vector<Art*>{h.rect(2, 2, 14, 10)}; }},
      {"several paths",
       [](CommandHost& h) { return std::vector<Art*>{h.rect(2, 2, 8, 8), h.rect(6, 4, 14, 12), h.rect(1, 9, 5, 14)}; }},
      {"a group",
       [](CommandHost& h) {
         Art* group = h.group();
         h.rect(2, 2, 8, 8, group);
         h.rect(6, 6, 12, 12, group);
         return std::vector<Art*>{group};
       }},
      {"text", [](CommandHost& h) { return std::vector<Art*>{h.text("Hi", 2, 4), h.rect(1, 1, 12, 3)}; }},
      {"placed art", [](CommandHost& h) { return std::vector<Art*>{placedImage(h, 2, 2), h.rect(4, 4, 12, 12)}; }},
  };
  return list;
}

Edit withMask(bool mask) {
  return [mask](RasterizeSettings& s) {
    s.resolution = 72.0;
    s.createClippingMask = mask ? 1 : 0;
  };
}

using Arrange = std::function<std::vector<Art*>(CommandHost&)>;

Scenario menuCommand(const std::string& what, std::vector<DWErr> mapped, const Arrange& arrange, const Edit& edit) {
  Scenario s;
  s.name = "menu command, " + what;
  s.promise = kReverts;
  s.mapped = std::move(mapped);
  s.make = [arrange, edit] { return std::make_unique<CommandRun>(arrange, edit); };
  return s;
}

Scenario menuCommand(const Selection& selection, bool mask) {
  return menuCommand(std::string(selection.name) + (mask ? ", mask" : ""),
                     mask ? std::vector<DWErr>{kOutOfMemory, kMaskOutOfMemory} : std::vector<DWErr>{kOutOfMemory},
                     selection.arrange, withMask(mask));
}

Scenario spotDocument() {
  const Arrange twoSpots = [](CommandHost& h) {
    std::vector<Art*> art;
    for (int i = 0; i < 2; ++i) {
      CustomColor spot;
      spot.name = "Spot " + std::to_string(i + 1);
      spot.cmyk[i] = 1.0;
      Art* box = h.rect(2 + 5 * i, 2, 8 + 5 * i, 10);
      box->pathStyle().fill = Paint::spotColor(h.doc->newCustomColor(spot));
      art.push_back(box);
    }
    return art;
  };
  return menuCommand("spot colours", {kOutOfMemory}, twoSpots, [](RasterizeSettings& r) {
    r.type = kRasterTypeCmyk;
    r.resolution = 72.0;
    r.options |= kRasterizeAllowSpotRaster | kRasterizeAllowNChannelRaster;
    r.preserveSpotColors = 1;
  });
}

// Anti-aliasing asks for supersampling, so the tile loop's down-sampling threads run too.
Scenario antialiased() {
  return menuCommand("anti-aliased", {kOutOfMemory}, selections().front().arrange, [](RasterizeSettings& r) {
    r.resolution = 72.0;
    r.antialiasing = 4;
  });
}

class SettingsRun : public ScenarioRun {
 public:
  Host& host() override { return h_.host; }
  DWErr act() override {
    return h_.documentSettings([](RasterizeSettings& r) {
      r.resolution = 150.0;
      r.padding = 4.0;
      r.createClippingMask = 1;
    });
  }

 private:
  CommandHost h_;
};

Scenario documentSettings() {
  Scenario s;
  s.name = "document settings command";
  s.promise = "the injected code (fields written before the failure stay written)";
  s.make = [] { return std::make_unique<SettingsRun>(); };
  s.knownDeviations = kSettingsLookups;
  return s;
}

// One event recorded by running the command (or the settings command) in a host that records.
RecordedAction record(bool settingsEvent) {
  CommandHost h;
  h.host.actions().recording = true;
  h.select({h.rect(2, 2, 14, 10)});
  const DWErr code = settingsEvent ? h.documentSettings([](RasterizeSettings& r) { r.resolution = 144.0; })
                                   : h.rasterize(withMask(true));
  if (code != 0 || h.host.actions().recorded().size() != 1)
    throw std::runtime_error("recording the action event failed");
  return h.host.actions().recorded().front();
}

class PlaybackRun : public ScenarioRun {
 public:
  explicit PlaybackRun(const RecordedAction& action, bool reverts) : action_(action), reverts_(reverts) {
    h_.select({h_.rect(2, 2, 14, 10), h_.rect(8, 6, 16, 14)});
    before_ = h_.content();
  }
  Host& host() override { return h_.host; }
  DWErr act() override { return playAction(h_.host, action_, false); }
  std::string checkAfterFailure() override {
    if (!reverts_ || h_.content() == before_) return {};
    return "the document differs from before the playback";
  }

 private:
  CommandHost h_;
  RecordedAction action_;
  bool reverts_;
  std::string before_;
};

Scenario playback(bool settingsEvent) {
  Scenario s;
  s.name = settingsEvent ? "action playback, document settings" : "action playback, rasterize with mask";
  s.promise = settingsEvent ? "the injected code" : kReverts;
  s.mapped = {kOutOfMemory, kMaskOutOfMemory};
  if (settingsEvent) s.knownDeviations = kSettingsLookups;
  auto recorded = std::make_shared<RecordedAction>();
  auto done = std::make_shared<bool>(false);
  s.make = [recorded, done, settingsEvent] {
    if (!*done) {
      *recorded = record(settingsEvent);
      *done = true;
    }
    return std::make_unique<PlaybackRun>(*recorded, !settingsEvent);
  };
  return s;
}

}  // namespace

std::vector<Scenario> commandScenarios() {
  std::vector<Scenario> list;
  for (bool mask : {false, true})
    for (const Selection& selection : selections()) list.push_back(menuCommand(selection, mask));
  list.push_back(spotDocument());
  list.push_back(antialiased());
  list.push_back(documentSettings());
  list.push_back(playback(false));
  list.push_back(playback(true));
  return list;
}

}  // namespace faults
