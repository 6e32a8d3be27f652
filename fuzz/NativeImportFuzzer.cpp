// Native document import over arbitrary text: malformed JSON or content that does not fit the
// format is refused with IoError; whatever loads saves and loads back equal.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/NativeRoundTrip.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::unique_ptr<refhost::Document> document;
  try {
    document = refhost::io::documentFromJson(text, "fuzz.json");
  } catch (const refhost::io::IoError&) {
    return 0;
  }
  fuzz::checkNativeRoundTrip(*document);
  return 0;
}
