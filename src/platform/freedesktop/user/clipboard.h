#pragma once

#include <string>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// The clipboard of the session.
class Clipboard {
 public:
  Clipboard(sd_event* loop, sd_bus* bus) : loop_(loop), bus_(bus) {}

  /// Puts the text on the clipboard, without waiting: on Plasma by its clipboard service
  /// (org.kde.klipper), elsewhere, and where that fails, by a program. When nothing can, the bell
  /// sounds, and the reason is on the standard error.
  void copy(std::string text);

 private:
  bool askService();
  int answered(sd_bus_message* reply, sd_bus_error* error);
  void startProgram();

  sd_event* loop_;
  sd_bus* bus_;
  BusSlot question_;
  std::string text_;
};

}  // namespace lumowatt::freedesktop
