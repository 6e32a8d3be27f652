#include "refhost/loader/ElfSection.h"

#include <cstring>
#include <fstream>
#include <iterator>

#include "refhost/loader/HostErrors.h"

namespace refhost {

namespace {

class Reader {
 public:
  Reader(const std::vector<uint8_t>& bytes, const std::string& path) : bytes_(bytes), path_(path) {}

  uint64_t read(uint64_t offset, size_t size) const {
    if (offset > bytes_.size() || bytes_.size() - offset < size) fail("truncated");
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) value |= uint64_t(bytes_[size_t(offset) + i]) << (8 * i);
    return value;
  }
  [[noreturn]] void fail(const char* why) const {
    throw HostError(path_ + ": not a readable ELF file (" + why + ")", kHostBadParameter);
  }

  const std::vector<uint8_t>& bytes_;
  const std::string& path_;
};

}  // namespace

std::optional<std::vector<uint8_t>> readElfSection(const std::string& path, const std::string& section) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw HostError(path + ": cannot open the file", kHostNotFound);
  const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const Reader in(bytes, path);

  if (bytes.size() < 16 || std::memcmp(bytes.data(), "\x7f" "ELF", 4) != 0) in.fail("no ELF header");
  const bool wide = bytes[4] == 2;
  if ((bytes[4] != 1 && bytes[4] != 2) || bytes[5] != 1) in.fail("not a little-endian 32- or 64-bit file");

  // Offsets of the section-header fields differ between the two classes.
  const uint64_t tableOffset = wide ? in.read(0x28, 8) : in.read(0x20, 4);
  const uint64_t entrySize = in.read(wide ? 0x3A : 0x2E, 2);
  const uint64_t count = in.read(wide ? 0x3C : 0x30, 2);
  const uint64_t namesIndex = in.read(wide ? 0x3E : 0x32, 2);
  if (count == 0) return std::nullopt;
  if (namesIndex >= count || entrySize < (wide ? 0x40u : 0x28u)) in.fail("bad section table");

  auto header = [&](uint64_t index, uint64_t& nameOffset, uint64_t& offset, uint64_t& size) {
    const uint64_t at = tableOffset + index * entrySize;
    nameOffset = in.read(at, 4);
    offset = wide ? in.read(at + 0x18, 8) : in.read(at + 0x10, 4);
    size = wide ? in.read(at + 0x20, 8) : in.read(at + 0x14, 4);
  };

  uint64_t unused = 0, namesOffset = 0, namesSize = 0;
  header(namesIndex, unused, namesOffset, namesSize);
  for (uint64_t i = 0; i < count; ++i) {
    uint64_t nameOffset = 0, offset = 0, size = 0;
    header(i, nameOffset, offset, size);
    if (nameOffset >= namesSize) continue;
    const uint64_t nameAt = namesOffset + nameOffset;
    if (nameAt + section.size() >= bytes.size()) continue;
    if (std::memcmp(&bytes[size_t(nameAt)], section.c_str(), section.size() + 1) != 0) continue;
    if (offset > bytes.size() || bytes.size() - offset < size) in.fail("section past the end of the file");
    return std::vector<uint8_t>(bytes.begin() + std::ptrdiff_t(offset), bytes.begin() + std::ptrdiff_t(offset + size));
  }
  return std::nullopt;
}

}  // namespace refhost
