#pragma once
#include "refhost/document/Document.h"

namespace fuzz {

// Saves the document as native JSON and loads it back; aborts with the difference when the text
// does not load or loads as another document.
void checkNativeRoundTrip(const refhost::Document& document);

}  // namespace fuzz
