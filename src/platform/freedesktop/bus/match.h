#pragma once

#include <functional>
#include <string>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Calls a handler with each signal that matches a rule of the bus (the D-Bus match rules). A bus
/// that refuses the rule is told of on the standard error, and no signal comes.
BusSlot matchSignals(sd_bus* bus, const std::string& rule, sd_bus_message_handler_t handler,
                     void* object);

/// Tells each time that a name on the bus has a new owner.
class NameWatch {
 public:
  NameWatch(sd_bus* bus, const std::string& name, std::function<void()> appeared);

 private:
  int ownerChanged(sd_bus_message* signal, sd_bus_error* error);

  std::function<void()> appeared_;
  BusSlot signals_;
};

}  // namespace lumowatt::freedesktop
