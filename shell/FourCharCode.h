#pragma once
#include <cstdint>

namespace dw {

// Four-character codes pack the first character into the most significant byte
// ("!sel" is 0x2173656C). Multi-character literals are implementation-defined, so every
// code in the plug-in is made here from a string.
constexpr uint32_t fourCharCode(const char (&text)[5]) {
  return (uint32_t(uint8_t(text[0])) << 24) | (uint32_t(uint8_t(text[1])) << 16) |
         (uint32_t(uint8_t(text[2])) << 8) | uint32_t(uint8_t(text[3]));
}

constexpr int32_t fourCharError(const char (&text)[5]) { return int32_t(fourCharCode(text)); }

static_assert(fourCharCode("!sel") == 0x2173656Cu, "codes keep their first character in the high byte");

}  // namespace dw
