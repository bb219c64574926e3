#include "platform/freedesktop/bus/session_bus.h"

#include <cerrno>
#include <cstdint>

namespace lumowatt::freedesktop {

Failure busFailure(int status) {
  if (status == -ENOMEDIUM) return {"the environment contains no address"};
  return systemFailure(-status);
}

Result<Bus> openSessionBus(sd_event* loop) {
  Bus bus;
  int status = sd_bus_open_user(Out(bus));
  const char* name = nullptr;  // assigned when the bus accepts the connection
  if (status >= 0) status = sd_bus_get_unique_name(bus.get(), &name);
  if (status >= 0) status = sd_bus_attach_event(bus.get(), loop, SD_EVENT_PRIORITY_NORMAL);
  if (status < 0) return busFailure(status);
  return bus;
}

bool isCongested(sd_bus* bus) {
  constexpr std::uint64_t maxQueued = 16;
  std::uint64_t queued = 0;
  return sd_bus_get_n_queued_write(bus, &queued) >= 0 && queued > maxQueued;
}

}  // namespace lumowatt::freedesktop
