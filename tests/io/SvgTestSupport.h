#pragma once

#include "refhost/document/Document.h"
#include "refhost/io/SvgImport.h"

#include <functional>
#include <string>
#include <vector>

namespace refhost::testing {

// Imports SVG text named "test.svg".
io::ImportResult importSvg(const std::string& svg);
// An SVG document of the given size (px) around the body.
std::string svgDoc(const std::string& body, double width = 100, double height = 100, const std::string& extra = "");
// The first art, depth first through layers and symbol definitions, with that name.
Art* findArt(const Document& doc, const std::string& name);
// Document point of an SVG user point in a plain document of height h px: 1 px = 0.75 pt, y flipped.
Point docPoint(double x, double y, double h = 100);
// The box around a path's anchor points, handles left out.
Rect anchorBounds(const Art* path);
// Both coordinates of got within tol of want.
void expectPoint(Point got, Point want, const std::string& what = "", double tol = 1e-9);
// The message of the io::IoError that f throws; a failure naming what when it throws none.
std::string ioErrorOf(const std::function<void()>& f, const std::string& what = "");
// PNG bytes of an RGBA image, for image tests.
std::vector<std::uint8_t> makePng(int width, int height, const std::vector<std::uint8_t>& rgba);

}  // namespace refhost::testing
