// "DW Text Frame Suite": the text of a text frame, as UTF-8.
#include <algorithm>
#include <cstring>

#include "host/suites/text_frame_suite.h"
#include "refhost/loader/HostCall.h"
#include "refhost/loader/SuiteProviders.h"
#include "refhost/suites/DocumentAccess.h"

namespace refhost {
namespace {

// A buffer too small gets as much as fits, still terminated; a cut may split a UTF-8 sequence.
DWErr GetText(DWArtHandle frame, char* buffer, int32_t capacity, int32_t* length) {
  REFHOST_CALL(kDWTextFrameSuite, "GetText");
  const Art* a = liveArt(frame);
  if (!a) return kHostBadParameter;
  const TextData* text = a->text();
  if (!text) return kHostWrongType;
  if (!length || capacity < 0 || (capacity > 0 && !buffer) || text->text.size() > size_t(INT32_MAX))
    return kHostBadParameter;
  *length = int32_t(text->text.size());
  if (capacity > 0) {
    const size_t copied = std::min(text->text.size(), size_t(capacity) - 1);
    std::memcpy(buffer, text->text.data(), copied);
    buffer[copied] = '\0';
  }
  return kDWNoErr;
}

const DWTextFrameSuite kSuite = {GetText};
REFHOST_REGISTER_SUITE(kDWTextFrameSuite, kDWTextFrameSuiteVersion, kSuite);

}  // namespace
}  // namespace refhost
