#include "engine/RasterTypeChoice.h"

#include "engine/RasterTypes.h"
#include "settings/RasterizeSettings.h"
#include "shell/ErrorCodes.h"
#include "shell/HostString.h"
#include "shell/HostSuites.h"
#include "shell/Strings.h"

namespace dw {

namespace {

bool mayKeepSpotColors(int32_t type) {
  return type == int32_t(RasterType::Rgb) || type == int32_t(RasterType::Cmyk) ||
         type == int32_t(RasterType::RgbTransparent) || type == int32_t(RasterType::CmykTransparent);
}

// Without a user suite nobody can agree to the conversion, so it counts as Cancel.
bool userAcceptsProcessConversion() {
  if (!gSuites.user) return false;
  HostString message(strings::ConvertToProcessWarning);
  return gSuites.user->QuestionAlert(message.handle(), 1, 0) != 0;
}

}  // namespace

RasterTypeChoice chooseRasterType(int32_t type, uint32_t options, int32_t preserveSpotColors, DWArtSetHandle artSet,
                                  ColorUsage& usage) {
  RasterTypeChoice choice;
  choice.type = type;
  const bool allowSpot = (options & RasterizeOptions::AllowSpotRaster) != 0;
  const bool allowNChannel = (options & RasterizeOptions::AllowNChannelRaster) != 0;
  if (!mayKeepSpotColors(type) || !(allowSpot || allowNChannel) || !preserveSpotColors) return choice;

  if (artSet) surveyColorUsage(artSet, usage);
  if (usage.spotCount == 0) return choice;

  const bool alpha = hasAlpha(type);
  if (allowSpot) {
    if (DWCustomColorHandle spot = singleSpotColor(usage)) {
      choice.spot = spot;
      choice.type = int32_t(alpha ? RasterType::SpotTransparent : RasterType::Spot);
      return choice;
    }
  }
  if (allowNChannel) {
    const int32_t process = processChannelCount(usage, familyCode(type));
    if (process + usage.spotCount <= kMaxColorChannels && usage.spotCount <= kMaxSpotChannels) {
      choice.type = int32_t(alpha ? RasterType::NChannelTransparent : RasterType::NChannel);
    } else if (!userAcceptsProcessConversion()) {
      choice.error = UserCancelled;
    }
  }
  return choice;
}

}  // namespace dw
