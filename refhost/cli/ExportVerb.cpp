#include <CLI/CLI.hpp>

#include <cctype>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/PageRaster.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/cli/WholeDocument.h"
#include "refhost/document/Document.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

enum class Format { Png, Tiff };

// 'PARM': what RasterizeDocument answers when no layer holds art it may draw.
constexpr DWErr kBadParameter = 0x5041524D;

std::string lowerExtension(const std::string& path) {
  const size_t dot = path.rfind('.');
  const size_t slash = path.rfind('/');
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return {};
  std::string extension = path.substr(dot + 1);
  for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
  return extension;
}

Format outputFormat(const std::string& path) {
  const std::string extension = lowerExtension(path);
  if (extension == "png") return Format::Png;
  if (extension == "tif" || extension == "tiff") return Format::Tiff;
  throw ToolError(path + ": the output must end in .png or .tif/.tiff");
}

struct ExportRequest {
  std::string input;
  std::string output;
  std::string preview;
  int32_t width = 0;
  int32_t height = 0;
  bool wholeDocument = false;
  RasterizeFlags flags;
};

void exportPage(Tool& tool, const ExportRequest& request) {
  const Format format = outputFormat(request.output);
  if (!request.preview.empty() && outputFormat(request.preview) != Format::Png)
    throw ToolError(request.preview + ": the preview is a PNG file");
  RasterizeSettings settings = request.flags.apply(commandDefaultSettings());
  if (request.wholeDocument && settings.padding != 0.0)
    throw ToolError("--padding does not apply to --whole-document, which rasterizes the layers' own bounds");
  if (format == Format::Png && (settings.type == kRasterTypeCmyk || settings.type == kRasterTypeCmykTransparent))
    throw ToolError(request.output + ": PNG holds gray and RGB only; write CMYK to a .tif file");

  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  Document& document = openDocumentFile(host, request.input);
  Art* raster = nullptr;
  DWErr result = kDWNoErr;
  if (request.wholeDocument) {
    preparePage(document);
    result = rasterizeWholeDocument(host, settings, &raster);
    if (result == kBadParameter) throw ToolError(request.input + ": no shown, printable layer holds art to rasterize");
  } else {
    const Rect page = pageBounds(document);
    if (request.width > 0 || request.height > 0) {
      // The page maps onto exactly the asked pixels, so the grid snapping near 72 ppi is off.
      settings.resolution = request.width > 0 ? resolutionForPixels(page.width(), settings.padding, request.width)
                                              : resolutionForPixels(page.height(), settings.padding, request.height);
      settings.options |= kRasterizeNoPixelSnap;
      settings.options &= ~uint32_t(kRasterizeUseEffectsResolution);
    } else {
      settings.resolution = settleResolution(page, settings.padding, settings.resolution, settings.options);
    }
    preparePage(document);
    result = rasterizePage(host, settings, page, &raster);
  }
  if (host.ui().cancelRequested()) throw ToolCancelled();
  tool.check(result, "rendering " + request.input);
  session->end();

  StagedFiles outputs;  // images renamed together at the end: a failure leaves none
  try {
    const io::RasterSource source = io::rasterSourceOf(*raster);
    if (format == Format::Png)
      io::exportPng(source, outputs.stage(request.output));
    else
      io::exportTiff(source, outputs.stage(request.output));
    if (!request.preview.empty()) io::exportPreviewPng(source, outputs.stage(request.preview));
  } catch (const io::ExportError& error) {
    throw ToolError(error.what());
  }
  if (host.ui().cancelRequested()) throw ToolCancelled();
  outputs.commit();
}

}  // namespace

void addExportVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "export",
      "Render the page of INPUT (SVG or native document) to OUTPUT (the default verb). The page is the active "
      "artboard (an SVG's viewport); every shown layer is drawn. At 96 ppi one SVG px is one output pixel.");
  auto request = std::make_shared<ExportRequest>();
  verb->add_option("INPUT", request->input, "The document to render")->required();
  verb->add_option("-o,--output", request->output, "The image to write: .png (gray, RGB, bitmap) or .tif (any colour model)")
      ->required()
      ->type_name("FILE");
  request->flags.addTo(*verb, false);
  auto* width = verb->add_option("--width", request->width, "Render the page this many pixels wide (the height follows)")
                    ->type_name("PX")
                    ->check(CLI::Range(1, 32767));
  auto* height = verb->add_option("--height", request->height, "Render the page this many pixels high (the width follows)")
                     ->type_name("PX")
                     ->check(CLI::Range(1, 32767));
  width->excludes(height)->excludes(request->flags.resolutionOption());
  height->excludes(request->flags.resolutionOption());
  verb->add_flag("--whole-document", request->wholeDocument,
                 "Rasterize every shown, printable layer over the bounds of their art instead of the page")
      ->excludes(width)
      ->excludes(height);
  verb->add_option("--preview", request->preview, "Also write the raster converted to RGB as a PNG preview")->type_name("FILE");
  verb->callback([&tool, request] { exportPage(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
