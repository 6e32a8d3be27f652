#pragma once
// The demo's results: one line per call in the host's developer log "DWRasterizeClient.log".
#include <string>

#include "host/types.h"

namespace client {

constexpr const char* kReportLog = "DWRasterizeClient.log";

// printf-style; each call writes one line.
void reportLine(const char* format, ...) __attribute__((format(printf, 1, 2)));

// "0", or a four-character code as 'R2Wd', or hexadecimal when the bytes are not printable.
std::string codeText(DWErr code);

// An error alert from a localisable string ("$$$/key=Default text"), for failures the user must see.
void errorAlert(const char* localizable);

}  // namespace client
