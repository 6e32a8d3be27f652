// "DW Document Suite": properties of the open document. Without one, every call answers 'HNFD'.
#include "host/suites/document_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DictionaryRefs.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr GetDictionary(DWDictionaryRef* dictionary) {
  REFHOST_CALL(kDWDocumentSuite, "GetDictionary");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!dictionary) return kHostBadParameter;
  return guarded([&] {
    *dictionary = retainDictionary(doc->dictionary());
    return kDWNoErr;
  });
}

DWErr GetColorMode(int16_t* mode) {
  REFHOST_CALL(kDWDocumentSuite, "GetColorMode");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!mode) return kHostBadParameter;
  *mode = int16_t(doc->colorMode());
  return kDWNoErr;
}

DWErr GetLevelNumber(int32_t* level) {
  REFHOST_CALL(kDWDocumentSuite, "GetLevelNumber");
  const Document* doc = openDocument();
  if (!doc) return kHostNotFound;
  if (!level) return kHostBadParameter;
  *level = doc->levelNumber();
  return kDWNoErr;
}

const DWDocumentSuite kSuite = {GetDictionary, GetColorMode, GetLevelNumber};
REFHOST_REGISTER_SUITE(kDWDocumentSuite, kDWDocumentSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
