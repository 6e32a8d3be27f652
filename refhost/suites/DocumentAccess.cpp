#include "refhost/suites/DocumentAccess.h"

#include "refhost/document/Bounds.h"

namespace refhost {

Rect paintedBounds(const Art& art) {
  BoundsOptions options;
  options.includeStroke = true;
  return artBounds(art, Matrix{}, options);
}

}  // namespace refhost
