// "DW RasterizeUI Suite": the rasterize options dialog. The host has no windows: a queued test
// answer, else the tool's responder (which applies its command-line flags), else "confirm as is".
#include "host/suites/rasterize_ui_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

int32_t ShowRasterizeDialog(RasterizeSettings* settings, int32_t variant) {
  Host& host = Host::current();
  if (!settings) return kHostBadParameter;
  ++host.ui().dialogsShown;
  auto& answers = host.controls().dialogAnswers;
  if (!answers.empty()) {
    TestControls::DialogAnswer answer = std::move(answers.front());
    answers.pop_front();
    // The dialog writes the record back only when confirmed.
    if (answer.result == 0 && answer.edit) answer.edit(*settings);
    return answer.result;
  }
  if (host.ui().dialogResponder) {
    RasterizeSettings edited = *settings;
    const int32_t result = host.ui().dialogResponder(edited, variant);
    if (result == 0) *settings = edited;
    return result;
  }
  return 0;
}

const DWRasterizeUISuite kSuite = {ShowRasterizeDialog};
REFHOST_REGISTER_SUITE(kDWRasterizeUISuite, kDWRasterizeUISuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
