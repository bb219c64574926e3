#pragma once

#include "base/failure.h"
#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Returns the failure for a negative status of libsystemd.
Failure busFailure(int status);

/// Opens a connection to the session bus and attaches the connection to the loop. Blocks until the
/// bus has accepted the connection.
Result<Bus> openSessionBus(sd_event* loop);

/// Returns whether the connection is congested: the bus does not read messages, and more than a few
/// are queued in this process.
bool isCongested(sd_bus* bus);

}  // namespace lumowatt::freedesktop
