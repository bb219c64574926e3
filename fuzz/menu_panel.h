#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::fuzz {

/// An item as a panel knows it.
struct PanelItem {
  std::int32_t parent = -1;  ///< of the root: none
  int depth = 0;
  std::map<std::string, std::string> properties = {};  ///< each as text

  /// A property; what the interface has for one that is not told.
  std::string of(const std::string& name) const;
};

using PanelItems = std::map<std::int32_t, PanelItem>;

/// Reads (ia{sv}av): an item and what is below it. Requires that no id is there twice.
void readItem(sd_bus_message* message, PanelItems& items, std::int32_t parent, int depth);

/// Reads a{sv}.
std::map<std::string, std::string> readProperties(sd_bus_message* message);

/// What came back for a call.
struct Answers {
  std::vector<freedesktop::BusMessage> replies;  ///< errors as well
  std::vector<freedesktop::BusMessage> signals;
};

/// Two ends of a connection in one process: the item's, and that of a panel.
class Connection {
 public:
  Connection();

  sd_bus* item() const { return item_.get(); }
  sd_bus* panel() const { return panel_.get(); }

  /// Sends a call of the panel's, if there is one, and lets both ends work until they have nothing
  /// to do.
  Answers exchange(sd_bus_message* call) const;

 private:
  freedesktop::Bus item_;
  freedesktop::Bus panel_;
};

/// What a panel remembers of a menu by what it is told.
class Panel {
 public:
  explicit Panel(Connection& connection) : connection_(connection) {}

  /// Asks for the whole menu, as panels do at first.
  void fetch();

  /// Takes what it is told. Says whether there was anything.
  bool hear(const std::vector<freedesktop::BusMessage>& signals);

  /// Requires that asking again would tell nothing new.
  void requireUpToDate();

  /// Whether a user could choose the item by what the panel knows.
  bool canChoose(std::int32_t id) const;

  bool knows(std::int32_t id) const { return items_.contains(id); }
  const PanelItems& items() const { return items_; }
  std::uint32_t revision() const { return revision_; }

 private:
  struct Layout {
    std::uint32_t revision = 0;
    PanelItems items = {};
  };
  Layout ask();

  Connection& connection_;
  std::uint32_t revision_ = 0;
  PanelItems items_;
};

}  // namespace lumowatt::fuzz
