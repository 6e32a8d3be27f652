#include "refhost/document/Bounds.h"
#include "refhost/document/Equivalence.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/OpenDocument.h"
#include "refhost/io/SvgImport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <filesystem>

#include <string>
#include <vector>

namespace refhost {
namespace {

// SVG files that Debian packages put on the machine (scripts/packages.txt lists them).
const char* const kFolders[] = {
    "/usr/share/icons/Adwaita/scalable",
    "/usr/share/icons/hicolor/scalable",
    "/usr/share/aisleriot/cards",
    "/usr/share/openclipart",
};

void collect(const std::string& dir, std::vector<std::string>& out, std::size_t limit, int depth = 0) {
  if (depth > 6 || out.size() >= limit) return;
  std::error_code ec;
  std::vector<std::filesystem::path> entries;
  for (const auto& e : std::filesystem::directory_iterator(dir, ec)) entries.push_back(e.path());
  std::sort(entries.begin(), entries.end());
  for (const std::filesystem::path& p : entries) {
    if (out.size() >= limit) return;
    if (std::filesystem::is_directory(p, ec)) {
      collect(p.string(), out, limit, depth + 1);
    } else if (std::filesystem::exists(p, ec) && p.extension() == ".svg") {
      out.push_back(p.string());
    }
  }
}

TEST(RealWorld, PackagedSvgFilesImportAndRoundTrip) {
  std::vector<std::string> files;
  for (const char* folder : kFolders) collect(folder, files, files.size() + 400);
  if (files.empty()) GTEST_SKIP() << "no packaged SVG files on this machine";
  std::size_t withArt = 0;
  for (const std::string& file : files) {
    io::ImportResult r;
    try {
      r = io::importSvgFile(file);
    } catch (const io::IoError& e) {
      ADD_FAILURE() << e.what();
      continue;
    }
    ASSERT_EQ(r.document->artboards().size(), 1u) << file;
    Rect bounds = Rect::none();
    for (Layer* l : r.document->layers()) bounds = bounds.united(artBounds(*l->group()));
    if (!bounds.isEmpty()) ++withArt;
    auto loaded = io::documentFromJson(io::documentToJson(*r.document), file + ".json");
    std::string why;
    EXPECT_TRUE(equivalent(*r.document, *loaded, &why)) << file << ": " << why;
  }
  EXPECT_GT(withArt, files.size() * 9 / 10) << "most files draw something";
  std::cout << "[          ] imported " << files.size() << " packaged SVG files\n";
}

TEST(RealWorld, ExamplesLoad) {
  std::vector<std::string> files;
  collect(RASTERIZE_EXAMPLES_DIR, files, 1000);
  std::size_t json = 0;
  for (const auto& e : std::filesystem::directory_iterator(RASTERIZE_EXAMPLES_DIR)) {
    if (e.path().extension() != ".json") continue;
    EXPECT_GT(io::loadDocument(e.path().string())->layerCount(), 0u) << e.path();
    ++json;
  }
  for (const std::string& f : files) {
    if (f.find("/client_plugin/") != std::string::npos) continue;
    auto r = io::importSvgFile(f);
    EXPECT_TRUE(r.warnings.empty()) << f << ": " << (r.warnings.empty() ? "" : r.warnings[0]);
  }
  EXPECT_GE(json, 3u);
  EXPECT_GE(files.size(), 2u);
}

TEST(RealWorld, OpenDocumentTellsFormatsApartByContent) {
  auto svg = io::openDocument(std::string(RASTERIZE_EXAMPLES_DIR) + "/shapes.svg");
  EXPECT_EQ(svg.document->layerCount(), 2u);
  auto json = io::openDocument(std::string(RASTERIZE_EXAMPLES_DIR) + "/layers.json");
  EXPECT_EQ(json.document->layerCount(), 4u);
  EXPECT_TRUE(json.document->findLayer("Locked background")->isLocked());
  EXPECT_THROW(io::openDocument(std::string(RASTERIZE_EXAMPLES_DIR) + "/missing.svg"), io::IoError);
}

}  // namespace
}  // namespace refhost
