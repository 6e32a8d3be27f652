// Reading a plug-in's property list from its file before loading it.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "host/plugin_properties/plugin_properties.h"
#include "refhost/loader/ElfSection.h"
#include "refhost/loader/HostErrors.h"
#include "refhost/loader/PropertyList.h"
#include "tests/loader/PluginUnderTest.h"

namespace {

std::vector<uint8_t> committedBytes() {
  std::ifstream file(DW_SOURCE_DIR "/host/plugin_properties/plugin_properties.bin", std::ios::binary);
  return std::vector<uint8_t>((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

TEST(PropertyList, TheBuiltLibraryCarriesTheCommittedBytes) {
  const auto section = refhost::readElfSection(kPluginPath, kDWPluginPropertiesSection);
  ASSERT_TRUE(section.has_value());
  EXPECT_EQ(*section, committedBytes());
}

TEST(PropertyList, ThePluginAnnouncesItselfAsAnExtension) {
  const refhost::PluginProperties properties = refhost::readPluginProperties(kPluginPath);
  EXPECT_EQ(properties.kind, refhost::kExtensionPluginKind);
  EXPECT_EQ(properties.interfaceVersion, 2);
  EXPECT_EQ(properties.entryPoint, "PluginMain");
  EXPECT_EQ(properties.name, "Rasterize 8");
  ASSERT_EQ(properties.exports.size(), 1u);
  EXPECT_EQ(properties.exports[0].name, "DW Rasterize Suite");
  EXPECT_EQ(properties.exports[0].version, 5);
  EXPECT_EQ(properties.properties.size(), 5u);
}

// Damaged lists: each is refused with a message rather than read past its end.
TEST(PropertyList, DamagedListsAreRefused) {
  const std::vector<uint8_t> good = committedBytes();
  ASSERT_EQ(good.size(), 154u);
  struct Damage {
    const char* what;
    std::vector<uint8_t> bytes;
  };
  std::vector<Damage> cases;
  cases.push_back({"empty", {}});
  cases.push_back({"header only, cut", std::vector<uint8_t>(good.begin(), good.begin() + 8)});
  cases.push_back({"cut inside the last property", std::vector<uint8_t>(good.begin(), good.end() - 4)});
  auto version = good;
  version[0] = 2;
  cases.push_back({"format version 2", version});
  auto count = good;
  count[6] = 6;
  cases.push_back({"one property more than present", count});
  auto length = good;
  length[10 + 12] = 5;
  cases.push_back({"length not a multiple of 4", length});
  auto huge = good;
  huge[10 + 15] = 0x7F;
  cases.push_back({"length past the end", huge});
  auto name = good;
  for (size_t i = 94; i < 106; ++i) name[i] = 'x';
  cases.push_back({"name without a terminator", name});
  auto entry = good;
  entry[126] = 200;
  cases.push_back({"exported suite entry past its property", entry});

  for (const Damage& damage : cases)
    EXPECT_THROW(refhost::parsePluginProperties(damage.bytes.data(), damage.bytes.size()), refhost::HostError)
        << damage.what;
}

TEST(PropertyList, UnknownPropertiesAreKeptAndSkipped) {
  std::vector<uint8_t> bytes = committedBytes();
  bytes[6] = 6;
  const uint8_t extra[] = {'X', 'X', 'X', 'X', 'y', 'e', 'k', 'k', 0, 0, 0, 0, 4, 0, 0, 0, 1, 2, 3, 4};
  bytes.insert(bytes.end(), std::begin(extra), std::end(extra));
  const auto properties = refhost::parsePluginProperties(bytes.data(), bytes.size());
  EXPECT_EQ(properties.properties.size(), 6u);
  EXPECT_EQ(properties.name, "Rasterize 8");
}

TEST(PropertyList, FilesThatAreNotPluginsAreRefused) {
  const std::string text = ::testing::TempDir() + "not_a_plugin.txt";
  std::ofstream(text) << "hello";
  EXPECT_THROW(refhost::readPluginProperties(text), refhost::HostError);
  EXPECT_THROW(refhost::readPluginProperties(text + ".missing"), refhost::HostError);
  // An ELF file without the section: this test program.
  EXPECT_FALSE(refhost::readElfSection("/proc/self/exe", kDWPluginPropertiesSection).has_value());
  EXPECT_THROW(refhost::readPluginProperties("/proc/self/exe"), refhost::HostError);
  std::remove(text.c_str());
}

TEST(PropertyList, ATruncatedLibraryIsRefused) {
  std::ifstream in(kPluginPath, std::ios::binary);
  std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::string cut = ::testing::TempDir() + "cut_plugin.so";
  std::ofstream(cut, std::ios::binary).write(bytes.data(), 200);
  EXPECT_THROW(refhost::readPluginProperties(cut), refhost::HostError);
  std::remove(cut.c_str());
}

}  // namespace
