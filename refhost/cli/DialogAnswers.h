#pragma once
// How the tool answers the plug-in's rasterize dialogs: the record the dialog shows, changed by the
// flags the user gave, confirmed; or Cancel when the hidden --cancel-dialog asks for it (scripts
// and tests checking what a cancelled dialog leaves behind).
#include <functional>
#include <optional>

#include "host/rasterize_settings.h"

namespace CLI {
class App;
}

namespace refhost {
class Host;

namespace cli {

class RasterizeFlags;

class DialogAnswers {
 public:
  // Adds --cancel-dialog, left out of --help.
  void addTo(CLI::App& verb);

  // Makes `host` answer every rasterize dialog from `flags`; `adjust` (optional) changes the record
  // after the flags, for a verb's own options. This object and `flags` must outlive the host.
  void install(Host& host, const RasterizeFlags& flags, std::function<void(RasterizeSettings&)> adjust = {});

  // Whether a dialog was answered with Cancel.
  bool cancelled() const { return cancelled_; }
  // The record the last confirmed dialog closed with.
  const std::optional<RasterizeSettings>& confirmed() const { return confirmed_; }

 private:
  bool cancel_ = false;
  bool cancelled_ = false;
  std::optional<RasterizeSettings> confirmed_;
};

}  // namespace cli
}  // namespace refhost
