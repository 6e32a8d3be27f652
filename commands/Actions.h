#pragma once
#include "host/messages.h"

namespace dw {

// At start-up on an interactive host: acquires the action suite anew and registers both events
// ("dw_plugin_rasterize", value 1; "dw_plugin_rasterEffectSettings", value 0) with their parameter
// descriptions. Start-up ignores the result.
DWErr RegisterActions(const MessageHeader& message);

// "Action Manager"/"Do Action": replays one recorded event.
DWErr DoAction(DoActionMessage& message);

}  // namespace dw
