#pragma once
// A verb that fails writes nothing: not even the preferences file the session would save.
#include <exception>

#include "refhost/loader/Host.h"

namespace refhost {
namespace cli {

// Declared after the session: when the verb leaves by an exception, the preferences lose their
// file before the session ends, so what the plug-in changed there is not saved.
class PreferencesOnSuccess {
 public:
  explicit PreferencesOnSuccess(Host& host) : host_(host), exceptions_(std::uncaught_exceptions()) {}
  ~PreferencesOnSuccess() {
    if (std::uncaught_exceptions() > exceptions_) host_.preferences().setPath({});
  }
  PreferencesOnSuccess(const PreferencesOnSuccess&) = delete;
  PreferencesOnSuccess& operator=(const PreferencesOnSuccess&) = delete;

 private:
  Host& host_;
  int exceptions_;
};

}  // namespace cli
}  // namespace refhost
