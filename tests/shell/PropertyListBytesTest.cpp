// The committed property-list bytes and resource script against the documented layout.
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

std::vector<uint8_t> readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::vector<uint8_t>((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

std::string text(const std::vector<uint8_t>& bytes, size_t offset, size_t size) {
  return std::string(bytes.begin() + std::ptrdiff_t(offset), bytes.begin() + std::ptrdiff_t(offset + size));
}

uint32_t u32(const std::vector<uint8_t>& bytes, size_t offset) {
  return uint32_t(bytes[offset]) | uint32_t(bytes[offset + 1]) << 8 | uint32_t(bytes[offset + 2]) << 16 |
         uint32_t(bytes[offset + 3]) << 24;
}

// The raw data of the resource script: 16-bit words, little-endian.
std::vector<uint8_t> resourceBytes(const std::string& script) {
  const size_t begin = script.find("BEGIN"), end = script.find("END", begin);
  std::vector<uint8_t> bytes;
  const std::string body = script.substr(begin, end - begin);
  const std::regex word("0x([0-9a-fA-F]{4})");
  for (auto it = std::sregex_iterator(body.begin(), body.end(), word); it != std::sregex_iterator(); ++it) {
    const unsigned value = unsigned(std::stoul((*it)[1].str(), nullptr, 16));
    bytes.push_back(uint8_t(value & 0xFF));
    bytes.push_back(uint8_t(value >> 8));
  }
  return bytes;
}

struct Property {
  size_t offset;
  const char* storedKey;  // the key's characters as they lie in the file: reversed
  uint32_t length;
};

const Property kProperties[] = {
    {10, "dnik", 4}, {30, "srvi", 4}, {50, "68xw", 12}, {78, "mnip", 12}, {106, "tpxe", 32},
};

void checkLayout(const std::vector<uint8_t>& bytes, const std::string& source) {
  ASSERT_EQ(bytes.size(), 154u) << source;
  EXPECT_EQ(bytes[0] | bytes[1] << 8, 1) << source << ": format version";
  EXPECT_EQ(u32(bytes, 2), 0u) << source;
  EXPECT_EQ(u32(bytes, 6), 5u) << source << ": property count";
  for (const Property& p : kProperties) {
    const std::string name = source + " at " + std::to_string(p.offset);
    EXPECT_EQ(text(bytes, p.offset, 4), "LVRC") << name << ": vendor 'CRVL' reversed";
    EXPECT_EQ(text(bytes, p.offset + 4, 4), p.storedKey) << name;
    EXPECT_EQ(u32(bytes, p.offset + 8), 0u) << name << ": identifier";
    EXPECT_EQ(u32(bytes, p.offset + 12), p.length) << name << ": data length";
  }
  EXPECT_EQ(text(bytes, 26, 4), "AEKQ") << source << ": kind 'QKEA'";
  EXPECT_EQ(u32(bytes, 46), 2u) << source << ": interface version";
  EXPECT_EQ(text(bytes, 66, 12), std::string("PluginMain\0\0", 12)) << source;
  EXPECT_EQ(text(bytes, 94, 12), std::string("Rasterize 8\0", 12)) << source;
  EXPECT_EQ(u32(bytes, 122), 1u) << source << ": one exported suite";
  EXPECT_EQ(u32(bytes, 126), 24u) << source << ": entry length";
  EXPECT_EQ(text(bytes, 130, 20), std::string("DW Rasterize Suite\0\0", 20)) << source;
  EXPECT_EQ(u32(bytes, 150), 5u) << source << ": the resource announces version 5";
}

TEST(PropertyListBytes, TheRawBytesFollowTheLayout) {
  checkLayout(readFile(DW_SOURCE_DIR "/host/plugin_properties/plugin_properties.bin"), "plugin_properties.bin");
}

TEST(PropertyListBytes, TheResourceScriptHoldsTheSameBytes) {
  const std::vector<uint8_t> script = readFile(DW_SOURCE_DIR "/host/plugin_properties/Rasterize.rc");
  const std::string source(script.begin(), script.end());
  EXPECT_NE(source.find("LANGUAGE 0x09, 0x01"), std::string::npos) << "language 1033";
  EXPECT_NE(source.find("16000 PRPL"), std::string::npos);
  checkLayout(resourceBytes(source), "Rasterize.rc");
}

}  // namespace
