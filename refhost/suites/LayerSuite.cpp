// "DW Layer Suite": the open document's layers, index 0 at the top.
#include "host/suites/layer_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

// Null, without an error, when the document has no layer left.
DWErr GetCurrentLayer(DWLayerHandle* layer) {
  REFHOST_CALL(kDWLayerSuite, "GetCurrentLayer");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!layer) return kHostBadParameter;
  *layer = layerHandle(doc->currentLayer());
  return kDWNoErr;
}

// A locked layer is not editable.
DWErr GetLayerEditable(DWLayerHandle layer, DWBool* editable) {
  REFHOST_CALL(kDWLayerSuite, "GetLayerEditable");
  const Layer* l = liveLayer(layer);
  if (!l || !editable) return kHostBadParameter;
  *editable = l->isEditable() ? 1 : 0;
  return kDWNoErr;
}

DWErr CountLayers(int32_t* count) {
  REFHOST_CALL(kDWLayerSuite, "CountLayers");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!count) return kHostBadParameter;
  *count = int32_t(doc->layerCount());
  return kDWNoErr;
}

DWErr GetNthLayer(int32_t index, DWLayerHandle* layer) {
  REFHOST_CALL(kDWLayerSuite, "GetNthLayer");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!layer || index < 0 || size_t(index) >= doc->layerCount()) return kHostBadParameter;
  *layer = layerHandle(doc->layerAt(size_t(index)));
  return kDWNoErr;
}

DWErr GetLayerVisible(DWLayerHandle layer, DWBool* visible) {
  REFHOST_CALL(kDWLayerSuite, "GetLayerVisible");
  const Layer* l = liveLayer(layer);
  if (!l || !visible) return kHostBadParameter;
  *visible = l->isShown() ? 1 : 0;
  return kDWNoErr;
}

DWErr GetLayerNonPrinting(DWLayerHandle layer, DWBool* nonPrinting) {
  REFHOST_CALL(kDWLayerSuite, "GetLayerNonPrinting");
  const Layer* l = liveLayer(layer);
  if (!l || !nonPrinting) return kHostBadParameter;
  *nonPrinting = l->isPrintable() ? 0 : 1;
  return kDWNoErr;
}

const DWLayerSuite kSuite = {GetCurrentLayer, GetLayerEditable, CountLayers,
                             GetNthLayer,     GetLayerVisible,  GetLayerNonPrinting};
REFHOST_REGISTER_SUITE(kDWLayerSuite, kDWLayerSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
