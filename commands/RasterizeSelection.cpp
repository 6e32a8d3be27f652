#include "commands/RasterizeSelection.h"

#include "commands/ArtBounds.h"
#include "commands/ArtTree.h"
#include "commands/CommandErrors.h"
#include "commands/CommandMessage.h"
#include "commands/RasterizeEngine.h"
#include "commands/RecordRasterizeAction.h"
#include "commands/SelectionPreparation.h"
#include "settings/ActionParameters.h"
#include "shell/ErrorCodes.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/PluginGlobals.h"
#include "shell/Strings.h"

namespace dw {

namespace {

bool commandSuitesHeld() {
  return gSuites.art && gSuites.artSet && gSuites.artStyle && gSuites.group && gSuites.pattern && gSuites.realMath &&
         gSuites.user && gSuites.undo && gSuites.path && gSuites.artboard && gSuites.layer;
}

// Every text the command may show while it changes the document, made before it changes anything.
struct CommandTexts {
  HostString progress{strings::Progress};
  HostString undo{strings::Undo};
  HostString redo{strings::Redo};
  HostString invalidArtInMask{strings::WarningInvalidArtInMask};
  HostString rasterInMask{strings::WarningRasterInMask};
};

DWErr warnAboutArtOutsideTheMask(DWArtSetHandle set, const CommandTexts& texts) {
  bool invalidArt = false;
  bool raster = false;
  int32_t count = 0;
  if (const DWErr e = artSetCount(set, count)) return e;
  for (int32_t i = 0; i < count; ++i) {
    DWArtHandle art = nullptr;
    if (const DWErr e = gSuites.artSet->IndexArtSet(set, i, &art)) return e;
    int16_t kind = 0;
    if (const DWErr e = artKind(art, kind)) return e;
    if (kind == kDWTextFrameArt || kind == kDWSymbolArt) invalidArt = true;
    if (kind == kDWRasterArt) raster = true;
    if (kind == kDWUnknownArt) {
      DWBool graph = 0;
      if (const DWErr e = gSuites.art->IsArtGraph(art, &graph)) return e;
      if (graph) invalidArt = true;
    }
  }
  if (invalidArt) gSuites.user->WarningAlert(texts.invalidArtInMask.handle());
  if (raster) gSuites.user->WarningAlert(texts.rasterInMask.handle());
  return kDWNoErr;
}

DWErr deleteOriginals(DWArtSetHandle set) {
  int32_t count = 0;
  if (const DWErr e = artSetCount(set, count)) return e;
  for (int32_t i = count - 1; i >= 0; --i) {
    DWArtHandle art = nullptr;
    if (const DWErr e = gSuites.artSet->IndexArtSet(set, i, &art)) return e;
    DWArtHandle parent = nullptr;
    if (const DWErr e = artParent(art, parent)) return e;
    if (parent) {
      if (const DWErr e = gSuites.art->DisposeArt(art)) return e;
    }
  }
  return kDWNoErr;
}

// Everything that the error exit reverts.
DWErr rasterizeSelectedArt(const CommandTexts& texts) {
  ArtSetOwner set;
  if (const DWErr e = set.create()) return e;
  if (const DWErr e = gSuites.artSet->SelectedArtSet(set.get())) return e;
  if (const DWErr e = WrapStyledLayers(set.get())) return e;
  if (const DWErr e = DropPerspectiveContent(set.get())) return e;
  if (const DWErr e = KeepWholeObjects(set.get())) return e;

  DWRealRect bounds = kEmptyArtBounds;
  if (const DWErr e = collectArtBounds(set.get(), &bounds, false, true)) return e;
  if (gSuites.realMath->IsRectEmpty(&bounds)) return InvalidSelectionError;

  if (const DWErr e = gSuites.user->SetProgressText(texts.progress.handle())) return e;
  DWArtHandle placement = nullptr;
  if (const DWErr e = FindPlacementArt(set.get(), placement)) return e;

  RasterizeSettings& settings = gGlobals->commandSettings;
  DWArtHandle raster = nullptr;
  if (const DWErr e = rasterizeEngine()(set.get(), &settings, &bounds, kDWPlaceAbove, placement, &raster,
                                        RasterizeProgress, settings.padding))
    return e;

  if (const DWErr e = gSuites.undo->SetUndoText(texts.undo.handle(), texts.redo.handle())) return e;

  if (gSuites.pathfinder && settings.createClippingMask) {
    if (const DWErr e = warnAboutArtOutsideTheMask(set.get(), texts)) return e;
    DWArtHandle clipGroup = nullptr;
    if (const DWErr e = CreateClippingMask(set.get(), kDWPlaceAbove, raster, &clipGroup)) return e;
  } else {
    if (const DWErr e = deleteOriginals(set.get())) return e;
  }
  return set.dispose();
}

DWErr failCommand(DWErr error) {
  gSuites.undo->UndoChanges();
  showCommandError(error);
  return error;
}

}  // namespace

DWErr RasterizeSelection(MessageHeader& message) {
  if (!gGlobals) return OutOfMemoryError;
  if (!commandSuitesHeld()) return SuiteMissingError;
  const CommandMessageScope running(&message);
  const CommandTexts texts;

  if (const DWErr error = rasterizeSelectedArt(texts)) return failCommand(error);

  gSuites.user->CloseProgress();
  if (actionsAreRecording()) RecordRasterizeAction();
  return kDWNoErr;
}

int32_t RasterizeProgress(int32_t current, int32_t total) {
  if (!gSuites.user) return 1;
  gSuites.user->UpdateProgress(current, total + 1);
  return gSuites.user->Cancelled() ? 0 : 1;
}

}  // namespace dw
