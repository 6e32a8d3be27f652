// The property list the host reads before it loads the library: what the client is called and
// where it starts. Same layout as any plug-in's (format 1, then vendor, key, id, length, data per
// property, little-endian, four-character codes stored as integers).
#include <cstddef>
#include <cstdint>

#include "host/plugin_properties/plugin_properties.h"

namespace {

constexpr size_t kNameLength = 20;  // "Rasterize Client" and its terminator, padded to 4
constexpr size_t kSize = 10 + (16 + 4) + (16 + 4) + (16 + 12) + (16 + kNameLength);

struct PropertyBytes {
  unsigned char data[kSize];
};

struct Writer {
  PropertyBytes bytes{};
  size_t at = 0;

  constexpr void u16(uint32_t value) {
    for (int i = 0; i < 2; ++i) bytes.data[at++] = static_cast<unsigned char>(value >> (8 * i));
  }
  constexpr void u32(uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes.data[at++] = static_cast<unsigned char>(value >> (8 * i));
  }
  constexpr void text(const char* value, size_t length) {
    size_t i = 0;
    for (; value[i] != 0 && i < length; ++i) bytes.data[at + i] = static_cast<unsigned char>(value[i]);
    at += length;
  }
  constexpr void header(const char* key, uint32_t length) {
    u32(code("CRVL"));
    u32(code(key));
    u32(0);
    u32(length);
  }
  static constexpr uint32_t code(const char* c) {
    return uint32_t(uint8_t(c[0])) << 24 | uint32_t(uint8_t(c[1])) << 16 | uint32_t(uint8_t(c[2])) << 8 |
           uint32_t(uint8_t(c[3]));
  }
};

constexpr PropertyBytes build() {
  Writer w;
  w.u16(1);  // format version
  w.u32(0);
  w.u32(4);  // properties
  w.header("kind", 4);
  w.u32(Writer::code("QKEA"));
  w.header("ivrs", 4);
  w.u32(2);
  w.header("wx86", 12);
  w.text("PluginMain", 12);
  w.header("pinm", kNameLength);
  w.text("Rasterize Client", kNameLength);
  return w.bytes;
}

}  // namespace

__attribute__((section(kDWPluginPropertiesSection), used)) static constexpr PropertyBytes kClientProperties = build();
