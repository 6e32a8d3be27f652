#pragma once
#include <new>

#include "refhost/document/DocumentError.h"
#include "refhost/loader/Host.h"
#include "refhost/loader/HostErrors.h"

// First statement of every host suite function that returns an error code: counts the call for
// the "Nth host call fails" test control and returns the injected code when this is that call.
//   DWErr GetArtParent(DWArtHandle art, DWArtHandle* parent) {
//     REFHOST_CALL(kDWArtSuite, "GetArtParent");
//     ...
#define REFHOST_CALL(suite, function)                                                                  \
  do {                                                                                                 \
    if (const DWErr refhostInjected_ = ::refhost::Host::current().controls().countCall(suite, function)) \
      return refhostInjected_;                                                                         \
  } while (false)

namespace refhost {

// The host code of a document model failure.
constexpr DWErr documentErrorCode(DocumentError::Code code) {
  switch (code) {
    case DocumentError::Code::NoCurrentLayer: return kHostNotFound;
    case DocumentError::Code::NotInTransaction: return kHostInternalError;
    default: return kHostBadParameter;
  }
}

// The body of a suite function: nothing is thrown back into the plug-in. HostError and
// DocumentError give their codes, a failed allocation kHostOutOfMemory, anything else
// kHostInternalError.
template <typename Body>
DWErr guarded(Body&& body) noexcept {
  try {
    return body();
  } catch (const HostError& error) {
    return error.code();
  } catch (const DocumentError& error) {
    return documentErrorCode(error.code());
  } catch (const std::bad_alloc&) {
    return kHostOutOfMemory;
  } catch (...) {
    return kHostInternalError;
  }
}

}  // namespace refhost
