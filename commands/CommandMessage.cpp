#include "commands/CommandMessage.h"

namespace dw {

namespace {
void* gCommandMessage = nullptr;
}  // namespace

void* currentCommandMessage() { return gCommandMessage; }

CommandMessageScope::CommandMessageScope(void* message) { gCommandMessage = message; }

CommandMessageScope::~CommandMessageScope() { gCommandMessage = nullptr; }

}  // namespace dw
