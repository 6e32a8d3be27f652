#include "TestDocuments.h"

#include "refhost/document/Equivalence.h"

#include <functional>
#include <gtest/gtest.h>

namespace refhost {
namespace {

struct Change {
  const char* name;
  std::function<void(Document&)> apply;
};

Art* groupOf(Document& d) { return d.findLayer("Top")->group()->firstChild()->nextSibling(); }

// Each change alone must make the documents differ: the comparison sees every part of the model.
const Change kChanges[] = {
    {"colour mode", [](Document& d) { d.setColorMode(ColorMode::Rgb); }},
    {"level", [](Document& d) { d.setLevelNumber(1); }},
    {"artboard", [](Document& d) { d.artboards()[0].bounds.right = 1; }},
    {"dictionary", [](Document& d) { d.dictionary()->setBoolean("x", true); }},
    {"custom colour", [](Document& d) { d.customColor(1)->cmyk[0] = 0.5; }},
    {"layer flag", [](Document& d) { d.findLayer("Top")->setPrintable(false); }},
    {"attributes", [](Document& d) { groupOf(d)->setAttributes(ArtAttr::Hidden, ArtAttr::Hidden); }},
    {"path point", [](Document& d) { groupOf(d)->firstChild()->path()->segments[1].out.x = 1; }},
    {"paint", [](Document& d) { groupOf(d)->firstChild()->pathStyle().fill.tint = 0.5; }},
    {"user flags", [](Document& d) { groupOf(d)->firstChild()->setUserFlags(1, 1); }},
    {"value pair", [](Document& d) { groupOf(d)->firstChild()->setValuePair(ValuePair{1, 1}); }},
    {"pixels", [](Document& d) { groupOf(d)->nextSibling()->raster()->mutablePixels()[23] = 1; }},
    {"effect parameter", [](Document& d) { groupOf(d)->artStyle()->effects[0].parameters->setInteger("colr", 0); }},
    {"text", [](Document& d) { d.findLayer("Top")->group()->lastChild()->text()->text = "Bye"; }},
    {"symbol", [](Document& d) { d.symbols()[0]->definition()->firstChild()->path()->closed = true; }},
    {"order", [](Document& d) { d.moveArt(groupOf(d), PaintOrder::BelowAll, nullptr); }},
};

TEST(Equivalence, IdenticalBuildsAreEquivalent) {
  auto a = testing::buildRichDocument();
  auto b = testing::buildRichDocument();
  std::string why;
  EXPECT_TRUE(equivalent(*a, *b, &why)) << why;
}

TEST(Equivalence, EveryPartOfTheModelCounts) {
  for (const Change& c : kChanges) {
    auto a = testing::buildRichDocument();
    auto b = testing::buildRichDocument();
    c.apply(*b);
    std::string why;
    EXPECT_FALSE(equivalent(*a, *b, &why)) << c.name;
    EXPECT_FALSE(why.empty()) << c.name;
  }
}

}  // namespace
}  // namespace refhost
