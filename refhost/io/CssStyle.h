#pragma once

#include <pugixml.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace refhost::io::svg {

struct Declaration {
  std::string property;  // lower case
  std::string value;
  bool important = false;
};

// "fill: red; stroke: blue !important" -> declarations; malformed parts are skipped.
std::vector<Declaration> parseDeclarations(std::string_view text);

// The local name of an element in the SVG namespace ("svg:rect" -> "rect"); empty for elements of
// other vocabularies (inkscape:, sodipodi: ...).
std::string svgLocalName(const pugi::xml_node& node);

// A <style> sheet: rules with type, class, id and universal selectors, compounds of them
// ("rect.a#b"), descendant and child combinators and comma lists.
class StyleSheet {
 public:
  // Adds the rules of a sheet; each selector that uses unsupported syntax is skipped and its text
  // appended to `unsupported`.
  void parse(std::string_view text, std::vector<std::string>& unsupported);
  // Declarations of every matching rule, lowest priority first (specificity, then order).
  std::vector<const Declaration*> matching(const pugi::xml_node& element) const;
  bool empty() const { return rules_.empty(); }
  std::size_t ruleCount() const { return rules_.size(); }

 private:
  struct Compound {
    std::string type;  // empty: any
    std::string id;
    std::vector<std::string> classes;
  };
  struct Rule {
    std::vector<Compound> parts;     // left to right
    std::vector<char> combinators;   // between parts: ' ' descendant, '>' child
    int specificity = 0;
    std::size_t order = 0;
    std::vector<Declaration> declarations;
  };

  static bool parseSelector(std::string_view text, Rule& rule);
  static bool matchCompound(const Compound& c, const pugi::xml_node& e);
  static bool matchFrom(const Rule& r, std::size_t part, const pugi::xml_node& e);

  std::vector<Rule> rules_;
};

}  // namespace refhost::io::svg
