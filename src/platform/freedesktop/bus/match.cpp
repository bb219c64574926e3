#include "platform/freedesktop/bus/match.h"

#include <utility>

#include "base/error_report.h"

namespace lumowatt::freedesktop {

namespace {

/// Reports a rejected match rule. If this handler were missing, libsystemd would close the
/// connection when the bus rejects a rule.
int handleMatchReply(sd_bus_message* reply, void*, sd_bus_error*) {
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
  sd_bus_add_match_async(bus, Out(slot), rule.c_str(), handler, handleMatchReply, object);
  return slot;
}

NameWatch::NameWatch(sd_bus* bus, const std::string& name, std::function<void()> onAppeared)
    : onAppeared_(std::move(onAppeared)),
      signals_(matchSignals(bus,
                            "type='signal',sender='org.freedesktop.DBus',"
                            "path='/org/freedesktop/DBus',interface='org.freedesktop.DBus',"
                            "member='NameOwnerChanged',arg0='" +
                                name + "'",
                            handle<&NameWatch::onOwnerChanged>, this)) {}

int NameWatch::onOwnerChanged(sd_bus_message* signal, sd_bus_error*) {
  const char* owner = nullptr;
  if (sd_bus_message_read(signal, "sss", nullptr, nullptr, &owner) > 0 && *owner != '\0') {
    onAppeared_();
  }
  return 0;
}

}  // namespace lumowatt::freedesktop
