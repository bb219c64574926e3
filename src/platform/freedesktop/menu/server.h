#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/layout.h"

namespace lumowatt::freedesktop {

/// The menu as panels see it: an object of the com.canonical.dbusmenu interface. Callers are
/// strangers: what the menu does not offer is an error to them.
class MenuServer {
 public:
  /// Where panels find it.
  static constexpr char path[] = "/MenuBar";

  /// Calls `choose` with each choice that is made, which must then update the menu of every server.
  /// The application must outlive it.
  MenuServer(sd_bus* bus, ApplicationDelegate& application,
             std::function<void(const Choice&)> choose);

  /// Sets whether panels see the menu in fewer rows (`compactMenu`).
  void setCompact(bool isCompact);

  /// Replaces the menu, for those who know it already.
  void update(const Menu& menu);

  /// Updates the closed menu when the report in it, a line a row, has more or fewer rows than
  /// before: panels lay a menu out before they ask for it. In a compact menu the report is one row.
  /// This leaves an open menu as it is: a later report updates it.
  void follow(std::string_view report);

 private:
  static const sd_bus_vtable table[];

  int getLayout(sd_bus_message* call, sd_bus_error* error);
  int getGroupProperties(sd_bus_message* call, sd_bus_error* error);
  int getProperty(sd_bus_message* call, sd_bus_error* error);
  int event(sd_bus_message* call, sd_bus_error* error);
  int eventGroup(sd_bus_message* call, sd_bus_error* error);
  int aboutToShow(sd_bus_message* call, sd_bus_error* error);
  int aboutToShowGroup(sd_bus_message* call, sd_bus_error* error);

  /// The menu is about to be looked at; whether it changed by that.
  bool open();

  /// Presents the menu, and emits signals for what differs from the one before; false when nothing
  /// does.
  bool present(const Menu& menu);

  /// Replaces what the menu is, in the rows that panels see.
  MenuLayout::Change replaceLayout(const Menu& menu);

  /// For those who ask before the menu was ever about to open.
  void ensureLayout();

  /// Handles an event on an item; false when the menu has no such item.
  bool handleEvent(std::int32_t id, std::string_view event);

  sd_bus* bus_;
  ApplicationDelegate& application_;
  std::function<void(const Choice&)> choose_;
  MenuLayout layout_;
  bool isCompact_ = false;
  std::uint32_t revision_ = 1;
  std::string report_;           // the one that was compared last
  std::uint64_t openUntil_ = 0;  // by `boottime`; the menu may be open till then
  BusSlot object_;
};

}  // namespace lumowatt::freedesktop
