#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::fuzz {

/// Menu item as a panel received it.
struct PanelItem {
  std::int32_t parent = -1;  ///< -1 for the root
  int depth = 0;
  std::map<std::string, std::string> properties = {};  ///< values as text

  /// Returns the value of a property. A property that was not sent has the default value of the
  /// com.canonical.dbusmenu interface.
  std::string property(const std::string& name) const;
};

using PanelItems = std::map<std::int32_t, PanelItem>;

/// Reads a value of type (ia{sv}av): an item and its descendants. Requires unique ids.
void readItem(sd_bus_message* message, PanelItems& items, std::int32_t parent, int depth);

/// Reads a value of type a{sv}. Returns the properties with their values as text.
std::map<std::string, std::string> readProperties(sd_bus_message* message);

/// Messages that a panel received.
struct ReceivedMessages {
  std::vector<freedesktop::BusMessage> replies;  ///< including error replies
  std::vector<freedesktop::BusMessage> signals;
};

/// Connection between the item and a panel, with both ends in this process.
class Connection {
 public:
  Connection();

  sd_bus* item() const { return item_.get(); }
  sd_bus* panel() const { return panel_.get(); }

  /// Sends `call` from the panel unless it is null. Then processes messages at both ends until both
  /// are idle, and returns the messages that the panel received.
  ReceivedMessages exchange(sd_bus_message* call) const;

 private:
  freedesktop::Bus item_;
  freedesktop::Bus panel_;
};

/// Panel that maintains a copy of the menu from replies and signals.
class Panel {
 public:
  explicit Panel(Connection& connection) : connection_(connection) {}

  /// Requests the whole menu, as panels do on start.
  void fetch();

  /// Updates the copy according to the signals. Returns whether there were any signals.
  bool handleSignals(const std::vector<freedesktop::BusMessage>& signals);

  /// Requires that the copy equals the menu that another request returns.
  void requireUpToDate();

  /// Returns whether a user could choose the item, according to the copy.
  bool canChoose(std::int32_t id) const;

  bool hasItem(std::int32_t id) const { return items_.contains(id); }
  const PanelItems& items() const { return items_; }
  std::uint32_t revision() const { return revision_; }

 private:
  struct Layout {
    std::uint32_t revision = 0;
    PanelItems items = {};
  };
  Layout requestLayout();

  Connection& connection_;
  std::uint32_t revision_ = 0;
  PanelItems items_;
};

}  // namespace lumowatt::fuzz
