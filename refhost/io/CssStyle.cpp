#include "refhost/io/CssStyle.h"

#include "refhost/io/SvgNumbers.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace refhost::io::svg {

namespace {

std::string withoutComments(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '/' && i + 1 < text.size() && text[i + 1] == '*') {
      const std::size_t end = text.find("*/", i + 2);
      if (end == std::string_view::npos) break;
      i = end + 1;
      out += ' ';
    } else {
      out += text[i];
    }
  }
  return out;
}

bool isNameChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || (c & 0x80); }

}  // namespace

std::vector<Declaration> parseDeclarations(std::string_view text) {
  std::vector<Declaration> out;
  const std::string clean = withoutComments(text);
  std::size_t i = 0;
  while (i < clean.size()) {
    std::size_t end = clean.find(';', i);
    // A ';' inside url(...) or quotes does not end the declaration.
    std::size_t paren = clean.find('(', i);
    if (paren != std::string::npos && paren < end) {
      const std::size_t close = clean.find(')', paren);
      end = close == std::string::npos ? std::string::npos : clean.find(';', close);
    }
    const std::string_view decl = std::string_view(clean).substr(i, end == std::string::npos ? std::string::npos : end - i);
    i = end == std::string::npos ? clean.size() : end + 1;
    const std::size_t colon = decl.find(':');
    if (colon == std::string_view::npos) continue;
    Declaration d;
    d.property = lower(trim(decl.substr(0, colon)));
    std::string_view value = trim(decl.substr(colon + 1));
    const std::size_t bang = value.rfind('!');
    if (bang != std::string_view::npos && lower(trim(value.substr(bang + 1))) == "important") {
      d.important = true;
      value = trim(value.substr(0, bang));
    }
    d.value = std::string(value);
    if (!d.property.empty() && !d.value.empty()) out.push_back(std::move(d));
  }
  return out;
}

std::string svgLocalName(const pugi::xml_node& node) {
  const char* name = node.name();
  const char* colon = std::strchr(name, ':');
  if (!colon) return name;
  if (std::string(name, static_cast<std::size_t>(colon - name)) == "svg") return colon + 1;
  return std::string();
}

bool StyleSheet::parseSelector(std::string_view text, Rule& rule) {
  text = trim(text);
  if (text.empty()) return false;
  std::size_t i = 0;
  char pending = 0;
  int ids = 0, classes = 0, types = 0;
  while (i < text.size()) {
    const char c = text[i];
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
      if (!rule.parts.empty() && pending == 0) pending = ' ';
      ++i;
      continue;
    }
    if (c == '>') {
      if (rule.parts.empty()) return false;
      pending = '>';
      ++i;
      continue;
    }
    Compound comp;
    bool any = false;
    while (i < text.size()) {
      const char d = text[i];
      if (d == '*') {
        any = true;
        ++i;
      } else if (isNameChar(d) && comp.type.empty() && !any && comp.id.empty() && comp.classes.empty()) {
        while (i < text.size() && isNameChar(text[i])) comp.type += text[i++];
        ++types;
      } else if (d == '.' || d == '#') {
        ++i;
        std::string name;
        while (i < text.size() && isNameChar(text[i])) name += text[i++];
        if (name.empty()) return false;
        if (d == '.') {
          comp.classes.push_back(name);
          ++classes;
        } else {
          if (!comp.id.empty()) return false;
          comp.id = name;
          ++ids;
        }
      } else {
        break;
      }
    }
    if (i < text.size() && !(text[i] == ' ' || text[i] == '\t' || text[i] == '\n' || text[i] == '\r' || text[i] == '>')) {
      return false;  // attribute selectors, pseudo-classes, sibling combinators
    }
    if (!rule.parts.empty()) rule.combinators.push_back(pending ? pending : ' ');
    pending = 0;
    rule.parts.push_back(std::move(comp));
  }
  if (rule.parts.empty() || pending == '>') return false;
  rule.specificity = ids * 10000 + classes * 100 + types;
  return true;
}

void StyleSheet::parse(std::string_view text, std::vector<std::string>& unsupported) {
  const std::string clean = withoutComments(text);
  std::size_t i = 0;
  auto skipBlock = [&](std::size_t open) {
    int depth = 0;
    for (std::size_t j = open; j < clean.size(); ++j) {
      if (clean[j] == '{') ++depth;
      if (clean[j] == '}' && --depth == 0) return j + 1;
    }
    return clean.size();
  };
  while (i < clean.size()) {
    while (i < clean.size() && std::isspace(static_cast<unsigned char>(clean[i]))) ++i;
    if (i >= clean.size()) break;
    if (clean.compare(i, 4, "<!--") == 0) {
      i += 4;
      continue;
    }
    if (clean.compare(i, 3, "-->") == 0) {
      i += 3;
      continue;
    }
    if (clean[i] == '@') {
      const std::size_t semi = clean.find(';', i);
      const std::size_t brace = clean.find('{', i);
      if (brace != std::string::npos && (semi == std::string::npos || brace < semi)) {
        unsupported.push_back(std::string(trim(std::string_view(clean).substr(i, brace - i))));
        i = skipBlock(brace);
      } else {
        i = semi == std::string::npos ? clean.size() : semi + 1;
      }
      continue;
    }
    const std::size_t open = clean.find('{', i);
    if (open == std::string::npos) break;
    const std::size_t close = clean.find('}', open);
    const std::string_view selectors = std::string_view(clean).substr(i, open - i);
    const std::string_view body =
        std::string_view(clean).substr(open + 1, (close == std::string::npos ? clean.size() : close) - open - 1);
    i = close == std::string::npos ? clean.size() : close + 1;
    const std::vector<Declaration> declarations = parseDeclarations(body);
    std::size_t start = 0;
    while (start <= selectors.size()) {
      std::size_t comma = selectors.find(',', start);
      if (comma == std::string_view::npos) comma = selectors.size();
      const std::string_view one = selectors.substr(start, comma - start);
      Rule rule;
      if (parseSelector(one, rule)) {
        rule.order = rules_.size();
        rule.declarations = declarations;
        rules_.push_back(std::move(rule));
      } else if (!trim(one).empty()) {
        unsupported.push_back(std::string(trim(one)));
      }
      start = comma + 1;
    }
  }
}

bool StyleSheet::matchCompound(const Compound& c, const pugi::xml_node& e) {
  if (e.type() != pugi::node_element) return false;
  if (!c.type.empty() && svgLocalName(e) != c.type) return false;
  if (!c.id.empty() && c.id != e.attribute("id").value()) return false;
  if (!c.classes.empty()) {
    const std::string classAttr = e.attribute("class").value();
    for (const std::string& wanted : c.classes) {
      bool found = false;
      std::size_t pos = 0;
      while (pos < classAttr.size() && !found) {
        while (pos < classAttr.size() && std::isspace(static_cast<unsigned char>(classAttr[pos]))) ++pos;
        std::size_t end = pos;
        while (end < classAttr.size() && !std::isspace(static_cast<unsigned char>(classAttr[end]))) ++end;
        found = classAttr.compare(pos, end - pos, wanted) == 0 && end - pos == wanted.size();
        pos = end;
      }
      if (!found) return false;
    }
  }
  return true;
}

bool StyleSheet::matchFrom(const Rule& r, std::size_t part, const pugi::xml_node& e) {
  if (!matchCompound(r.parts[part], e)) return false;
  if (part == 0) return true;
  const char comb = r.combinators[part - 1];
  if (comb == '>') return matchFrom(r, part - 1, e.parent());
  for (pugi::xml_node a = e.parent(); a && a.type() == pugi::node_element; a = a.parent()) {
    if (matchFrom(r, part - 1, a)) return true;
  }
  return false;
}

std::vector<const Declaration*> StyleSheet::matching(const pugi::xml_node& element) const {
  std::vector<const Rule*> hits;
  for (const Rule& r : rules_) {
    if (matchFrom(r, r.parts.size() - 1, element)) hits.push_back(&r);
  }
  std::stable_sort(hits.begin(), hits.end(), [](const Rule* a, const Rule* b) {
    return a->specificity != b->specificity ? a->specificity < b->specificity : a->order < b->order;
  });
  std::vector<const Declaration*> out;
  for (const Rule* r : hits) {
    for (const Declaration& d : r->declarations) out.push_back(&d);
  }
  return out;
}

}  // namespace refhost::io::svg
