#pragma once
#include "host/types.h"
#include "settings/RasterizeSettings.h"

namespace dw {

// True when the action suite is held and the host reports that it is recording.
bool actionsAreRecording();

// The keys of the Rasterize command's event ('colr', 'dpi.' or 'dres', 'bkgd', 'type', 'ali+',
// 'mask', 'pspt', 'padd', in this order) and of the document-settings event ('colr', 'dpi.',
// 'bkgd', 'alis', 'mask', 'pspt', 'padd'), set into a parameter block from a record. The host's
// answers to the setters are not consulted. Enumerated names are the localised labels, so these
// may throw dw::Error from the host's string service.
void setRasterizeEventParameters(DWActionParamBlock block, const RasterizeSettings& record);
void setDocumentSettingsEventParameters(DWActionParamBlock block, const RasterizeSettings& record);

// Record one event from a record, with dialog state 3, when actionsAreRecording(). Returns the
// host's code of the recording (0 when nothing is recorded).
DWErr recordRasterizeEvent(const RasterizeSettings& record);
DWErr recordDocumentSettingsEvent(const RasterizeSettings& record);

// Playback: applies a parameter block to a record (reserved, type with the document's colour
// mode, the effects-resolution bit, resolution, type quality, anti-aliasing, mask, spot colours
// and padding). A key the host cannot give counts as missing; nothing here fails.
void applyActionParameters(DWActionParamBlock block, RasterizeSettings& record);

// The record a document-settings event is played back onto: makeDocumentSettingsBase() with
// options 0, overlaid with the document's settings.
RasterizeSettings documentSettingsEventBase();

}  // namespace dw
