#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace refhost {

// What a plug-in's property list tells the host before the library is loaded.
struct PluginProperties {
  struct Property {
    uint32_t vendor = 0;
    uint32_t key = 0;
    int32_t id = 0;
    std::vector<uint8_t> data;
  };
  struct ExportedSuite {
    std::string name;
    int32_t version = 0;
  };

  uint32_t kind = 0;             // 'kind': the plug-in kind, 'QKEA' for an extension
  int32_t interfaceVersion = 0;  // 'ivrs'
  std::string entryPoint;        // 'wx86': the name of the function to call
  std::string name;              // 'pinm'
  std::vector<ExportedSuite> exports;  // 'expt'
  std::vector<Property> properties;    // every property, known or not, in file order
};

constexpr uint32_t kPropertyVendor = 0x4352564C;       // 'CRVL'
constexpr uint32_t kExtensionPluginKind = 0x514B4541;  // 'QKEA'

// Parses the "PRPL" bytes (little-endian; codes stored as integers). Throws HostError naming the
// first inconsistency.
PluginProperties parsePluginProperties(const uint8_t* data, size_t size);

// The property list of a plug-in file (its ELF section on this platform). Throws HostError.
PluginProperties readPluginProperties(const std::string& path);

}  // namespace refhost
