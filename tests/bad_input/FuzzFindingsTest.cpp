// Inputs the fuzzers found, kept as they were reduced: each reader must refuse the input with
// IoError, or import a document that saves as native JSON and loads back equal.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "refhost/document/Equivalence.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/SvgImport.h"

namespace bad_input {
namespace {

using namespace refhost;

enum class Reader { Svg, Native };

struct Finding {
  std::string name;
  Reader reader;
  std::string bytes;
  std::string baseDirectory = "/nonexistent";  // where an SVG's relative image paths start
};

std::unique_ptr<Document> read(const Finding& f) {
  if (f.reader == Reader::Native) return io::documentFromJson(f.bytes, "finding.json");
  return io::importSvgText(f.bytes, "finding.svg", f.baseDirectory).document;
}

const std::string kSvgOpen = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\">";

TEST(FuzzFindings, RefusedOrSavedAndLoadedBackEqual) {
  const Finding findings[] = {
      // fuzz_svg_import: a byte that is not UTF-8 in a text element came back as U+FFFD.
      {"svg text with a stray continuation byte", Reader::Svg, kSvgOpen + "<text x=\"1\" y=\"9\">\xb4i</text></svg>"},
      {"svg id with a truncated sequence", Reader::Svg, kSvgOpen + "<rect id=\"a\xe2\x82\" width=\"5\" height=\"5\"/></svg>"},
      {"svg layer named with an overlong form", Reader::Svg,
       kSvgOpen + "<g id=\"\xc0\xaf\"><rect width=\"5\" height=\"5\"/></g></svg>"},
      // fuzz_svg_import: an image path whose %-escape decodes to a stray byte became a file reference
      // that the native document saved as U+FFFD.
      {"svg image path with an escaped stray byte", Reader::Svg,
       kSvgOpen + "<image xlink:href=\"fata:image/png;bas%91,iVBOR\" width=\"4\" height=\"4\" "
                  "xmlns:xlink=\"http://www.w3.org/1999/xlink\"/></svg>"},
      {"svg image beside a folder named in another encoding", Reader::Svg,
       kSvgOpen + "<image href=\"a.png\" width=\"4\" height=\"4\"/></svg>", "/tmp/caf\xe9"},
      // fuzz_native_import: a number past a double left the reader as the parser's own exception.
      {"native number with a huge exponent", Reader::Native,
       "{\"format\": 66660000000000000000000008931849800914741930e000000000000008931849800914741930}"},
      {"native number past a double", Reader::Native, "[1e99999]"},
  };
  for (const Finding& f : findings) {
    std::unique_ptr<Document> document;
    try {
      document = read(f);
    } catch (const io::IoError&) {
      continue;
    }
    const std::string saved = io::documentToJson(*document);
    std::string difference;
    try {
      const auto loaded = io::documentFromJson(saved, "saved.json");
      EXPECT_TRUE(equivalent(*document, *loaded, &difference)) << f.name << ": " << difference;
    } catch (const io::IoError& error) {
      ADD_FAILURE() << f.name << ": the saved document does not load: " << error.what();
    }
  }
}

// Well-formed UTF-8 of every length still imports, and keeps its text.
TEST(FuzzFindings, ValidUtf8TextStillImports) {
  const std::string words = "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80";  // a, e acute, euro sign, an emoji
  const auto result = io::importSvgText(kSvgOpen + "<text x=\"1\" y=\"9\">" + words + "</text></svg>", "ok.svg",
                                        "/nonexistent");
  std::string found;
  result.document->forEachArt([&](Art* art) {
    if (art->kind() == ArtKind::TextFrame) found = art->text()->text;
  });
  EXPECT_EQ(found, words);
  // An escaped UTF-8 image path is decoded and kept as the reference.
  const auto image = io::importSvgText(kSvgOpen + "<image href=\"caf%C3%A9.png\" width=\"4\" height=\"4\"/></svg>",
                                       "ok.svg", "/nonexistent");
  std::string reference;
  image.document->forEachArt([&](Art* art) {
    if (art->kind() == ArtKind::Placed) reference = art->placed()->fileReference;
  });
  EXPECT_EQ(reference, "/nonexistent/caf\xc3\xa9.png");
}

}  // namespace
}  // namespace bad_input
