#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace refhost::io::svg {

// A cursor over SVG number lists ("10,20 -5.5e2.5" and the like), by the SVG number grammar.
class NumberScanner {
 public:
  explicit NumberScanner(std::string_view text) : s_(text) {}

  void skipSpaces();
  // Spaces, then at most one comma, then spaces.
  void skipSeparator();
  bool atEnd();
  std::size_t position() const { return i_; }
  char peek() const { return i_ < s_.size() ? s_[i_] : '\0'; }
  void advance() { ++i_; }
  std::optional<double> number();
  // An arc flag: exactly '0' or '1', which may run into what follows ("a1 1 0 00 1 1").
  std::optional<bool> flag();

 private:
  std::string_view s_;
  std::size_t i_ = 0;
};

// Offset of the first byte that does not belong to a well-formed UTF-8 sequence (overlong forms,
// surrogates and code points past U+10FFFF included), or npos.
std::size_t firstInvalidUtf8(const std::string& text);

// ASCII lower case: CSS keywords, units and function names are case-insensitive.
std::string lower(std::string_view s);

std::optional<double> parseNumber(std::string_view text);

// Lengths resolve to user units (CSS px). Percentages need the reference length; em and ex the
// font size.
enum class LengthAxis { X, Y, Other };

struct LengthContext {
  double viewportWidth = 300.0;
  double viewportHeight = 150.0;
  double fontSize = 16.0;

  double percentBase(LengthAxis axis) const;
};

// A length with an optional unit (px, pt, pc, mm, cm, in, em, ex, %). Nothing when malformed.
std::optional<double> parseLength(std::string_view text, const LengthContext& ctx, LengthAxis axis);

std::string_view trim(std::string_view s);

}  // namespace refhost::io::svg
