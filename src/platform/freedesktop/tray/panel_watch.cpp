#include "platform/freedesktop/tray/panel_watch.h"

#include <cstdint>
#include <utility>

#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// What the kernel calls a process (proc(5), /proc/PID/comm); empty when it is gone.
std::string processName(std::uint32_t id) {
  const auto [isThere, text] = readUserFile("/proc/" + std::to_string(id) + "/comm");
  return text ? text->substr(0, text->find('\n')) : "";
}

}  // namespace

PanelWatch::PanelWatch(sd_bus* bus, std::function<void(const std::string& process)> appeared)
    : bus_(bus),
      appeared_(std::move(appeared)),
      names_(bus, watcherName, [this] { askForProcess(); }) {
  askForProcess();
}

/// Only the last question is answered.
void PanelWatch::askForProcess() {
  sd_bus_call_method_async(bus_, Out(question_), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                           handle<&PanelWatch::receiveProcess>, this, "s", watcherName);
}

int PanelWatch::receiveProcess(sd_bus_message* reply, sd_bus_error*) {
  const sd_bus_error* const error = sd_bus_message_get_error(reply);
  const bool isThere = sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) == 0;
  if (!isThere) return 0;
  std::uint32_t id = 0;
  const bool isKnown = error == nullptr && sd_bus_message_read(reply, "u", &id) > 0;
  appeared_(isKnown ? processName(id) : "");
  return 0;
}

}  // namespace lumowatt::freedesktop
