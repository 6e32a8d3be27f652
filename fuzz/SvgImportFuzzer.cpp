// SVG import over arbitrary text: a malformed or absurd file is refused with IoError and nothing
// else; whatever imports saves as a native document that loads back equal.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/NativeRoundTrip.h"
#include "refhost/io/IoError.h"
#include "refhost/io/SvgImport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  // Limits small enough that one input stays within the fuzzer's time and memory budget.
  refhost::io::SvgImportOptions options;
  options.maxArt = 20000;
  options.maxPathPoints = 200000;
  options.maxImagePixels = 1u << 22;
  refhost::io::ImportResult result;
  try {
    // No base directory: the fuzzer never reads the files an input names.
    result = refhost::io::importSvgText(text, "fuzz.svg", "/nonexistent", options);
  } catch (const refhost::io::IoError&) {
    return 0;
  }
  fuzz::checkNativeRoundTrip(*result.document);
  return 0;
}
