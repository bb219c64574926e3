#include "menu_panel.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <utility>

#include "call_parser.h"
#include "support.h"

namespace lumowatt::fuzz {

namespace {

using freedesktop::Bus;
using freedesktop::BusMessage;

Bus newBus(int socket) {
  sd_bus* bus = nullptr;
  require(sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, socket, socket) >= 0, "cannot create a bus");
  return Bus(bus);
}

/// Reads the next value of a message. Returns text, numbers and Booleans as text, and only the
/// signature of other types.
std::string readValue(sd_bus_message* message) {
  char type = 0;
  const char* contents = nullptr;
  require(sd_bus_message_peek_type(message, &type, &contents) > 0, "a missing value");
  if (type == 's') {
    const char* text = nullptr;
    sd_bus_message_read(message, "s", &text);
    return text;
  }
  if (type == 'i' || type == 'b') {
    std::int32_t number = 0;
    sd_bus_message_read_basic(message, type, &number);
    return std::to_string(number);
  }
  sd_bus_message_skip(message, std::string(1, type).append(contents).c_str());
  return contents;
}

}  // namespace

std::string PanelItem::property(const std::string& name) const {
  static const std::map<std::string, std::string> defaults{
      {"type", "standard"}, {"enabled", "1"}, {"visible", "1"}, {"toggle-state", "-1"}};
  for (const auto* values : {&properties, &defaults}) {
    if (const auto found = values->find(name); found != values->end()) return found->second;
  }
  return "";
}

std::map<std::string, std::string> readProperties(sd_bus_message* message) {
  std::map<std::string, std::string> properties;
  require(sd_bus_message_enter_container(message, 'a', "{sv}") >= 0, "missing properties");
  while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
    const char* name = nullptr;
    const char* type = nullptr;
    sd_bus_message_read(message, "s", &name);
    sd_bus_message_peek_type(message, nullptr, &type);
    sd_bus_message_enter_container(message, 'v', type);
    require(properties.emplace(name, readValue(message)).second, "a duplicate property", name);
    sd_bus_message_exit_container(message);
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
  return properties;
}

void readItem(sd_bus_message* message, PanelItems& items, std::int32_t parent, int depth) {
  require(sd_bus_message_enter_container(message, 'r', "ia{sv}av") > 0, "a missing item");
  std::int32_t id = 0;
  sd_bus_message_read(message, "i", &id);
  const PanelItem item{.parent = parent, .depth = depth, .properties = readProperties(message)};
  require(items.emplace(id, item).second, "a duplicate id", std::to_string(id));
  sd_bus_message_enter_container(message, 'a', "v");
  while (sd_bus_message_enter_container(message, 'v', "(ia{sv}av)") > 0) {
    readItem(message, items, id, depth + 1);
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
  sd_bus_message_exit_container(message);
}

Connection::Connection() {
  std::array<int, 2> sockets{};
  require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) == 0,
          "cannot create a socket pair");
  item_ = newBus(sockets[0]);
  panel_ = newBus(sockets[1]);
  sd_id128_t id{};
  sd_id128_randomize(&id);
  sd_bus_set_server(item(), 1, id);
  sd_bus_set_anonymous(item(), 1);
  sd_bus_set_trusted(item(), 1);  // as on the session bus, where every client belongs to the user
  sd_bus_set_anonymous(panel(), 1);
  require(sd_bus_start(item()) >= 0 && sd_bus_start(panel()) >= 0, "no connection");
  exchange(nullptr);
  require(sd_bus_is_ready(item()) > 0 && sd_bus_is_ready(panel()) > 0, "no connection");
}

ReceivedMessages Connection::exchange(sd_bus_message* call) const {
  ReceivedMessages messages;
  if (call != nullptr) {
    std::uint64_t cookie = 0;  // without it, sd_bus_send marks the call as expecting no reply
    require(sd_bus_send(panel(), call, &cookie) >= 0, "cannot send a call");
  }
  for (bool isBusy = true; isBusy;) {
    const int itemStatus = sd_bus_process(item(), nullptr);
    sd_bus_message* received = nullptr;
    const int panelStatus = sd_bus_process(panel(), &received);
    require(itemStatus >= 0 && panelStatus >= 0, "a connection failed");
    BusMessage message(received);
    isBusy = itemStatus > 0 || panelStatus > 0;
    if (!message) continue;
    const bool isSignal = sd_bus_message_is_signal(received, nullptr, nullptr) > 0;
    (isSignal ? messages.signals : messages.replies).push_back(std::move(message));
  }
  return messages;
}

Panel::Layout Panel::requestLayout() {
  const BusMessage call = parseCall(connection_.panel(), "GetLayout iias 0 -1 0");
  const ReceivedMessages received = connection_.exchange(call.get());
  require(received.replies.size() == 1 && received.signals.empty(),
          "GetLayout without exactly one reply, or with signals");
  sd_bus_message* const reply = received.replies.front().get();
  Layout layout;
  require(sd_bus_message_read(reply, "u", &layout.revision) > 0, "a reply without a layout");
  readItem(reply, layout.items, -1, 0);
  return layout;
}

void Panel::fetch() {
  Layout layout = requestLayout();
  revision_ = layout.revision;
  items_ = std::move(layout.items);
}

bool Panel::handleSignals(const std::vector<BusMessage>& signals) {
  bool isNewLayout = false;
  for (const BusMessage& signal : signals) {
    if (sd_bus_message_is_signal(signal.get(), nullptr, "LayoutUpdated") > 0) {
      std::uint32_t revision = 0;
      std::int32_t parent = 0;
      sd_bus_message_read(signal.get(), "ui", &revision, &parent);
      require(revision > revision_, "a revision that did not increase", std::to_string(revision));
      require(hasItem(parent), "a layout update of an unknown item", std::to_string(parent));
      revision_ = revision;
      isNewLayout = true;
      continue;
    }
    require(sd_bus_message_is_signal(signal.get(), nullptr, "ItemsPropertiesUpdated") > 0,
            "an unknown signal");
    sd_bus_message_enter_container(signal.get(), 'a', "(ia{sv})");
    while (sd_bus_message_enter_container(signal.get(), 'r', "ia{sv}") > 0) {
      std::int32_t id = 0;
      sd_bus_message_read(signal.get(), "i", &id);
      require(hasItem(id), "a property update of an unknown item", std::to_string(id));
      for (const auto& [name, value] : readProperties(signal.get())) {
        items_[id].properties[name] = value;
      }
      sd_bus_message_exit_container(signal.get());
    }
  }
  if (isNewLayout) {
    const PanelItems before = std::exchange(items_, requestLayout().items);
    for (const auto& [id, item] : before) {
      const bool isInMenu = item.parent == 0;
      require(!isInMenu || hasItem(id), "a removed item at the top level", std::to_string(id));
    }
  }
  return !signals.empty();
}

void Panel::requireUpToDate() {
  const Layout now = requestLayout();
  require(now.revision == revision_, "a new revision without a signal");
  require(now.items.size() == items_.size(), "added or removed items without a signal");
  for (const auto& [id, item] : now.items) {
    require(hasItem(id), "an added item without a signal", std::to_string(id));
    // Only these properties and the check mark can change.
    for (const char* name : {"label", "enabled", "visible"}) {
      require(items_[id].property(name) == item.property(name),
              "a changed property without a signal", name);
    }
    const bool isToggle = !item.property("toggle-type").empty();
    const bool same = items_[id].property("toggle-state") == item.property("toggle-state");
    require(!isToggle || same, "a changed check mark without a signal", std::to_string(id));
  }
}

bool Panel::canChoose(std::int32_t id) const {
  const auto found = items_.find(id);
  if (found == items_.end() || id == 0) return false;
  const PanelItem& item = found->second;
  const bool hasSubmenu = item.property("children-display") == "submenu";
  const bool isChoice = item.property("type") == "standard" && !hasSubmenu;
  for (auto at = found; at->first != 0; at = items_.find(at->second.parent)) {
    if (at->second.property("enabled") != "1" || at->second.property("visible") != "1")
      return false;
  }
  return isChoice;
}

}  // namespace lumowatt::fuzz
