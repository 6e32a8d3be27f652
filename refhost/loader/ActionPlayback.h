#pragma once
// Replaying a recorded action event, as the host's action manager does when an action is played.
#include "host/types.h"
#include "refhost/loader/ActionStore.h"

namespace refhost {

class Host;

// Delivers "Action Manager"/"Do Action" to the plug-in that registered the event: its event value,
// `showDialog`, and a parameter block holding the recorded values (disposed of afterwards).
// kHostNotFound when no loaded plug-in registered the event.
DWErr playAction(Host& host, const RecordedAction& action, bool showDialog);

}  // namespace refhost
