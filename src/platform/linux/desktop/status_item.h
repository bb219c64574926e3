#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "menubar/desktop.h"
#include "platform/linux/desktop/bus_match.h"
#include "platform/linux/desktop/sd.h"

namespace lumowatt::desktop {

/// The item as panels see it: an object of the org.kde.StatusNotifierItem interface
/// (freedesktop.org, with the label that Ayatana added to it). What does not change is not told
/// again.
class StatusItem : public StatusButton {
 public:
  /// Its icons lie in the folder `icons`.
  StatusItem(sd_bus* bus, sd_event* loop, std::string icons);

  void setImage(const std::optional<Image>& image) override;
  void setImageLeading() override {}  // panels have it so
  void setTitle(std::string_view title) override;
  void setAttributedTitle(const AttributedString& title) override;
  void setToolTip(std::string_view text) override;
  void setAccessibilityLabel(std::string_view text) override;

  const std::string& toolTip() const { return toolTip_; }

  /// The name by which a panel keeps the item's place. To be set before the item is registered.
  void setId(std::string_view id) { id_ = id; }

  /// Registers the item with the panel, and with each that appears later.
  void show();

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

  /// Has the signals sent when all is said that changes now.
  void announce(unsigned signals);
  static int sendSignals(sd_event_source* source, void* item);
  void registerItem();

  sd_bus* bus_;
  std::string id_ = "Lumowatt";
  std::string iconFolder_;
  std::string icon_;
  std::string iconDescription_;
  std::string label_;
  std::string toolTip_;
  unsigned signals_ = 0;
  EventSource sending_;
  BusSlot object_;
  std::optional<NameWatch> panels_;
};

}  // namespace lumowatt::desktop
