#include "fuzz/NativeRoundTrip.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "refhost/document/Equivalence.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"

namespace fuzz {

void checkNativeRoundTrip(const refhost::Document& document) {
  const std::string text = refhost::io::documentToJson(document);
  std::string why;
  try {
    const auto loaded = refhost::io::documentFromJson(text, "saved.json");
    if (refhost::equivalent(document, *loaded, &why)) return;
  } catch (const refhost::io::IoError& error) {
    why = std::string("the saved document does not load: ") + error.what();
  }
  std::fprintf(stderr, "native round trip: %s\n", why.c_str());
  std::abort();
}

}  // namespace fuzz
