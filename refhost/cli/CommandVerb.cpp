#include <CLI/CLI.hpp>

#include <cctype>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "refhost/cli/ClippedRaster.h"
#include "refhost/cli/DialogAnswers.h"
#include "refhost/cli/DocumentFiles.h"
#include "refhost/cli/MenuCommand.h"
#include "refhost/cli/PreferencesOnSuccess.h"
#include "refhost/cli/RasterizeFlags.h"
#include "refhost/cli/Selection.h"
#include "refhost/cli/ActionsFile.h"
#include "refhost/cli/StagedFiles.h"
#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"
#include "refhost/io/IoError.h"
#include "refhost/io/NativeFormat.h"
#include "refhost/io/export/RasterExport.h"
#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

namespace {

struct CommandRequest {
  std::string input;
  std::string output;
  std::string save;
  std::vector<std::string> select;
  std::string spotLimit;
  RasterizeFlags flags;
  DialogAnswers dialog;
  ActionRecording recording;
};

bool isPng(const std::string& path) {
  const size_t dot = path.rfind('.');
  std::string extension = dot == std::string::npos ? std::string() : path.substr(dot + 1);
  for (char& c : extension) c = char(std::tolower(static_cast<unsigned char>(c)));
  if (extension == "png") return true;
  if (extension == "tif" || extension == "tiff") return false;
  throw ToolError(path + ": the output must end in .png or .tif/.tiff");
}

// The raster art the command made: the one raster created since `firstNew` that is still alive.
Art* newRaster(const Document& document, size_t firstNew) {
  for (size_t serial = firstNew; serial < document.artArenaSize(); ++serial) {
    Art* art = document.artBySerial(serial);
    if (art && art->isAlive() && art->kind() == ArtKind::Raster) return art;
  }
  throw ToolError("the Rasterize command reported success but made no raster art");
}

std::string colorName(const RasterData& raster) {
  static const char* const kFamilies[] = {"gray", "RGB", "CMYK", "?", "spot", "process and spot channels"};
  const int family = raster.record.colorSpace & 0x0F;
  std::string name = raster.record.bitsPerPixel == 1 ? "bitmap" : family <= 5 ? kFamilies[family] : "?";
  return name + ((raster.record.colorSpace & 0x10) ? " with alpha" : "");
}

void writeImage(const Art& raster, const std::string& path, StagedFiles& files) {
  io::RasterSource source = io::rasterSourceOf(raster);
  RasterData clipped;
  if (clipGroupOf(raster)) {
    clipped = clippedRaster(raster);
    source.raster = &clipped;
  }
  if (isPng(path))
    io::exportPng(source, files.stage(path));
  else
    io::exportTiff(source, files.stage(path));
}

void runCommand(Tool& tool, CommandRequest& request) {
  const bool png = !request.output.empty() && isPng(request.output);
  const RasterizeSettings planned = request.flags.apply(commandDefaultSettings());  // bad flags fail here
  if (png && (planned.type == kRasterTypeCmyk || planned.type == kRasterTypeCmykTransparent))
    throw ToolError(request.output + ": PNG holds gray and RGB only; write CMYK to a .tif file");

  const std::unique_ptr<Tool::Session> session = tool.startSession();
  Host& host = session->host();
  const PreferencesOnSuccess preferences(host);
  if (!request.spotLimit.empty()) host.controls().questionAnswer = request.spotLimit == "convert";
  Document& document = openDocumentFile(host, request.input);
  selectArt(document, request.select);
  request.dialog.install(host, request.flags);
  request.recording.start(host);

  const size_t firstNew = document.artArenaSize();
  const DWErr result = runMenuCommand(host, kRasterizeMenuItem);
  if (request.dialog.cancelled() || host.ui().cancelRequested()) throw ToolCancelled();
  tool.check(result, "the Rasterize command");
  const Art& raster = *newRaster(document, firstNew);
  session->end();

  StagedFiles files;
  try {
    if (!request.output.empty()) writeImage(raster, request.output, files);
  } catch (const io::ExportError& error) {
    throw ToolError(error.what());
  }
  stageDocument(document, request.save, files);
  request.recording.stage(host, files);
  if (host.ui().cancelRequested()) throw ToolCancelled();
  files.commit();

  const RasterData& pixels = *raster.raster();
  std::printf("raster: %d x %d pixels, %.6g ppi, %s%s\n", pixels.width(), pixels.height(),
              io::rasterResolution(pixels), colorName(pixels).c_str(), clipGroupOf(raster) ? ", clipped by a mask" : "");
}

}  // namespace

void addCommandVerb(CLI::App& app, Tool& tool) {
  auto* verb = app.add_subcommand(
      "command",
      "Run the Rasterize menu command: the selected art of INPUT becomes one raster object (with --mask, clipped by "
      "a mask made from the selected paths). Writes the new raster's pixels (-o) and/or the changed document (--save).");
  auto request = std::make_shared<CommandRequest>();
  verb->add_option("INPUT", request->input, "The document (SVG or native JSON)")->required();
  verb->add_option("-o,--output", request->output,
                   "Write the new raster: .png (gray, RGB, bitmap) or .tif (any colour model); with a mask, the "
                   "raster clipped by it, with alpha")
      ->type_name("FILE");
  verb->add_option("--save", request->save, "Save the changed document as a native JSON document")->type_name("DOC.json");
  verb->add_option("--select", request->select,
                   "What to rasterize, repeatable: all (the default: the art of every shown, unlocked layer), "
                   "saved (the document's own selection), layer:NAME (the layer, targeted), or the NAME (SVG id) of "
                   "objects")
      ->type_name("WHAT")
      ->expected(1)
      ->take_all();
  verb->add_option("--spot-limit", request->spotLimit,
                   "More than 27 spot colours: convert them to process (the default) or cancel")
      ->check(CLI::IsMember({"convert", "cancel"}));
  request->flags.addTo(*verb);
  request->dialog.addTo(*verb);
  request->recording.addTo(*verb);
  verb->callback([&tool, request] { runCommand(tool, *request); });
}

}  // namespace cli
}  // namespace refhost
