#pragma once

#include "refhost/io/CssStyle.h"
#include "refhost/io/SvgNumbers.h"

#include <pugixml.hpp>

#include <string>
#include <vector>

namespace refhost::io::svg {

// The properties the importer uses, computed for one element: inherited ones come from the parent,
// the others start at their initial values. Paints are kept as text ("none", a colour,
// "currentColor", "url(#id) fallback") and resolved where they are used.
struct ComputedStyle {
  // Inherited.
  std::string fill = "black";
  std::string stroke = "none";
  double fillOpacity = 1.0;
  double strokeOpacity = 1.0;
  std::string fillRule = "nonzero";
  std::string clipRule = "nonzero";
  double strokeWidth = 1.0;  // user units
  std::string lineJoin = "miter";
  std::string lineCap = "butt";
  double miterLimit = 4.0;
  std::vector<double> dashArray;  // user units; empty: solid
  double dashOffset = 0.0;
  std::string visibility = "visible";
  std::string color = "black";
  double fontSize = 16.0;  // user units
  std::string fontFamily = "sans-serif";
  std::string textAnchor = "start";
  // Not inherited.
  double opacity = 1.0;
  std::string display = "inline";
  std::string clipPath = "none";
  std::string mask = "none";
  std::string filter = "none";
  std::string marker[3] = {"none", "none", "none"};  // start, mid, end
  std::string overflow;  // lower case; empty: the element's default (inner viewports hide)
  std::string stopColor = "black";
  double stopOpacity = 1.0;

  bool isDisplayed() const { return display != "none"; }
  bool isVisible() const { return visibility == "visible"; }
};

// Computes an element's style: presentation attributes, then the sheet's rules by specificity, then
// the style attribute, then !important rules of the sheet and of the style attribute; "inherit"
// takes the parent's value; invalid values are ignored. `lengths` carries the viewport for
// percentages (its font size is replaced by the parent's).
ComputedStyle computeStyle(const ComputedStyle& parent, const pugi::xml_node& element, const StyleSheet& sheet,
                           LengthContext lengths);

// True when a paint text is one the importer understands (none, colour, currentColor, url()).
bool isValidPaint(const std::string& value);

}  // namespace refhost::io::svg
