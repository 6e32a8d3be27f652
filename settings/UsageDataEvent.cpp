#include "settings/UsageDataEvent.h"

#include <string>

#include "shell/HostSuites.h"

namespace dw {

namespace {

const char* colorModel(int32_t type) {
  switch (type) {
    case 0: case 4: return "RGB";
    case 1: case 5: return "CMYK";
    case 2: case 6: return "Grayscale";
    case 3: case 7: return "Bitmap";
    default: return "";
  }
}

const char* onOff(bool on) { return on ? "On" : "Off"; }

// The host's formatting of a number, taken as bytes and handed back at once.
std::string formatNumber(double value, int32_t decimalPlaces) {
  const DWUserSuite* user = gSuites.user;
  const DWUnicodeStringSuite* strings = gSuites.unicodeString;
  if (!user || !strings) return {};
  DWUnicodeString text = nullptr;
  if (user->FormatNumber(value, decimalPlaces, &text) != kDWNoErr || !text) return {};
  std::string bytes;
  int32_t length = 0;
  if (strings->GetBytes(text, kDWPlatformEncoding, nullptr, 0, &length) == kDWNoErr && length > 0) {
    bytes.resize(size_t(length));
    if (strings->GetBytes(text, kDWPlatformEncoding, &bytes[0], length, &length) == kDWNoErr)
      bytes.resize(size_t(length));
    else
      bytes.clear();
  }
  strings->Dispose(text);
  return bytes;
}

}  // namespace

void sendDocumentSettingsUsage(const RasterizeSettings& record) {
  const DWUsageDataSuite* usage = gSuites.usageData;
  if (!usage) return;
  const DWUsageEvent event = usage->CreateEvent(kDocumentSettingsUsageEvent);
  if (!event) return;

  // Only the two paddings the dialog offers are reported as numbers.
  const bool standardPadding = record.padding == 0.0 || record.padding == 36.0;
  usage->AddAttribute(event, "Color Model", colorModel(record.type));
  usage->AddAttribute(event, "Resolution", formatNumber(record.resolution, 0).c_str());
  usage->AddAttribute(event, "Background", record.type >= 0 && record.type <= 3 ? "White" : "Transparent");
  usage->AddAttribute(event, "Create Clipping Mask", onOff(record.createClippingMask != 0));
  usage->AddAttribute(event, "Add Around Object",
                      standardPadding ? formatNumber(record.padding, 2).c_str() : "Custom");
  usage->AddAttribute(event, "Anti-Alias", onOff(record.antialiasing != 0));
  usage->AddAttribute(event, "Preserve Spot Color", onOff(record.preserveSpotColors != 0));
}

}  // namespace dw
