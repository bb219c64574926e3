#include "platform/freedesktop/bus/match.h"

#include <utility>

#include "base/error_report.h"

namespace lumowatt::freedesktop {

namespace {

/// The answer to a rule. Without a handler for it, libsystemd closes a connection that is refused
/// one.
int receiveAnswer(sd_bus_message* reply, void*, sd_bus_error*) {
  if (const sd_bus_error* const error = sd_bus_message_get_error(reply)) {
    const char* const reason = error->message != nullptr ? error->message : error->name;
    reportError("cannot subscribe to signals of the session bus", reason);
  }
  return 0;
}

}  // namespace

BusSlot matchSignals(sd_bus* bus, const std::string& rule, sd_bus_message_handler_t handler,
                     void* object) {
  BusSlot slot;
  sd_bus_add_match_async(bus, Out(slot), rule.c_str(), handler, receiveAnswer, object);
  return slot;
}

NameWatch::NameWatch(sd_bus* bus, const std::string& name, std::function<void()> appeared)
    : appeared_(std::move(appeared)),
      signals_(matchSignals(bus,
                            "type='signal',sender='org.freedesktop.DBus',"
                            "path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
                            "member='NameOwnerChanged',arg0='" +
                                name + "'",
                            handle<&NameWatch::ownerChanged>, this)) {}

int NameWatch::ownerChanged(sd_bus_message* signal, sd_bus_error*) {
  const char* owner = nullptr;
  if (sd_bus_message_read(signal, "sss", nullptr, nullptr, &owner) > 0 && *owner != '\0') {
    appeared_();
  }
  return 0;
}

}  // namespace lumowatt::freedesktop
