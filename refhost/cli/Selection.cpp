#include "refhost/cli/Selection.h"

#include <set>

#include "refhost/cli/Tool.h"
#include "refhost/document/Document.h"

namespace refhost {
namespace cli {

namespace {

constexpr const char kLayerPrefix[] = "layer:";

bool selectable(const Art& art) { return !art.isHidden() && !art.attributes(ArtAttr::Locked); }

}  // namespace

size_t selectArt(Document& document, const std::vector<std::string>& specs) {
  const std::vector<std::string> chosen = specs.empty() ? std::vector<std::string>{"all"} : specs;
  bool keepSaved = false;
  for (const std::string& choice : chosen) keepSaved = keepSaved || choice == "saved";
  if (!keepSaved) document.deselectAll();

  std::set<const Art*> selected;
  const auto select = [&selected](Art* art) {
    Document::setSelected(art, true);
    selected.insert(art);
  };
  for (const std::string& choice : chosen) {
    if (choice == "saved") {
      for (Art* art : document.selectedArt(SelectionScope::Topmost)) selected.insert(art);
    } else if (choice == "all") {
      for (Layer* layer : document.layers()) {
        if (!layer->isShown() || layer->isLocked()) continue;
        for (Art* art = layer->group()->firstChild(); art; art = art->nextSibling())
          if (selectable(*art)) select(art);
      }
    } else if (choice.rfind(kLayerPrefix, 0) == 0) {
      const std::string name = choice.substr(sizeof kLayerPrefix - 1);
      Layer* layer = document.findLayer(name);
      if (!layer) throw ToolError("--select " + choice + ": the document has no layer \"" + name + "\"");
      select(layer->group());
    } else {
      std::vector<Art*> named;
      document.forEachArt([&](Art* art) {
        if (art->name() == choice && !art->isLayerGroup()) named.push_back(art);
      });
      if (named.empty()) throw ToolError("--select " + choice + ": no object is named \"" + choice + "\"");
      for (Art* art : named) select(art);
    }
  }
  return selected.size();
}

}  // namespace cli
}  // namespace refhost
