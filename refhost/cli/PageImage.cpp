#include "refhost/cli/PageImage.h"

#include <CLI/CLI.hpp>

#include <cctype>

#include "refhost/cli/PageRaster.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

bool isPng(const std::string& path) {
  const size_t dot = path.rfind('.');
  std::string extension = dot == std::string::npos ? std::string() : path.substr(dot + 1);
  for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
  if (extension == "png") return true;
  if (extension == "tif" || extension == "tiff") return false;
  throw ToolError(path + ": the page image must end in .png or .tif/.tiff");
}

}  // namespace

CLI::Option* PageImage::addTo(CLI::App& verb) {
  verb.add_option("--page-resolution", resolution, "Resolution of the page image (default 96: one SVG px per pixel)")
      ->type_name("PPI")
      ->check(CLI::Range(1.0, 9600.0));
  return verb.add_option("-o,--output", path, "Render the page afterwards: .png or .tif (RGB on white)")->type_name("FILE");
}

void PageImage::check() const {
  if (!path.empty()) isPng(path);
}

void PageImage::stage(Tool& tool, Host& host, Document& document, StagedFiles& files) const {
  RasterizeSettings settings = commandDefaultSettings();
  const Rect page = pageBounds(document);
  settings.resolution = settleResolution(page, settings.padding, resolution, settings.options);
  preparePage(document);
  Art* raster = nullptr;
  const DWErr result = rasterizePage(host, settings, page, &raster);
  if (host.ui().cancelRequested()) throw ToolCancelled();
  tool.check(result, "rendering the page");
  try {
    const io::RasterSource source = io::rasterSourceOf(*raster);
    if (isPng(path))
      io::exportPng(source, files.stage(path));
    else
      io::exportTiff(source, files.stage(path));
  } catch (const io::ExportError& error) {
    throw ToolError(error.what());
  }
}

}  // namespace cli
}  // namespace refhost
