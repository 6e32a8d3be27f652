#pragma once

#include <stdexcept>
#include <string>

namespace refhost {

// Thrown by Document operations given arguments they cannot honour; the suites turn it into a
// host error code.
class DocumentError : public std::runtime_error {
 public:
  enum class Code {
    BadParameter,      // a null or otherwise invalid argument, an unknown kind or paint order
    DeadObject,        // the art, layer or symbol was disposed (or belongs to another document)
    NotAContainer,     // "inside" paint order with a prep art that cannot hold children
    NoCurrentLayer,    // paint order 5 or 6 without a current layer
    CyclicMove,        // moving art into itself or its own contents
    NotInTransaction,  // revert or end without a transaction
  };

  DocumentError(Code code, const std::string& what) : std::runtime_error(what), code_(code) {}
  Code code() const { return code_; }

 private:
  Code code_;
};

}  // namespace refhost
