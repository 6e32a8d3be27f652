#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace refhost::io {

// One failure to read or write a file, as one line: "FILE:LINE:COLUMN: message" (line and column
// where known, 1-based).
class IoError : public std::runtime_error {
 public:
  IoError(const std::string& file, std::size_t line, std::size_t column, const std::string& message);
  IoError(const std::string& file, const std::string& message) : IoError(file, 0, 0, message) {}

  const std::string& file() const { return file_; }
  std::size_t line() const { return line_; }
  std::size_t column() const { return column_; }

 private:
  std::string file_;
  std::size_t line_;
  std::size_t column_;
};

// Line and column (1-based) of byte offsets in a text, for messages.
class TextPositions {
 public:
  explicit TextPositions(const std::string& text);
  std::size_t line(std::size_t offset) const;
  std::size_t column(std::size_t offset) const;

 private:
  std::vector<std::size_t> lineStarts_;
};

// Reads a whole file; throws IoError when it cannot be read or exceeds `maxBytes`.
std::string readFile(const std::string& path, std::size_t maxBytes);

}  // namespace refhost::io
