#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "menubar/desktop.h"
#include "platform/freedesktop/bus/sd.h"
#include "platform/freedesktop/menu/layout.h"

namespace lumowatt::freedesktop {

/// Menu on the bus: an object with the com.canonical.dbusmenu interface. Callers are untrusted:
/// calls for unknown items or properties return an error.
class MenuServer {
 public:
  /// Path of the object.
  static constexpr char path[] = "/MenuBar";

  /// Calls `choose` with each choice that the user makes. `choose` must then update the menu of
  /// every server. `application` must outlive the server.
  MenuServer(sd_bus* bus, ApplicationDelegate& application,
             std::function<void(const Choice&)> choose);

  /// Sets whether the menu is presented in fewer rows (`compactMenu`).
  void setCompact(bool isCompact);

  /// Replaces the menu if a panel has already read the menu.
  void update(const Menu& menu);

  /// Updates the menu if the number of lines of `report` differs from the number of rows that show
  /// the report in the menu. Panels lay out a menu before they call AboutToShow, so an update at
  /// that time would be too late for a new row. Does nothing while the menu is open or compact, or
  /// while the connection is congested; a later call then updates the menu.
  void updateRows(std::string_view report);

 private:
  static const sd_bus_vtable table[];

  int getLayout(sd_bus_message* call, sd_bus_error* error);
  int getGroupProperties(sd_bus_message* call, sd_bus_error* error);
  int getProperty(sd_bus_message* call, sd_bus_error* error);
  int event(sd_bus_message* call, sd_bus_error* error);
  int eventGroup(sd_bus_message* call, sd_bus_error* error);
  int aboutToShow(sd_bus_message* call, sd_bus_error* error);
  int aboutToShowGroup(sd_bus_message* call, sd_bus_error* error);

  /// Updates the menu before a panel shows it. Returns whether the menu changed.
  bool open();

  /// Replaces the presented menu and emits signals for the changes. Returns whether the menu
  /// changed.
  bool present(const Menu& menu);

  /// Replaces the layout with the menu, or with the compact form of the menu. Returns the changes.
  MenuLayout::Change replaceLayout(const Menu& menu);

  /// Builds the layout for a panel that reads the menu before opening it for the first time.
  void ensureLayout();

  /// Handles an event on an item. Returns false if there is no such item.
  bool handleEvent(std::int32_t id, std::string_view event);

  sd_bus* bus_;
  ApplicationDelegate& application_;
  std::function<void(const Choice&)> choose_;
  MenuLayout layout_;
  bool isCompact_ = false;
  std::uint32_t revision_ = 1;
  std::string report_;           // last report that was compared with the menu
  std::uint64_t openUntil_ = 0;  // `boottime` at which an open menu counts as closed
  BusSlot object_;
};

}  // namespace lumowatt::freedesktop
