#pragma once
// The colours art uses, as "DW FO Conversion Suite" reports them (docs/host.md, "Colours the host
// reports"). Every process colour reports its CMYK inks (kind 3) and whether it lays any ink
// (kind 2); gray also reports its ink as kind 1; spot colours report their handle (kind 8); image
// pixels report kind 4 and the channels they may fill.
#include <functional>

#include "host/suites/fo_conversion_suite.h"
#include "refhost/document/Document.h"

namespace refhost {

using ColorUseVisitor = std::function<void(int32_t kind, const DWColorUse& use)>;

// Everything the art draws: hidden art, clipping paths of clip groups and paints switched off
// report nothing; symbol instances report their definition, plug-in groups their result art.
void visitColorUses(const Art& art, const ColorUseVisitor& visit);

}  // namespace refhost
