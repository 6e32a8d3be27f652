#pragma once

#include <string>

namespace refhost {

// Writes `bytes` to `path` through a temporary file in the same folder that is renamed over the
// target, so a failure never leaves a partial file. Throws std::runtime_error naming the file.
void writeFileAtomically(const std::string& path, const std::string& bytes);

}  // namespace refhost
