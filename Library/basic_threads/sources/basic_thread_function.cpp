#include "basic_thread_function.h"

namespace basic {

thread_function::~thread_function() = default;

void thread_function::run() {}

}  // namespace basic
