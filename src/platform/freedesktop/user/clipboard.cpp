#include "platform/freedesktop/user/clipboard.h"

#include <cstdint>
#include <utility>

#include "base/error_report.h"
#include "platform/freedesktop/user/child.h"
#include "platform/freedesktop/user/commands.h"
#include "platform/freedesktop/user/environment.h"

namespace lumowatt::freedesktop {

namespace {

constexpr std::uint64_t clipboardTimeout = 2'000'000;  // microseconds

}  // namespace

void Clipboard::copy(std::string text) {
  text_ = std::move(text);
  if (!isCurrentDesktop("KDE") || !callService()) startProgram();
}

bool Clipboard::callService() {
  BusMessage call;
  int status = sd_bus_message_new_method_call(bus_, Out(call), "org.kde.klipper", "/klipper",
                                              "org.kde.klipper.klipper", "setClipboardContents");
  if (status >= 0) status = sd_bus_message_set_auto_start(call.get(), 0);
  if (status >= 0) status = sd_bus_message_append(call.get(), "s", text_.c_str());
  if (status >= 0) {
    status = sd_bus_call_async(bus_, Out(pendingCall_), call.get(), handle<&Clipboard::handleReply>,
                               this, clipboardTimeout);
  }
  return status >= 0;
}

int Clipboard::handleReply(sd_bus_message* reply, sd_bus_error*) {
  if (sd_bus_message_is_method_error(reply, nullptr) > 0) startProgram();
  text_ = {};
  return 0;
}

void Clipboard::startProgram() {
  const auto started = startDetached(loop_, clipboardCommands(), text_,
                                     [loop = loop_](const std::string& name, bool succeeded) {
                                       if (succeeded) return;
                                       reportError("cannot copy the details", name + " failed");
                                       startDetached(loop, bellCommands());
                                     });
  text_ = {};
  if (started) return;
  reportError("cannot copy the details", "neither wl-copy nor xclip can be started");
  startDetached(loop_, bellCommands());
}

}  // namespace lumowatt::freedesktop
