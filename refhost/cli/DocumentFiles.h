#pragma once
// Opening the document a verb works on: SVG (imported) or the native JSON format.
#include <memory>
#include <string>
#include <vector>

namespace refhost {
class Document;
class Host;

namespace cli {

// Reads an SVG or native document, told apart by the extension (.svg, .json) or else by the
// first character of the file. The importer's warnings (content it skipped) go to `warnings`.
// Throws ToolError with the reader's one-line message.
std::unique_ptr<Document> readDocumentFile(const std::string& path, std::vector<std::string>* warnings = nullptr);

// Reads the file and makes it the host's open document, printing the importer's warnings as
// "warning: ..." lines on stderr. The document is the host's; the reference stays valid while it
// is open.
Document& openDocumentFile(Host& host, const std::string& path);

}  // namespace cli
}  // namespace refhost
