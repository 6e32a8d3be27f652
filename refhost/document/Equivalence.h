#pragma once

#include "refhost/document/Document.h"

#include <string>

namespace refhost {

// True when the two documents hold the same content: the same layers with the same flags, art trees
// of the same shape with equal kinds, attributes, user data, styles and kind-specific data (pixels
// included), symbols, custom colours, artboards, colour mode, level number and dictionary. Object
// identity (addresses, serials), dead objects and undo history do not count. On a difference,
// `difference` receives a one-line description naming where it is.
bool equivalent(const Document& a, const Document& b, std::string* difference = nullptr);

}  // namespace refhost
