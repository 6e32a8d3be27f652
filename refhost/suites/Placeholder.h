#pragma once
#include <type_traits>

#include "refhost/loader/HostErrors.h"

// Tables for host suites nobody has built yet. Each slot is written as one token:
//   N  the function returns an error code: it answers kHostNotImplemented ('HNIM');
//   Z  the function returns no error code: it answers 0 / null / no (or nothing).
// placeholderTable<Suite>(...) checks that every slot got a token.
namespace refhost {
namespace placeholder {

template <typename F>
struct Function;

template <typename R, typename... Args>
struct Function<R (*)(Args...)> {
  static R notImplemented(Args...) {
    static_assert(std::is_same<R, DWErr>::value, "N is for functions that return an error code");
    return kHostNotImplemented;
  }
  static R nothing(Args...) {
    if constexpr (!std::is_void<R>::value) return R{};
  }
};

template <typename F>
using IfFunctionPointer = std::enable_if_t<std::is_function<std::remove_pointer_t<F>>::value>;

struct NotImplementedToken {
  template <typename F, typename = IfFunctionPointer<F>>
  constexpr operator F() const {
    return &Function<F>::notImplemented;
  }
};

struct NothingToken {
  template <typename F, typename = IfFunctionPointer<F>>
  constexpr operator F() const {
    return &Function<F>::nothing;
  }
};

constexpr NotImplementedToken N{};
constexpr NothingToken Z{};

template <typename Suite, typename... Tokens>
constexpr Suite placeholderTable(Tokens... tokens) {
  static_assert(sizeof...(Tokens) * sizeof(void (*)()) == sizeof(Suite), "one token per function of the suite");
  return Suite{tokens...};
}

}  // namespace placeholder
}  // namespace refhost
