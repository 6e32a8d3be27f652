// "DW Perspective Transform Suite" (optional for plug-ins): the document model has no perspective
// grids, so no art is drawn through one.
#include "host/suites/perspective_transform_suite.h"
#include "refhost/loader/SuiteProviders.h"

namespace refhost {
namespace {

DWBool IsPerspectiveArt(DWArtHandle) { return 0; }

const DWPerspectiveTransformSuite kSuite = {IsPerspectiveArt};
REFHOST_REGISTER_SUITE(kDWPerspectiveTransformSuite, kDWPerspectiveTransformSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
