// The dash pattern handed to cairo: odd lists doubled, offsets brought into the period, and with
// butt caps zero-length dashes taken out so that nothing is drawn where they fall.
#include "refhost/render/PathGeometry.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using refhost::LineCap;
using refhost::PathStyle;

TEST(StrokeDashes, PatternsAsCairoReceivesThem) {
  struct Case {
    const char* name;
    std::vector<double> list;
    double offset;
    LineCap cap;
    bool draws;
    std::vector<double> dashes;
    double dashOffset;
  } const cases[] = {
      {"solid", {}, 3, LineCap::Butt, true, {}, 0},
      {"a negative length is drawn solid", {4, -1}, 0, LineCap::Butt, true, {}, 0},
      {"no length at all is drawn solid", {0, 0}, 0, LineCap::Butt, true, {}, 0},
      {"plain pattern", {3, 2}, 1, LineCap::Butt, true, {3, 2}, 1},
      {"odd list doubled", {3, 2, 1}, 0, LineCap::Round, true, {3, 2, 1, 3, 2, 1}, 0},
      {"offset beyond the period", {3, 2}, 12, LineCap::Butt, true, {3, 2}, 2},
      {"negative offset", {3, 2}, -1, LineCap::Butt, true, {3, 2}, 4},
      {"round caps keep zero-length dashes as dots", {0, 4}, 0, LineCap::Round, true, {0, 4}, 0},
      {"square caps keep them too", {0, 4}, 0, LineCap::Projecting, true, {0, 4}, 0},
      {"butt caps: only zero-length dashes draw nothing", {0, 4}, 0, LineCap::Butt, false, {}, 0},
      {"butt caps: a zero-length dash inside joins its gap to the one before", {3, 1, 0, 2}, 0, LineCap::Butt, true,
       {3, 3}, 0},
      // The pattern now starts at the old position 2: an offset of 0 becomes 6 - 2 = 4.
      {"butt caps: a leading zero-length dash moves the start", {0, 2, 3, 1}, 0, LineCap::Butt, true, {3, 3}, 4},
      {"butt caps: odd list with a zero", {0, 2, 3}, 5, LineCap::Butt, true, {3, 0, 2, 5}, 3},
  };
  for (const Case& c : cases) {
    PathStyle style;
    style.dashArray = c.list;
    style.dashOffset = c.offset;
    style.lineCap = c.cap;
    std::vector<double> dashes = {99};
    double offset = -99;
    EXPECT_EQ(refhost::render::strokeDashes(style, dashes, offset), c.draws) << c.name;
    if (!c.draws) continue;
    EXPECT_EQ(dashes, c.dashes) << c.name;
    EXPECT_DOUBLE_EQ(offset, c.dashOffset) << c.name;
  }
}

}  // namespace
