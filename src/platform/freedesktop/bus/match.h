#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Calls `handler` with each signal that matches a D-Bus match rule, until the slot is released. If
/// the bus rejects the rule, reports the reason on the standard error and never calls `handler`.
BusSlot matchSignals(sd_bus* bus, const std::string& rule, sd_bus_message_handler_t handler,
                     void* object);

/// Watch on a name on the bus, with a callback for each new owner.
class NameWatch {
 public:
  /// Calls `onAppeared` each time that the name gets a new owner.
  NameWatch(sd_bus* bus, const std::string& name, std::function<void()> onAppeared);

 private:
  int onOwnerChanged(sd_bus_message* signal, sd_bus_error* error);

  std::function<void()> onAppeared_;
  BusSlot signals_;
};

}  // namespace lumowatt::freedesktop
