#pragma once
// Opening the document a verb works on: SVG (imported), the native JSON format, or a PNG or TIFF
// image (one raster art).
#include <memory>
#include <string>
#include <vector>

namespace refhost {
class Document;
class Host;

namespace cli {
class StagedFiles;

// Reads an SVG or native document or an image, told apart by the extension (.svg, .json, .png,
// .tif, .tiff) or else by the file's first bytes. The importer's warnings (content it skipped) go to `warnings`.
// Throws ToolError with the reader's one-line message.
std::unique_ptr<Document> readDocumentFile(const std::string& path, std::vector<std::string>* warnings = nullptr);

// Reads the file and makes it the host's open document, printing the importer's warnings as
// "warning: ..." lines on stderr. The document is the host's; the reference stays valid while it
// is open.
Document& openDocumentFile(Host& host, const std::string& path);

// Writes the document in the native format under the staged name of `path` among `files`
// (nothing when `path` is empty). Throws ToolError with the writer's one-line message.
void stageDocument(const Document& document, const std::string& path, StagedFiles& files);

}  // namespace cli
}  // namespace refhost
