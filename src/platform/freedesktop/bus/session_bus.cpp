#include "platform/freedesktop/bus/session_bus.h"

#include <cerrno>
#include <cstdint>

namespace lumowatt::freedesktop {

Failure busFailure(int status) {
  if (status == -ENOMEDIUM) return {"the environment does not say where it is"};
  return systemFailure(-status);
}

Result<Bus> openSessionBus(sd_event* loop) {
  Bus bus;
  int status = sd_bus_open_user(Out(bus));
  const char* name = nullptr;  // which the bus gives to those that it accepts
  if (status >= 0) status = sd_bus_get_unique_name(bus.get(), &name);
  if (status >= 0) status = sd_bus_attach_event(bus.get(), loop, SD_EVENT_PRIORITY_NORMAL);
  if (status < 0) return busFailure(status);
  return bus;
}

bool isBehind(sd_bus* bus) {
  constexpr std::uint64_t few = 16;
  std::uint64_t waiting = 0;
  return sd_bus_get_n_queued_write(bus, &waiting) >= 0 && waiting > few;
}

}  // namespace lumowatt::freedesktop
