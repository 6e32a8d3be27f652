#pragma once
// The real Rasterize plug-in started in a reference host over a one-layer document, driven through
// its menu commands as a user would drive it.
#include <functional>
#include <string>
#include <vector>

#include "refhost/document/Document.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

namespace e2e_command {

using namespace refhost;

inline const std::string kPluginPath = DW_PLUGIN_PATH;
inline const std::string kToolPath = DW_TOOL_PATH;

using Edit = std::function<void(RasterizeSettings&)>;

class CommandHost {
 public:
  // `withheld`: a suite the host does not offer (taken away before the plug-in starts).
  explicit CommandHost(const std::string& withheld = {});
  ~CommandHost();
  CommandHost(const CommandHost&) = delete;
  CommandHost& operator=(const CommandHost&) = delete;

  // A black filled rectangle (points, y up) on top of `parent`, or of the current layer.
  Art* rect(double left, double bottom, double right, double top, Art* parent = nullptr);
  Art* group(Art* parent = nullptr);
  Art* text(const std::string& words, double x, double y);
  // A 4 x 4 opaque RGB raster whose top-left corner is at (left, top), one pixel per point.
  Art* raster(double left, double top);
  // Selects `art` as a whole (the host's selection bits).
  void select(const std::vector<Art*>& art);

  // Chooses "Rasterize..." with the options dialog confirmed after `edit`.
  DWErr rasterize(const Edit& edit = {});
  // Chooses "Document Raster Effects Settings...": the dialog answers `result` (0 confirms) after
  // `edit`; `shown` receives the record the dialog showed.
  DWErr documentSettings(const Edit& edit = {}, int32_t result = 0, RasterizeSettings* shown = nullptr);

  std::vector<std::string> alerts(Alert::Kind kind);
  std::vector<Art*> live(ArtKind kind) const;
  // The whole document as the native format writes it: equal text, equal document.
  std::string content() const;

  Host host;
  Plugin* plugin = nullptr;
  Document* doc = nullptr;
};

}  // namespace e2e_command
