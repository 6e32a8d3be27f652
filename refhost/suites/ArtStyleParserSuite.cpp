// "DW Art Style Parser Suite": rebuilds a style with another paint. A parser takes a copy of a
// style (or of no style: an empty one), lets its paint be replaced and makes a new style from it;
// the old style is never changed, since styles are shared.
#include <map>
#include <memory>
#include <optional>

#include "host/suites/art_style_parser_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/ArtStyleHandles.h"
#include "refhost/suites/DocumentAccess.h"
#include "refhost/suites/PaintRecords.h"

namespace refhost {
namespace {

struct Parser {
  std::optional<ArtStyle> parsed;
};

std::map<const void*, std::unique_ptr<Parser>>& parsers() {
  static std::map<const void*, std::unique_ptr<Parser>> table;
  return table;
}

Parser* parserOf(DWStyleParser handle) {
  auto it = parsers().find(handle);
  return it == parsers().end() ? nullptr : it->second.get();
}

DWErr NewParser(DWStyleParser* parser) {
  REFHOST_CALL(kDWArtStyleParserSuite, "NewParser");
  if (!parser) return kHostBadParameter;
  return guarded([&] {
    auto created = std::make_unique<Parser>();
    *parser = reinterpret_cast<DWStyleParser>(created.get());
    parsers().emplace(created.get(), std::move(created));
    return kDWNoErr;
  });
}

DWErr ParseStyle(DWStyleParser parser, DWArtStyleHandle style) {
  REFHOST_CALL(kDWArtStyleParserSuite, "ParseStyle");
  Parser* p = parserOf(parser);
  const ArtStylePtr s = style ? artStyleOf(style) : nullptr;
  if (!p || (style && !s)) return kHostBadParameter;
  return guarded([&] {
    p->parsed = s ? *s : ArtStyle{};
    return kDWNoErr;
  });
}

// Gradients on the bounding box keep their units only when the record's matrix is left alone.
DWErr SetFocusPathStyle(DWStyleParser parser, const DWPathStyle* pathStyle) {
  REFHOST_CALL(kDWArtStyleParserSuite, "SetFocusPathStyle");
  Parser* p = parserOf(parser);
  const Document* doc = openDocument();
  if (!p || !p->parsed || !pathStyle || !doc) return kHostBadParameter;
  return guarded([&] {
    PathStyle paint = p->parsed->hasPaint ? p->parsed->paint : PathStyle{};
    if (const DWErr e = fromStyleRecord(*pathStyle, *doc, Rect::none(), paint)) return e;
    p->parsed->paint = std::move(paint);
    p->parsed->hasPaint = true;
    return kDWNoErr;
  });
}

DWErr CreateNewStyle(DWStyleParser parser, DWArtStyleHandle* style) {
  REFHOST_CALL(kDWArtStyleParserSuite, "CreateNewStyle");
  Parser* p = parserOf(parser);
  if (!p || !p->parsed || !style) return kHostBadParameter;
  return guarded([&] {
    *style = artStyleHandle(std::make_shared<const ArtStyle>(*p->parsed));
    return kDWNoErr;
  });
}

DWErr DisposeParser(DWStyleParser parser) {
  REFHOST_CALL(kDWArtStyleParserSuite, "DisposeParser");
  return parsers().erase(parser) == 1 ? kDWNoErr : kHostBadParameter;
}

const DWArtStyleParserSuite kSuite = {NewParser, ParseStyle, SetFocusPathStyle, CreateNewStyle, DisposeParser};
REFHOST_REGISTER_SUITE(kDWArtStyleParserSuite, kDWArtStyleParserSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
