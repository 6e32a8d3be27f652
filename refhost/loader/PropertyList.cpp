#include "refhost/loader/PropertyList.h"

#include <cstring>

#include "host/plugin_properties/plugin_properties.h"
#include "refhost/loader/ElfSection.h"
#include "refhost/loader/HostErrors.h"

namespace refhost {

namespace {

constexpr uint32_t code(const char (&text)[5]) { return uint32_t(hostCode(text)); }

[[noreturn]] void malformed(const std::string& why) {
  throw HostError("malformed plug-in property list: " + why, kHostBadParameter);
}

uint32_t read32(const uint8_t* data, size_t size, size_t offset) {
  if (offset + 4 > size) malformed("truncated at offset " + std::to_string(offset));
  return uint32_t(data[offset]) | uint32_t(data[offset + 1]) << 8 | uint32_t(data[offset + 2]) << 16 |
         uint32_t(data[offset + 3]) << 24;
}

// A zero-terminated string inside a property's data.
std::string text(const std::vector<uint8_t>& data, size_t offset, size_t limit, const char* what) {
  const size_t end = std::min(limit, data.size());
  for (size_t i = offset; i < end; ++i)
    if (data[i] == 0) return std::string(reinterpret_cast<const char*>(&data[offset]), i - offset);
  malformed(std::string(what) + " is not zero-terminated");
}

void parseExports(const std::vector<uint8_t>& data, PluginProperties& properties) {
  const uint32_t count = read32(data.data(), data.size(), 0);
  size_t at = 4;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t length = read32(data.data(), data.size(), at);
    at += 4;
    if (length < 8 || at + length > data.size()) malformed("exported suite entry " + std::to_string(i));
    PluginProperties::ExportedSuite suite;
    suite.name = text(data, at, at + length - 4, "an exported suite name");
    suite.version = int32_t(read32(data.data(), data.size(), at + length - 4));
    properties.exports.push_back(suite);
    at += length;
  }
}

}  // namespace

PluginProperties parsePluginProperties(const uint8_t* data, size_t size) {
  if (size < 10) malformed("shorter than its header");
  const uint32_t formatVersion = uint32_t(data[0]) | uint32_t(data[1]) << 8;
  if (formatVersion != 1) malformed("format version " + std::to_string(formatVersion));
  const uint32_t count = read32(data, size, 6);

  PluginProperties properties;
  size_t at = 10;
  for (uint32_t i = 0; i < count; ++i) {
    PluginProperties::Property property;
    property.vendor = read32(data, size, at);
    property.key = read32(data, size, at + 4);
    property.id = int32_t(read32(data, size, at + 8));
    const uint32_t length = read32(data, size, at + 12);
    at += 16;
    if (length % 4 != 0) malformed("property " + std::to_string(i) + " has a length not a multiple of 4");
    if (length > size - at) malformed("property " + std::to_string(i) + " runs past the end");
    property.data.assign(data + at, data + at + length);
    at += length;
    properties.properties.push_back(property);
  }

  for (const auto& property : properties.properties) {
    if (property.vendor != kPropertyVendor) continue;
    const auto& bytes = property.data;
    if (property.key == code("kind"))
      properties.kind = read32(bytes.data(), bytes.size(), 0);
    else if (property.key == code("ivrs"))
      properties.interfaceVersion = int32_t(read32(bytes.data(), bytes.size(), 0));
    else if (property.key == code("wx86"))
      properties.entryPoint = text(bytes, 0, bytes.size(), "the entry point");
    else if (property.key == code("pinm"))
      properties.name = text(bytes, 0, bytes.size(), "the plug-in name");
    else if (property.key == code("expt"))
      parseExports(bytes, properties);
  }
  return properties;
}

PluginProperties readPluginProperties(const std::string& path) {
  const auto bytes = readElfSection(path, kDWPluginPropertiesSection);
  if (!bytes) throw HostError(path + ": no plug-in property list (section " kDWPluginPropertiesSection ")", kHostNotFound);
  try {
    return parsePluginProperties(bytes->data(), bytes->size());
  } catch (const HostError& error) {
    throw HostError(path + ": " + error.what(), error.code());
  }
}

}  // namespace refhost
