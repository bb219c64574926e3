#pragma once

#include "platform/linux/desktop/sd.h"

namespace lumowatt::desktop {

/// Opens a connection to the session's bus, for the loop. Negative when there is none, as
/// libsystemd has its errors.
int openSessionBus(sd_event* loop, Bus& bus);

/// The reason of such an error.
const char* busFailure(int error);

}  // namespace lumowatt::desktop
