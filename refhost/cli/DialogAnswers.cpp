#include "refhost/cli/DialogAnswers.h"

#include <CLI/CLI.hpp>

#include "refhost/cli/RasterizeFlags.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

// Any value but 0 cancels; the plug-in does not look further.
constexpr int32_t kDialogCancelled = 1;

}  // namespace

void DialogAnswers::addTo(CLI::App& verb) {
  verb.add_flag("--cancel-dialog", cancel_, "Answer the rasterize dialog with Cancel")->group("");
}

void DialogAnswers::install(Host& host, const RasterizeFlags& flags, std::function<void(RasterizeSettings&)> adjust) {
  host.ui().dialogResponder = [this, &flags, adjust](RasterizeSettings& record, int32_t) {
    if (cancel_) {
      cancelled_ = true;
      return kDialogCancelled;
    }
    // Nothing may be thrown back through the plug-in; verbs check their flags before they start.
    try {
      RasterizeSettings answer = flags.apply(record);
      if (adjust) adjust(answer);
      record = answer;
      confirmed_ = answer;
      return 0;
    } catch (...) {
      cancelled_ = true;
      return kDialogCancelled;
    }
  };
}

}  // namespace cli
}  // namespace refhost
