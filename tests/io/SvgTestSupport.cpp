#include "SvgTestSupport.h"

#include "refhost/io/IoError.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>
#include <sstream>

namespace refhost::testing {

io::ImportResult importSvg(const std::string& svg) { return io::importSvgText(svg, "test.svg", "."); }

std::string svgDoc(const std::string& body, double width, double height, const std::string& extra) {
  std::ostringstream s;
  s << "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"" << width
    << "\" height=\"" << height << "\" " << extra << ">" << body << "</svg>";
  return s.str();
}

Art* findArt(const Document& doc, const std::string& name) {
  Art* found = nullptr;
  auto visit = [&](Art* a) {
    if (!found && a->name() == name) found = a;
  };
  doc.forEachArt(visit);
  for (Symbol* s : doc.symbols()) Document::forEachArtIn(s->definition(), visit);
  return found;
}

Point docPoint(double x, double y, double h) { return Point{0.75 * x, 0.75 * (h - y)}; }

Rect anchorBounds(const Art* path) {
  Rect box = Rect::none();
  for (const PathSegment& s : path->path()->segments) box.add(s.p);
  return box;
}

void expectPoint(Point got, Point want, const std::string& what, double tol) {
  EXPECT_NEAR(got.x, want.x, tol) << what;
  EXPECT_NEAR(got.y, want.y, tol) << what;
}

std::string ioErrorOf(const std::function<void()>& f, const std::string& what) {
  try {
    f();
  } catch (const io::IoError& e) {
    return e.what();
  }
  ADD_FAILURE() << what << ": accepted";
  return {};
}

std::vector<std::uint8_t> makePng(int width, int height, const std::vector<std::uint8_t>& rgba) {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  image.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = 0;
  png_image_write_to_memory(&image, nullptr, &size, 0, rgba.data(), 0, nullptr);
  std::vector<std::uint8_t> out(size);
  png_image_write_to_memory(&image, out.data(), &size, 0, rgba.data(), 0, nullptr);
  out.resize(size);
  return out;
}

}  // namespace refhost::testing
