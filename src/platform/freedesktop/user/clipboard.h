#pragma once

#include <string>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Clipboard of the session.
class Clipboard {
 public:
  Clipboard(sd_event* loop, sd_bus* bus) : loop_(loop), bus_(bus) {}

  /// Copies the text to the clipboard without blocking. On Plasma, calls the clipboard service
  /// (org.kde.klipper). On other desktops, or if the service fails, starts a program. If the
  /// program fails too, rings the bell and reports the reason on the standard error.
  void copy(std::string text);

 private:
  bool callService();
  int handleReply(sd_bus_message* reply, sd_bus_error* error);
  void startProgram();

  sd_event* loop_;
  sd_bus* bus_;
  BusSlot pendingCall_;
  std::string text_;
};

}  // namespace lumowatt::freedesktop
