// Layers, the layer list, document properties, artboards, custom colours, symbols, plug-in groups.
#include <cstring>

#include "SuiteTestSupport.h"
#include "refhost/render/HostHandles.h"

using namespace suitetest;

namespace {

class DocumentSuitesTest : public SuiteTest {
 protected:
  const DWLayerSuite& layers() { return suite<DWLayerSuite>(kDWLayerSuite, kDWLayerSuiteVersion); }
};

}  // namespace

TEST_F(DocumentSuitesTest, LayerFlags) {
  struct Case {
    const char* name;
    bool shown, editable, printable;
  };
  const Case cases[] = {
      {"plain", true, true, true},
      {"hidden", false, true, true},
      {"locked", true, false, true},
      {"not printing", true, true, false},
      {"hidden, locked, not printing", false, false, false},
  };
  for (const Case& c : cases) {
    Layer* l = doc.newLayer(c.name);
    l->setShown(c.shown);
    l->setEditable(c.editable);
    l->setPrintable(c.printable);
    DWBool visible = -1, editable = -1, nonPrinting = -1;
    ASSERT_EQ(layers().GetLayerVisible(h(l), &visible), kDWNoErr) << c.name;
    ASSERT_EQ(layers().GetLayerEditable(h(l), &editable), kDWNoErr) << c.name;
    ASSERT_EQ(layers().GetLayerNonPrinting(h(l), &nonPrinting), kDWNoErr) << c.name;
    EXPECT_EQ(visible, c.shown ? 1 : 0) << c.name;
    EXPECT_EQ(editable, c.editable ? 1 : 0) << c.name;
    EXPECT_EQ(nonPrinting, c.printable ? 0 : 1) << c.name;
  }
}

TEST_F(DocumentSuitesTest, LayerListWalksTheLayersFromTheTop) {
  doc.newLayer("top", 0);
  doc.newLayer("bottom");
  const auto& list = suite<DWLayerListSuite>(kDWLayerListSuite, kDWLayerListSuiteVersion);
  DWLayerListHandle handle = nullptr;
  ASSERT_EQ(list.GetCurrentLayerList(&handle), kDWNoErr);
  int32_t count = 0;
  ASSERT_EQ(layers().CountLayers(&count), kDWNoErr);
  ASSERT_EQ(size_t(count), doc.layerCount());
  DWLayerHandle walked = nullptr;
  ASSERT_EQ(list.GetFirstLayer(handle, &walked), kDWNoErr);
  for (int32_t i = 0; i < count; ++i) {
    DWLayerHandle nth = nullptr;
    ASSERT_EQ(layers().GetNthLayer(i, &nth), kDWNoErr);
    EXPECT_EQ(walked, h(doc.layerAt(size_t(i)))) << "layer " << i;
    EXPECT_EQ(nth, walked) << "layer " << i;
    ASSERT_EQ(list.GetNextLayer(handle, walked, &walked), kDWNoErr);
  }
  EXPECT_EQ(walked, nullptr);
  DWLayerHandle current = nullptr;
  ASSERT_EQ(layers().GetCurrentLayer(&current), kDWNoErr);
  EXPECT_EQ(current, h(doc.currentLayer()));
  EXPECT_EQ(layers().GetNthLayer(count, &current), kHostBadParameter);
}

TEST_F(DocumentSuitesTest, DocumentPropertiesAndArtboards) {
  doc.setColorMode(ColorMode::Cmyk);
  doc.setLevelNumber(12);
  const auto& document = suite<DWDocumentSuite>(kDWDocumentSuite, kDWDocumentSuiteVersion);
  int16_t mode = -1;
  int32_t level = -1;
  ASSERT_EQ(document.GetColorMode(&mode), kDWNoErr);
  ASSERT_EQ(document.GetLevelNumber(&level), kDWNoErr);
  EXPECT_EQ(mode, kDWCMYKColorMode);
  EXPECT_EQ(level, 12);

  const auto& boards = suite<DWArtboardSuite>(kDWArtboardSuite, kDWArtboardSuiteVersion);
  DWArtboardList list = nullptr;
  ASSERT_EQ(boards.GetArtboardList(&list), kDWNoErr);
  int32_t active = 0;
  ASSERT_EQ(boards.GetActiveArtboardIndex(list, &active), kDWNoErr);
  EXPECT_EQ(active, -1) << "no artboard yet";
  doc.artboards() = {Artboard{"a", Rect{0, 100, 200, 0}}, Artboard{"b", Rect{300, 50, 400, -50}}};
  doc.setActiveArtboard(1);
  ASSERT_EQ(boards.GetActiveArtboardIndex(list, &active), kDWNoErr);
  ASSERT_EQ(active, 1);
  DWArtboardProperties properties = nullptr;
  ASSERT_EQ(boards.GetArtboardProperties(list, active, &properties), kDWNoErr);
  DWRealRect bounds{};
  ASSERT_EQ(boards.GetArtboardBounds(properties, &bounds), kDWNoErr);
  const Rect read{bounds.left, bounds.top, bounds.right, bounds.bottom};
  EXPECT_EQ(read, doc.artboards()[1].bounds);
  EXPECT_EQ(boards.DisposeArtboardProperties(properties), kDWNoErr);
  EXPECT_EQ(boards.GetArtboardBounds(properties, &bounds), kHostBadParameter);
  EXPECT_EQ(boards.ReleaseArtboardList(list), kDWNoErr);

  host.setDocument(nullptr);
  EXPECT_EQ(document.GetColorMode(&mode), kHostNotFound);
}

TEST_F(DocumentSuitesTest, CustomColoursInCreationOrder) {
  CustomColor spot;
  spot.name = "Orange spot";
  spot.cmyk[1] = 0.5;
  spot.cmyk[2] = 1.0;
  CustomColor process;
  process.name = "House blue";
  process.kind = CustomColor::Kind::Process;
  process.cmyk[0] = 1.0;
  const CustomColorId ids[] = {doc.newCustomColor(spot), doc.newCustomColor(process)};
  const auto& colors = suite<DWCustomColorSuite>(kDWCustomColorSuite, kDWCustomColorSuiteVersion);
  int32_t count = 0;
  ASSERT_EQ(colors.CountCustomColors(&count), kDWNoErr);
  ASSERT_EQ(count, 2);
  for (int32_t i = 0; i < count; ++i) {
    DWCustomColorHandle handle = nullptr;
    ASSERT_EQ(colors.GetNthCustomColor(i, &handle), kDWNoErr);
    EXPECT_EQ(handle, render::customColorHandle(ids[i])) << "the renderer's handle of colour " << i;
    DWCustomColorInfo info{};
    ASSERT_EQ(colors.GetCustomColor(handle, &info), kDWNoErr);
    const CustomColor& model = *doc.customColor(ids[i]);
    EXPECT_STREQ(info.name, model.name.c_str());
    EXPECT_EQ(info.kind, model.kind == CustomColor::Kind::Spot ? kDWCustomSpot : kDWCustomProcess) << model.name;
    EXPECT_EQ(info.alternate.magenta, model.cmyk[1]) << model.name;
    EXPECT_EQ(info.alternate.cyan, model.cmyk[0]) << model.name;
  }
  DWCustomColorInfo info{};
  EXPECT_EQ(colors.GetCustomColor(render::customColorHandle(99), &info), kHostBadParameter);
}

// Art of a symbol definition lies outside every layer and counts as art of a symbol being edited.
TEST_F(DocumentSuitesTest, SymbolDefinitionsAndPluginGroups) {
  Symbol* symbol = doc.newSymbol("star");
  Art* defined = rect(0, 0, 1, 1, PaintOrder::InsideOnTop, symbol->definition());
  Art* placed = rect(0, 0, 1, 1);
  const auto& symbols = suite<DWSymbolSuite>(kDWSymbolSuite, kDWSymbolSuiteVersion);
  DWBool outside = -1;
  DWLayerHandle of = nullptr;
  ASSERT_EQ(art().ArtIsOutsideLayers(h(defined), &outside), kDWNoErr);
  ASSERT_EQ(art().GetLayerOfArt(h(defined), &of), kDWNoErr);
  EXPECT_EQ(outside, 1);
  EXPECT_EQ(of, nullptr);
  EXPECT_EQ(symbols.ArtIsInSymbolEditing(h(defined), 0), 1);
  ASSERT_EQ(art().ArtIsOutsideLayers(h(placed), &outside), kDWNoErr);
  ASSERT_EQ(art().GetLayerOfArt(h(placed), &of), kDWNoErr);
  EXPECT_EQ(outside, 0);
  EXPECT_EQ(of, h(layer));
  EXPECT_EQ(symbols.ArtIsInSymbolEditing(h(placed), 0), 0);

  const auto& utils = suite<DWSymbolUtilsSuite>(kDWSymbolUtilsSuite, kDWSymbolUtilsSuiteVersion);
  EXPECT_EQ(utils.NotifyArtChanged(h(defined), h(symbol->definition()), 0), kDWNoErr);
  EXPECT_EQ(utils.NotifyArtChanged(h(placed), h(layer->group()), 0), kHostBadParameter) << "not in a definition";

  Art* plugin = doc.newArt(ArtKind::PluginGroup, PaintOrder::AboveAll, nullptr);
  const auto& groups = suite<DWPluginGroupSuite>(kDWPluginGroupSuite, kDWPluginGroupSuiteVersion);
  DWArtHandle result = nullptr, edit = nullptr, parent = nullptr;
  ASSERT_EQ(groups.GetPluginArtResultArt(h(plugin), &result), kDWNoErr);
  ASSERT_EQ(groups.GetPluginArtEditArt(h(plugin), &edit), kDWNoErr);
  EXPECT_EQ(result, h(plugin->pluginGroup()->resultArt));
  EXPECT_EQ(edit, h(plugin->pluginGroup()->editArt));
  ASSERT_EQ(art().GetArtParent(edit, &parent), kDWNoErr);
  EXPECT_EQ(parent, h(plugin));
  EXPECT_EQ(groups.GetPluginArtEditArt(h(placed), &edit), kHostWrongType);
}
