#pragma once

#include "refhost/io/SvgImport.h"

#include <string>

namespace refhost::io {

// Opens an SVG or a native JSON document, told apart by content (a JSON document starts with '{',
// an SVG with '<'), whatever the file is called. Native documents come without warnings. Throws
// IoError.
ImportResult openDocument(const std::string& path);

}  // namespace refhost::io
