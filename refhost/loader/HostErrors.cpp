#include "refhost/loader/HostErrors.h"

namespace refhost {

std::string formatCode(DWErr code) {
  const uint32_t value = uint32_t(code);
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const char c = char((value >> shift) & 0xFF);
    if (c < 0x20 || c > 0x7E) return std::to_string(code);
    text += c;
  }
  return "'" + text + "'";
}

}  // namespace refhost
