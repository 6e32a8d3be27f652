// "DW Layer List": the open document has one layer list, its layers from the top. The list's
// handle is the document itself, so a list from a document since closed is refused.
#include "host/suites/layer_list_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

const Document* listDocument(DWLayerListHandle list) {
  const Document* doc = openDocument();
  return doc && static_cast<const void*>(list) == doc ? doc : nullptr;
}

DWErr GetCurrentLayerList(DWLayerListHandle* list) {
  REFHOST_CALL(kDWLayerListSuite, "GetCurrentLayerList");
  Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!list) return kHostBadParameter;
  *list = reinterpret_cast<DWLayerListHandle>(doc);
  return kDWNoErr;
}

DWErr GetFirstLayer(DWLayerListHandle list, DWLayerHandle* layer) {
  REFHOST_CALL(kDWLayerListSuite, "GetFirstLayer");
  const Document* doc = listDocument(list);
  if (!doc || !layer) return kHostBadParameter;
  *layer = layerHandle(doc->firstLayer());
  return kDWNoErr;
}

DWErr GetNextLayer(DWLayerListHandle list, DWLayerHandle layer, DWLayerHandle* next) {
  REFHOST_CALL(kDWLayerListSuite, "GetNextLayer");
  const Document* doc = listDocument(list);
  const Layer* l = liveLayer(layer);
  if (!doc || !l || !next) return kHostBadParameter;
  *next = layerHandle(doc->nextLayer(l));
  return kDWNoErr;
}

const DWLayerListSuite kSuite = {GetCurrentLayerList, GetFirstLayer, GetNextLayer};
REFHOST_REGISTER_SUITE(kDWLayerListSuite, kDWLayerListSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
