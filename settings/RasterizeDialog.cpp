#include "settings/RasterizeDialog.h"

#include "settings/UsageDataEvent.h"
#include "shell/HostSuites.h"

namespace dw {

namespace {

// Holds the dialog suite for one dialog and releases it on every path.
class DialogSuite {
 public:
  DialogSuite() {
    if (!gSuites.basic) return;
    const void* suite = nullptr;
    _error = gSuites.basic->AcquireSuite(kDWRasterizeUISuite, kDWRasterizeUISuiteVersion, &suite);
    if (_error == kDWNoErr) _suite = static_cast<const DWRasterizeUISuite*>(suite);
  }
  ~DialogSuite() {
    if (_suite && gSuites.basic) gSuites.basic->ReleaseSuite(kDWRasterizeUISuite, kDWRasterizeUISuiteVersion);
  }
  DialogSuite(const DialogSuite&) = delete;
  DialogSuite& operator=(const DialogSuite&) = delete;

  const DWRasterizeUISuite* get() const { return _suite; }
  DWErr error() const { return _error; }

 private:
  const DWRasterizeUISuite* _suite = nullptr;
  DWErr _error = kDWNoErr;
};

}  // namespace

DWErr runRasterizeDialog(RasterizeSettings& record, int32_t variant) {
  RasterizeSettings edited = record;
  const DialogSuite dialog;
  if (!dialog.get()) return dialog.error();

  const DWErr result = dialog.get()->ShowRasterizeDialog(&edited, variant);
  if (result == kDWNoErr) record = edited;
  // Sent after a cancel too: the event reports the settings the dialog closed with.
  if (variant == kDWDocumentRasterSettingsDialog) sendDocumentSettingsUsage(record);
  return result;
}

}  // namespace dw
