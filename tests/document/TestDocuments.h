#pragma once

#include "refhost/document/Document.h"

#include <memory>

namespace refhost::testing {

// A document touching every kind of content, built the same way each time so that two builds can
// be compared.
std::unique_ptr<Document> buildRichDocument();

// Names of a container's children from the top.
std::string childNames(const Art* container);

}  // namespace refhost::testing
