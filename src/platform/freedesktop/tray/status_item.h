#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// Item on the bus: an object with the org.kde.StatusNotifierItem interface (freedesktop.org, with
/// Ayatana's extension for labels). Emits a signal only if a property changes.
class StatusItem {
 public:
  struct Handlers {
    /// Opens the menu at the request of a panel. Returns false if the panel must open it itself.
    std::function<bool()> openMenu;
    /// Called when the panel has placed the item.
    std::function<void()> onPlaced;
  };

  /// `icons` is the folder of the item's icons.
  StatusItem(sd_bus* bus, sd_event* loop, std::string icons, Handlers handlers);

  // Properties that must be set before registration and do not change.

  /// Sets the id by which a panel remembers the item's position. Items that belong together share
  /// an id.
  void setId(std::string_view id) { id_ = id; }
  /// Sets the name of the item in a panel's list of items.
  void setTitle(std::string_view title) { title_ = title; }

  // Properties that may change.

  void setIcon(std::string_view name);

  /// Sets the text that some panels show beside the icon; empty for no label.
  void setLabel(std::string_view label);
  void setToolTipTitle(std::string_view text);
  void setToolTip(std::string_view text);

  /// Sets the description of the icon for screen readers.
  void setDescription(std::string_view text);

  /// Copies the tool tip and the description of another item.
  void copyTexts(const StatusItem& other);

  const std::string& id() const { return id_; }
  const std::string& title() const { return title_; }
  const std::string& toolTip() const { return toolTip_; }

  /// Address that an item registers: either the name of its connection, where the object has the
  /// standard path of the interface, or an object path, as Ayatana's items do.
  enum class Address { connection, objectPath };

  /// Registers the item with the running panel. No signals are emitted before registration.
  void registerItem(Address address);

  /// Returns whether the panel has placed the item. Panels place items in the order in which they
  /// read them, so an item counts as placed as soon as its icon has been read after the
  /// registration, or after a few seconds.
  bool isPlaced() const { return isPlaced_; }

 private:
  template <std::string StatusItem::*text>
  static int getText(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                     void* item, sd_bus_error*);
  static int getIcon(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                     void* item, sd_bus_error*);
  static int getLabelGuide(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                           void* item, sd_bus_error*);
  static int getToolTip(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                        void* item, sd_bus_error*);
  static int onPlacementTimeout(sd_event_source* source, std::uint64_t due, void* item);
  void markPlaced();
  /// Moves the object to `path` and removes the object at the previous path, so that a panel that
  /// searches for items does not find the item twice.
  void moveTo(const char* path);
  int activate(sd_bus_message* call, sd_bus_error* error) const;
  static const sd_bus_vtable table[];

  enum Signal : unsigned { newIcon = 1, newDescription = 2, newLabel = 4, newToolTip = 8 };

  /// Sets a property. If the value changes, schedules these signals for the end of this iteration
  /// of the loop. If the connection is congested at that time, the signals remain pending until any
  /// property is set again, even to an unchanged value.
  void set(std::string& property, std::string_view value, unsigned signals);
  static int emitSignals(sd_event_source* source, void* item);

  sd_bus* bus_;
  sd_event* loop_;
  Handlers handlers_;
  std::string id_;
  std::string title_;
  std::string iconFolder_;
  std::string icon_;
  std::string description_;
  std::string label_;
  std::string toolTipTitle_;
  std::string toolTip_;
  unsigned signals_ = 0;  // not emitted yet
  EventSource signalSource_;
  const char* path_ = nullptr;  // of the object
  bool isRegistered_ = false;
  bool isPlaced_ = false;
  EventSource placementTimer_;
  BusSlot object_;
};

}  // namespace lumowatt::freedesktop
