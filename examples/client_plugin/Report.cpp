#include "Report.h"

#include <cstdarg>
#include <cstdio>

#include "ClientSuites.h"

namespace client {

void reportLine(const char* format, ...) {
  char text[1024];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof text, format, args);
  va_end(args);
  // Asked for at each line: the host decides which logs it keeps, and may change its mind.
  if (DWLogHandle log = gSuites.devUtils->GetLog(kReportLog)) gSuites.devUtils->WriteLine(log, "%s", text);
}

std::string codeText(DWErr code) {
  if (code == kDWNoErr) return "0";
  const uint32_t bits = uint32_t(code);
  std::string text = "'";
  for (int shift = 24; shift >= 0; shift -= 8) {
    const char c = char((bits >> shift) & 0xFF);
    if (c < 0x20 || c > 0x7E) {
      char hex[16];
      std::snprintf(hex, sizeof hex, "0x%08X", bits);
      return hex;
    }
    text += c;
  }
  return text + "'";
}

void errorAlert(const char* localizable) {
  DWUnicodeString message = nullptr;
  if (gSuites.strings->NewFromLocalizable(localizable, &message) != kDWNoErr) return;
  gSuites.user->ErrorAlert(message);
  gSuites.strings->Dispose(message);
}

}  // namespace client
