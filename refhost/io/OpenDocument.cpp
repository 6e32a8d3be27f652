#include "refhost/io/OpenDocument.h"

#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"

namespace refhost::io {

ImportResult openDocument(const std::string& path) {
  const NativeLoadOptions native;
  const std::string text = readFile(path, native.maxFileBytes);
  std::size_t i = 0;
  // Skip a UTF-8 byte-order mark and white space.
  if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) i = 3;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' || text[i] == '\r')) ++i;
  if (i < text.size() && text[i] == '{') {
    ImportResult result;
    result.document = documentFromJson(text, path, native);
    return result;
  }
  if (text.size() >= 2 && static_cast<unsigned char>(text[0]) == 0x1F && static_cast<unsigned char>(text[1]) == 0x8B) {
    throw IoError(path, "compressed SVG (svgz) is not supported; decompress it first");
  }
  const std::size_t slash = path.find_last_of('/');
  return importSvgText(text, path, slash == std::string::npos ? std::string(".") : path.substr(0, slash));
}

}  // namespace refhost::io
