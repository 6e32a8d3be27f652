#include <CLI/CLI.hpp>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "host/suites/rasterize_suite.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

// `rasterize resample`: a raster art at a lower resolution, made by the plug-in's resampling
// (slot 5 of "DW Rasterize Suite", acquired from the host like any plug-in would).
namespace refhost {
namespace cli {

namespace {

constexpr DWErr kUnsupportedResample = hostCode("!IMP");

struct ResampleRequest {
  std::string input;
  std::string output;
  double resolution = 0.0;
  std::string method = "bicubic";
  std::string select;
};

int32_t methodCode(const std::string& method) {
  if (method == "nearest") return kDWResampleNearest;
  if (method == "average") return kDWResampleAverage;
  return kDWResampleBicubic;
}

std::string lowerExtension(const std::string& path) {
  const size_t dot = path.rfind('.');
  const size_t slash = path.rfind('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return {};
  std::string extension = path.substr(dot + 1);
  for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
  return extension;
}

// The raster the request names: the one named by --select, or the document's only raster.
Art* sourceRaster(const Document& document, const ResampleRequest& request) {
  std::vector<Art*> rasters;
  document.forEachArt([&](Art* art) {
    if (art->kind() == ArtKind::Raster && (request.select.empty() || art->name() == request.select))
      rasters.push_back(art);
  });
  if (rasters.size() == 1) return rasters.front();
  const std::string count = std::to_string(rasters.size());
  if (!request.select.empty())
    throw ToolError(rasters.empty() ? request.input + ": no raster art is named \"" + request.select + "\""
                                    : request.input + ": " + count + " rasters are named \"" + request.select + "\"");
  if (rasters.empty()) throw ToolError(request.input + ": the document holds no raster art");
  throw ToolError(request.input + ": the document holds " + count + " rasters; name one with --select NAME");
}

std::string ppiText(double ppi) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4g", ppi);
  return text;
}

void writeOutput(Document& document, Art& source, Art& made, const std::string& path) {
  const std::string extension = lowerExtension(path);
  if (extension == "png") {
    io::exportPng(io::rasterSourceOf(made), path);
  } else if (extension == "tif" || extension == "tiff") {
    io::exportTiff(io::rasterSourceOf(made), path);
  } else {
    // The document itself: the new raster takes its source's place.
    document.disposeArt(&source);
    io::saveDocument(document, path);
  }
}

void resample(Tool& tool, const ResampleRequest& request) {
  const std::string extension = lowerExtension(request.output);
  if (extension != "png" && extension != "tif" && extension != "tiff" && extension != "json")
    throw ToolError(request.output + ": the output must end in .png, .tif/.tiff or .json");

  auto session = tool.startSession();
  Host& host = session->host();
  Document& document = openDocumentFile(host, request.input);
  Art* source = sourceRaster(document, request);
  const double sourcePpi = io::rasterResolution(*source->raster());

  const void* table = nullptr;
  if (host.acquireSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion, &table) != kDWNoErr || !table)
    throw ToolError("the plug-in offers no \"" kDWRasterizeSuite "\" version 10");
  const auto* suite = static_cast<const DWRasterizeSuite*>(table);
  DWArtHandle made = nullptr;
  const auto handle = reinterpret_cast<DWArtHandle>(source);
  const DWErr result = suite->ResampleRasterArt(handle, methodCode(request.method), request.resolution,
                                                kDWPlaceAbove, handle, &made);
  host.releaseSuite(kDWRasterizeSuite, kDWRasterizeSuiteVersion);

  if (result == kUnsupportedResample)
    throw ToolError("cannot resample " + request.input + " to " + ppiText(request.resolution) +
                    " ppi: resampling only lowers the resolution (the raster has " + ppiText(sourcePpi) +
                    " ppi) and needs 8 bits per channel");
  tool.check(result, "resampling");
  Art* resampled = document.liveArt(made);
  if (!resampled) throw ToolError("the raster's layer is locked: nothing was resampled");
  writeOutput(document, *source, *resampled, request.output);
  session->end();
}

}  // namespace

void addResampleVerb(CLI::App& app, Tool& tool) {
  auto request = std::make_shared<ResampleRequest>();
  auto* verb = app.add_subcommand(
      "resample", "Resample a raster to a lower resolution with the plug-in's image streams and write it out");
  verb->add_option("INPUT", request->input, "A PNG or TIFF image, or a document holding raster art")->required();
  verb->add_option("-o,--output", request->output,
                   "The new raster as .png or .tif/.tiff, or the document with the raster replaced as .json")
      ->required();
  verb->add_option("--resolution", request->resolution,
                   "Pixels per inch of the new raster; at most the raster's own")
      ->required()
      ->check(CLI::PositiveNumber);
  verb->add_option("--method", request->method, "nearest, average (area average) or bicubic")
      ->check(CLI::IsMember({"nearest", "average", "bicubic"}))
      ->capture_default_str();
  verb->add_option("--select", request->select,
                   "The raster to resample, by name (an SVG element's id, a native file's \"name\"); needed when "
                   "the document holds more than one");
  verb->callback([&tool, request] { resample(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
