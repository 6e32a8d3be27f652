// "DW User Suite": alerts (kept; the tool prints them), the progress display, the user's request
// to stop, and number formatting.
#include <cstdio>
#include <string>

#include "host/suites/user_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

std::string textOf(DWUnicodeString message) {
  const std::string* text = Host::current().strings().text(message);
  return text ? *text : std::string();
}

void ErrorAlert(DWUnicodeString message) { Host::current().ui().showAlert({Alert::Kind::Error, textOf(message)}); }

void WarningAlert(DWUnicodeString message) {
  Host::current().ui().showAlert({Alert::Kind::Warning, textOf(message)});
}

int32_t QuestionAlert(DWUnicodeString message, int32_t defaultOk, int32_t) {
  Host& host = Host::current();
  TestControls& controls = host.controls();
  bool answer = defaultOk != 0;
  if (!controls.questionAnswers.empty()) {
    answer = controls.questionAnswers.front();
    controls.questionAnswers.pop_front();
  } else if (controls.questionAnswer) {
    answer = *controls.questionAnswer;
  }
  host.ui().showAlert({Alert::Kind::Question, textOf(message), answer});
  return answer ? 1 : 0;
}

DWErr SetProgressText(DWUnicodeString text) {
  REFHOST_CALL(kDWUserSuite, "SetProgressText");
  Host& host = Host::current();
  const std::string* value = host.strings().text(text);
  if (!value) return kHostBadParameter;
  host.ui().setProgressText(*value);
  return kDWNoErr;
}

void UpdateProgress(int32_t current, int32_t total) {
  Host& host = Host::current();
  host.ui().updateProgress(current, total);
  const uint64_t limit = host.controls().cancelAfterProgressUpdates;
  if (limit && host.ui().progress().updates >= limit) host.ui().requestCancel();
}

DWBool Cancelled() { return Host::current().ui().cancelRequested() ? 1 : 0; }

void CloseProgress() { Host::current().ui().closeProgress(); }

DWErr FormatNumber(double value, int32_t decimalPlaces, DWUnicodeString* text) {
  REFHOST_CALL(kDWUserSuite, "FormatNumber");
  if (!text || decimalPlaces < 0 || decimalPlaces > 20) return kHostBadParameter;
  return guarded([&] {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", int(decimalPlaces), value);
    *text = Host::current().strings().create(buffer);
    return kDWNoErr;
  });
}

const DWUserSuite kSuite = {ErrorAlert,      WarningAlert, QuestionAlert, SetProgressText,
                            UpdateProgress,  Cancelled,    CloseProgress, FormatNumber};
REFHOST_REGISTER_SUITE(kDWUserSuite, kDWUserSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
