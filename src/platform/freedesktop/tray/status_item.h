#pragma once

#include <string>
#include <string_view>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::freedesktop {

/// The item as panels see it: an object of the org.kde.StatusNotifierItem interface
/// (freedesktop.org, with the label that Ayatana added to it). What does not change is not told
/// again.
class StatusItem {
 public:
  /// Its icons lie in the folder `icons`.
  StatusItem(sd_bus* bus, sd_event* loop, std::string icons);

  // What is to be set before the item is registered, and does not change.

  /// The name by which a panel keeps the item's place.
  void setId(std::string_view id) { id_ = id; }
  /// What a panel calls the item in a list of them.
  void setTitle(std::string_view title) { title_ = title; }

  // What may change.

  void setIcon(std::string_view name);

  /// Shown beside the icon, or where there is no such place, in the tool tip.
  void setLabel(std::string_view label);
  void setToolTip(std::string_view text);

  /// What a screen reader says of the icon.
  void setDescription(std::string_view text);

  /// Label, tool tip and description of another item.
  void setTexts(const StatusItem& other);

  const std::string& id() const { return id_; }
  const std::string& title() const { return title_; }
  const std::string& toolTip() const { return toolTip_; }

  /// Registers the item with the panel that is there. Before that, no change is told.
  void registerItem();

 private:
  template <std::string StatusItem::*text>
  static int getText(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                     void* item, sd_bus_error*);
  static int getLabelGuide(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                           void* item, sd_bus_error*);
  static int getToolTip(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                        void* item, sd_bus_error*);
  static const sd_bus_vtable table[];

  enum Signal : unsigned { newIcon = 1, newDescription = 2, newLabel = 4, newToolTip = 8 };

  /// Sets a property, and when it is another one, has these signals sent once all is said that
  /// changes now. Where the bus is behind, they wait until a property is set the next time, changed
  /// or not.
  void set(std::string& property, std::string_view value, unsigned signals);
  static int sendSignals(sd_event_source* source, void* item);

  sd_bus* bus_;
  std::string id_;
  std::string title_;
  std::string iconFolder_;
  std::string icon_;
  std::string description_;
  std::string label_;
  std::string toolTip_;
  unsigned signals_ = 0;
  EventSource sending_;
  bool isKnown_ = false;  // to a panel
  BusSlot object_;
};

}  // namespace lumowatt::freedesktop
