#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// The item as panels see it: an object of the org.kde.StatusNotifierItem interface
/// (freedesktop.org, with the label that Ayatana added to it). What does not change is not told
/// again.
class StatusItem {
 public:
  struct Handlers {
    /// Opens the menu, which a panel has asked for. False means that the panel is to do it.
    std::function<bool()> openMenu;
    /// Called when the item becomes settled.
    std::function<void()> settled;
  };

  /// Its icons lie in the folder `icons`.
  StatusItem(sd_bus* bus, sd_event* loop, std::string icons, Handlers handlers);

  // What is to be set before the item is registered, and does not change.

  /// The name by which a panel keeps the item's place. Items that belong together have the same.
  void setId(std::string_view id) { id_ = id; }
  /// What a panel calls the item in a list of them.
  void setTitle(std::string_view title) { title_ = title; }

  // What may change.

  void setIcon(std::string_view name);

  /// Shown beside the icon by some panels; empty for none.
  void setLabel(std::string_view label);
  void setToolTipTitle(std::string_view text);
  void setToolTip(std::string_view text);

  /// What a screen reader says of the icon.
  void setDescription(std::string_view text);

  /// Copies tool tip and description of another item.
  void copyTexts(const StatusItem& other);

  const std::string& id() const { return id_; }
  const std::string& title() const { return title_; }
  const std::string& toolTip() const { return toolTip_; }

  /// What an item registers: the name of its connection, on which the object has the interface's
  /// own path, or the path of an object, as Ayatana's items do.
  enum class Address { connection, objectPath };

  /// Registers the item with the panel that is there. No change is signaled before that.
  void registerItem(Address address);

  /// Whether a panel has read the item after its registration, or has not for some seconds.
  /// Panels place items in the order in which they have read them.
  bool isSettled() const { return isSettled_; }

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
  static int waitedLongEnough(sd_event_source* source, std::uint64_t due, void* item);
  void settle();
  /// Has panels find the item at that path alone: one that looks for items finds it once.
  void moveTo(const char* path);
  int activate(sd_bus_message* call, sd_bus_error* error) const;
  static const sd_bus_vtable table[];

  enum Signal : unsigned { newIcon = 1, newDescription = 2, newLabel = 4, newToolTip = 8 };

  /// Sets a property, and when it is another one, has these signals sent once all is said that
  /// changes now. Where the bus is behind, they wait until a property is set the next time, changed
  /// or not.
  void set(std::string& property, std::string_view value, unsigned signals);
  static int sendSignals(sd_event_source* source, void* item);

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
  unsigned signals_ = 0;
  EventSource sending_;
  const char* path_ = nullptr;  // of the object
  bool isRegistered_ = false;
  bool isSettled_ = false;
  EventSource settling_;
  BusSlot object_;
};

}  // namespace lumowatt::freedesktop
