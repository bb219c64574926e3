#include "platform/freedesktop/tray/panel_watch.h"

#include <cstdint>
#include <utility>

#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// Returns the name of a process (proc(5), /proc/PID/comm); empty if the process has exited.
std::string processName(std::uint32_t id) {
  const auto [exists, text] = readUserFile("/proc/" + std::to_string(id) + "/comm");
  return text ? text->substr(0, text->find('\n')) : "";
}

}  // namespace

PanelWatch::PanelWatch(sd_bus* bus, std::function<void(const std::string& process)> onAppeared)
    : bus_(bus),
      onAppeared_(std::move(onAppeared)),
      names_(bus, watcherName, [this] { queryProcess(); }) {
  queryProcess();
}

/// Queries the process id of the panel's tray. Cancels a pending query.
void PanelWatch::queryProcess() {
  sd_bus_call_method_async(bus_, Out(pendingCall_), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                           handle<&PanelWatch::handleProcess>, this, "s", watcherName);
}

int PanelWatch::handleProcess(sd_bus_message* reply, sd_bus_error*) {
  const sd_bus_error* const error = sd_bus_message_get_error(reply);
  const bool hasOwner = sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) == 0;
  if (!hasOwner) return 0;
  std::uint32_t id = 0;
  const bool isKnown = error == nullptr && sd_bus_message_read(reply, "u", &id) > 0;
  onAppeared_(isKnown ? processName(id) : "");
  return 0;
}

}  // namespace lumowatt::freedesktop
