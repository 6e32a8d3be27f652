#include "SvgTestSupport.h"

#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace refhost {
namespace {

// A file the loaders must refuse with one line naming the file, and the line when known.
struct BadInput {
  const char* name;
  std::string text;
  std::size_t line;  // 0: no line expected
  const char* words;
};

void expectRefused(const BadInput& c, const std::string& file, const std::function<void()>& load) {
  try {
    load();
    ADD_FAILURE() << c.name << ": accepted";
  } catch (const io::IoError& e) {
    const std::string what = e.what();
    EXPECT_EQ(what.find('\n'), std::string::npos) << c.name << ": " << what;
    EXPECT_EQ(what.rfind(file + ":", 0), 0u) << c.name << ": " << what;
    EXPECT_NE(what.find(c.words), std::string::npos) << c.name << ": " << what;
    if (c.line) {
      EXPECT_EQ(e.line(), c.line) << c.name << ": " << what;
      EXPECT_EQ(what.rfind(file + ":" + std::to_string(c.line) + ":", 0), 0u) << c.name << ": " << what;
    }
  }
}

std::string deepNesting(int depth) {
  std::string s = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'>\n";
  for (int i = 0; i < depth; ++i) s += "<g>";
  for (int i = 0; i < depth; ++i) s += "</g>";
  return s + "</svg>";
}

const BadInput kBadSvgs[] = {
    {"unclosed tag", "<svg xmlns='http://www.w3.org/2000/svg'>\n<rect width='1'\n</svg>", 3, "malformed XML"},
    {"mismatched end", "<svg xmlns='http://www.w3.org/2000/svg'>\n<g>\n</svg>", 3, "malformed XML"},
    {"not xml", "just text", 1, "malformed XML"},
    {"empty", "", 1, "malformed XML"},
    {"not svg", "<html/>", 0, "not an SVG document"},
    {"negative width", "<svg xmlns='http://www.w3.org/2000/svg' width='-5' height='5'/>", 1, "positive"},
    {"absurd width", "<svg xmlns='http://www.w3.org/2000/svg' width='1e300' height='5'/>", 1, "beyond the limit"},
    {"absurd viewBox size", "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 1e12 1e12'/>", 1, "beyond the limit"},
    {"nesting too deep", deepNesting(300), 2, "nested deeper"},
};

TEST(Malformed, SvgFailsWithOneLineNamingFileAndLine) {
  for (const BadInput& c : kBadSvgs) expectRefused(c, "test.svg", [&] { testing::importSvg(c.text); });
}

// Entities are never expanded: a file that declares them (the billion laughs, an external file
// such as /etc/passwd) is refused at once with one clear error.
TEST(Malformed, DocumentsDeclaringEntitiesAreRefused) {
  std::string laughs = "<?xml version='1.0'?>\n<!DOCTYPE svg [\n<!ENTITY lol 'lol'>\n";
  std::string prev = "lol";
  for (int i = 1; i <= 9; ++i) {
    laughs += "<!ENTITY lol" + std::to_string(i) + " '";
    for (int k = 0; k < 10; ++k) laughs += "&" + prev + ";";
    laughs += "'>\n";
    prev = "lol" + std::to_string(i);
  }
  laughs += "]>\n<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><text id='t' y='5'>&lol9;</text></svg>";
  const std::string external = "<!DOCTYPE svg [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>"
                               "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><text id='t' y='5'>&x;</text></svg>";
  for (const auto& c : {std::make_pair("billion laughs", laughs), std::make_pair("external entity", external)}) {
    const auto start = std::chrono::steady_clock::now();
    try {
      testing::importSvg(c.second);
      ADD_FAILURE() << c.first << ": accepted";
    } catch (const io::IoError& e) {
      EXPECT_NE(std::string(e.what()).find("entities"), std::string::npos) << c.first << ": " << e.what();
      EXPECT_EQ(std::string(e.what()).find("root:"), std::string::npos) << c.first;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << c.first;
  }
}

TEST(Malformed, ExponentialUseIsBounded) {
  // Each level uses the previous one ten times: 10^8 copies unless the importer stops it.
  std::string body = "<defs><rect id='l0' width='1' height='1'/>";
  for (int i = 1; i <= 8; ++i) {
    body += "<g id='l" + std::to_string(i) + "'>";
    for (int k = 0; k < 10; ++k) body += "<use href='#l" + std::to_string(i - 1) + "'/>";
    body += "</g>";
  }
  body += "</defs><use href='#l8'/>";
  io::SvgImportOptions options;
  options.maxArt = 100000;
  const BadInput c{"exponential use", testing::svgDoc(body), 0, "too many objects"};
  expectRefused(c, "bomb.svg", [&] { io::importSvgText(c.text, "bomb.svg", ".", options); });
}

TEST(Malformed, CircularUseIsSkippedWithAWarning) {
  auto r = testing::importSvg(testing::svgDoc("<g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g><use href='#self' id='self'/>"));
  ASSERT_FALSE(r.warnings.empty());
  EXPECT_NE(r.warnings[0].find("use:"), std::string::npos);
}

TEST(Malformed, GiantPathDataIsBounded) {
  std::string d = "M0 0";
  for (int i = 0; i < 20000; ++i) d += " l1 1";
  io::SvgImportOptions options;
  options.maxPathPoints = 10000;
  const BadInput c{"giant path data", testing::svgDoc("<path d='" + d + "'/>"), 1, "too many"};
  expectRefused(c, "big.svg", [&] { io::importSvgText(c.text, "big.svg", ".", options); });
}

TEST(Malformed, OverflowingCoordinatesAreSkipped) {
  auto r = testing::importSvg(testing::svgDoc("<g transform='scale(1e300)'><rect id='a' width='1e300' height='1'/></g>"
                                              "<rect id='b' width='1' height='1'/>"));
  EXPECT_EQ(testing::findArt(*r.document, "a"), nullptr);
  EXPECT_NE(testing::findArt(*r.document, "b"), nullptr);
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].find("out of range"), std::string::npos);
}

TEST(Malformed, MissingFileIsOneLine) {
  const std::string what = testing::ioErrorOf([] { io::importSvgFile("/nonexistent/dir/x.svg"); });
  EXPECT_EQ(what.rfind("/nonexistent/dir/x.svg: cannot open", 0), 0u) << what;
}

const BadInput kBadJson[] = {
    {"syntax", "{\n  \"format\": \"refhost-document\",\n  \"version\": 1,,\n}", 3, "malformed JSON"},
    {"truncated", "{\n  \"format\": ", 2, "malformed JSON"},
    {"not an object", "[1, 2]", 0, "at /: the document must be a JSON object"},
    {"wrong format", "{\"format\": \"other\", \"version\": 1}", 0, "at /format"},
    {"wrong version", "{\"format\": \"refhost-document\", \"version\": 99}", 0, "unsupported version"},
    {"missing layers", "{\"format\": \"refhost-document\", \"version\": 1, \"colorMode\": \"rgb\"}", 0, "missing \"layers\""},
    {"bad kind", "{\"format\": \"refhost-document\", \"version\": 1, \"colorMode\": \"rgb\", \"layers\": [{\"name\": \"L\", "
                 "\"group\": {\"kind\": \"group\", \"children\": [{\"kind\": \"blob\"}]}}]}",
     0, "at /layers/0/group/children/0/kind"},
    {"bad pixels", "{\"format\": \"refhost-document\", \"version\": 1, \"colorMode\": \"rgb\", \"layers\": [{\"name\": \"L\", "
                   "\"group\": {\"kind\": \"group\", \"children\": [{\"kind\": \"raster\", \"record\": {\"bounds\": [0,0,2,2], "
                   "\"byteWidth\": 8, \"colorSpace\": 1, \"bitsPerPixel\": 24}, \"matrix\": [1,0,0,1,0,0], \"pixels\": \"AAAA\"}]}}]}",
     0, "bytes where byteWidth x height is 16"},
    {"unknown spot", "{\"format\": \"refhost-document\", \"version\": 1, \"colorMode\": \"rgb\", \"layers\": [{\"name\": \"L\", "
                     "\"group\": {\"kind\": \"group\", \"style\": {\"fill\": {\"type\": \"spot\", \"color\": 7}}}}]}",
     0, "no custom colour has this id"},
    {"deep nesting", std::string(1000, '[') + std::string(1000, ']'), 1, "nested deeper"},
};

TEST(Malformed, NativeJsonFailsWithOneLine) {
  for (const BadInput& c : kBadJson) expectRefused(c, "doc.json", [&] { io::documentFromJson(c.text, "doc.json"); });
}

}  // namespace
}  // namespace refhost
