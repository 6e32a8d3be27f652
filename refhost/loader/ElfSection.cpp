#include "refhost/loader/ElfSection.h"

#include <cstring>
#include <fstream>

#include "refhost/loader/HostErrors.h"

namespace refhost {

namespace {

// Reads only the pieces it is asked for: a library is megabytes, the property list 154 bytes.
class ElfFile {
 public:
  explicit ElfFile(const std::string& path) : path_(path), file_(path, std::ios::binary) {
    if (!file_) throw HostError(path + ": cannot open the file", kHostNotFound);
    file_.seekg(0, std::ios::end);
    size_ = uint64_t(file_.tellg());
  }

  std::vector<uint8_t> bytes(uint64_t offset, uint64_t size) {
    if (offset > size_ || size_ - offset < size) fail("truncated");
    std::vector<uint8_t> out(static_cast<size_t>(size));
    file_.seekg(std::streamoff(offset));
    if (size && !file_.read(reinterpret_cast<char*>(out.data()), std::streamsize(size))) fail("unreadable");
    return out;
  }

  // A little-endian integer of `size` bytes.
  uint64_t number(uint64_t offset, size_t size) {
    const std::vector<uint8_t> raw = bytes(offset, size);
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) value |= uint64_t(raw[i]) << (8 * i);
    return value;
  }

  [[noreturn]] void fail(const char* why) const {
    throw HostError(path_ + ": not a readable ELF file (" + why + ")", kHostBadParameter);
  }

 private:
  std::string path_;
  std::ifstream file_;
  uint64_t size_ = 0;
};

}  // namespace

std::optional<std::vector<uint8_t>> readElfSection(const std::string& path, const std::string& section) {
  ElfFile in(path);
  const std::vector<uint8_t> ident = in.bytes(0, 16);
  if (std::memcmp(ident.data(), "\x7f" "ELF", 4) != 0) in.fail("no ELF header");
  const bool wide = ident[4] == 2;
  if ((ident[4] != 1 && ident[4] != 2) || ident[5] != 1) in.fail("not a little-endian 32- or 64-bit file");

  // Offsets of the section-header fields differ between the two classes.
  const uint64_t tableOffset = wide ? in.number(0x28, 8) : in.number(0x20, 4);
  const uint64_t entrySize = in.number(wide ? 0x3A : 0x2E, 2);
  const uint64_t count = in.number(wide ? 0x3C : 0x30, 2);
  const uint64_t namesIndex = in.number(wide ? 0x3E : 0x32, 2);
  if (count == 0) return std::nullopt;
  if (namesIndex >= count || entrySize < (wide ? 0x40u : 0x28u)) in.fail("bad section table");
  const std::vector<uint8_t> table = in.bytes(tableOffset, count * entrySize);

  auto field = [&](uint64_t index, uint64_t at, size_t size) {
    uint64_t value = 0;
    for (size_t i = 0; i < size; ++i) value |= uint64_t(table[size_t(index * entrySize + at + i)]) << (8 * i);
    return value;
  };
  auto offsetOf = [&](uint64_t index) { return wide ? field(index, 0x18, 8) : field(index, 0x10, 4); };
  auto sizeOf = [&](uint64_t index) { return wide ? field(index, 0x20, 8) : field(index, 0x14, 4); };

  const std::vector<uint8_t> names = in.bytes(offsetOf(namesIndex), sizeOf(namesIndex));
  for (uint64_t i = 0; i < count; ++i) {
    const uint64_t nameOffset = field(i, 0, 4);
    if (nameOffset + section.size() >= names.size()) continue;
    if (std::memcmp(&names[size_t(nameOffset)], section.c_str(), section.size() + 1) != 0) continue;
    return in.bytes(offsetOf(i), sizeOf(i));
  }
  return std::nullopt;
}

}  // namespace refhost
