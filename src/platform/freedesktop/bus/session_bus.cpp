#include "platform/freedesktop/bus/session_bus.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace lumowatt::freedesktop {

int openSessionBus(sd_event* loop, Bus& bus) {
  sd_bus* opened = nullptr;
  int status = sd_bus_open_user(&opened);
  bus.reset(opened);
  const char* name = nullptr;  // which the bus gives to those that it takes
  if (status >= 0) status = sd_bus_get_unique_name(opened, &name);
  if (status >= 0) status = sd_bus_attach_event(opened, loop, SD_EVENT_PRIORITY_NORMAL);
  return status;
}

const char* busFailure(int error) {
  return error == -ENOMEDIUM ? "the environment does not say where it is" : std::strerror(-error);
}

bool isBehind(sd_bus* bus) {
  constexpr std::uint64_t few = 16;
  std::uint64_t waiting = 0;
  return sd_bus_get_n_queued_write(bus, &waiting) >= 0 && waiting > few;
}

}  // namespace lumowatt::freedesktop
