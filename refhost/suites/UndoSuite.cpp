// "DW Undo Suite": the command that runs is a transaction of the open document; whoever delivers
// the command opens it (Document::beginTransaction) and ends it afterwards. Reverting restores the
// document exactly as it was when the transaction began; the texts name its undo step.
#include "host/suites/undo_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

DWErr SetUndoText(DWUnicodeString undoText, DWUnicodeString redoText) {
  REFHOST_CALL(kDWUndoSuite, "SetUndoText");
  Host& host = Host::current();
  Document* doc = host.document();
  if (!doc) return kHostNotFound;
  const std::string* undo = host.strings().text(undoText);
  const std::string* redo = host.strings().text(redoText);
  if (!undo || !redo) return kHostBadParameter;
  return guarded([&] {
    doc->setUndoTexts(*undo, *redo);
    return kDWNoErr;
  });
}

// 'HNFD' when no command is running: there is nothing to revert to.
DWErr UndoChanges() {
  REFHOST_CALL(kDWUndoSuite, "UndoChanges");
  Document* doc = openDocument();
  if (!doc || !doc->inTransaction()) return kHostNotFound;
  return guarded([&] {
    doc->revertTransaction();
    return kDWNoErr;
  });
}

const DWUndoSuite kSuite = {SetUndoText, UndoChanges};
REFHOST_REGISTER_SUITE(kDWUndoSuite, kDWUndoSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
