#pragma once

#include "refhost/document/Document.h"

#include <cstddef>
#include <memory>
#include <string>

namespace refhost::io {

// The native document format: JSON holding the whole model (docs/document-format.md).
constexpr const char* kNativeFormatName = "refhost-document";
constexpr int kNativeFormatVersion = 1;

struct NativeLoadOptions {
  std::size_t maxFileBytes = 1u << 30;
  std::size_t maxDepth = 256;  // nesting of JSON arrays and objects
};

// Serialises the document; the text is deterministic (same content, same text).
std::string documentToJson(const Document& doc);
// Parses a document; throws IoError naming `sourceName`, the line and column for malformed JSON, or
// the JSON path of the offending value for content that does not fit the format.
std::unique_ptr<Document> documentFromJson(const std::string& text, const std::string& sourceName,
                                           const NativeLoadOptions& options = {});

// Saves through a temporary file renamed over `path`, so a failure leaves no partial file.
void saveDocument(const Document& doc, const std::string& path);
std::unique_ptr<Document> loadDocument(const std::string& path, const NativeLoadOptions& options = {});

}  // namespace refhost::io
