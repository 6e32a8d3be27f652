#include "refhost/io/IoError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace refhost::io {

namespace {
std::string compose(const std::string& file, std::size_t line, std::size_t column, const std::string& message) {
  std::string out = file;
  if (line > 0) {
    out += ":" + std::to_string(line);
    if (column > 0) out += ":" + std::to_string(column);
  }
  out += ": ";
  // Messages are one line, whatever the input held.
  for (char ch : message) out += (ch == '\n' || ch == '\r') ? ' ' : ch;
  return out;
}
}  // namespace

IoError::IoError(const std::string& file, std::size_t line, std::size_t column, const std::string& message)
    : std::runtime_error(compose(file, line, column, message)), file_(file), line_(line), column_(column) {}

TextPositions::TextPositions(const std::string& text) {
  lineStarts_.push_back(0);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') lineStarts_.push_back(i + 1);
  }
}

std::size_t TextPositions::line(std::size_t offset) const {
  auto it = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  return static_cast<std::size_t>(it - lineStarts_.begin());
}

std::size_t TextPositions::column(std::size_t offset) const { return offset - lineStarts_[line(offset) - 1] + 1; }

std::string readFile(const std::string& path, std::size_t maxBytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw IoError(path, std::string("cannot open: ") + std::strerror(errno));
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  if (size < 0) throw IoError(path, "cannot read");
  if (static_cast<std::uint64_t>(size) > maxBytes) {
    throw IoError(path, "file too large (" + std::to_string(size) + " bytes; limit " + std::to_string(maxBytes) + ")");
  }
  in.seekg(0, std::ios::beg);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  if (size > 0 && !in.read(bytes.data(), size)) throw IoError(path, "read failed");
  return bytes;
}

}  // namespace refhost::io
