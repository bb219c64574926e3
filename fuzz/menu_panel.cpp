#include "menu_panel.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <utility>

#include "support.h"
#include "written_call.h"

namespace lumowatt::fuzz {

namespace {

using freedesktop::Bus;
using freedesktop::BusMessage;

Bus newBus(int socket) {
  sd_bus* bus = nullptr;
  require(sd_bus_new(&bus) >= 0 && sd_bus_set_fd(bus, socket, socket) >= 0, "no bus");
  return Bus(bus);
}

/// What is there of a message, as text.
std::string readValue(sd_bus_message* message) {
  char type = 0;
  const char* contents = nullptr;
  require(sd_bus_message_peek_type(message, &type, &contents) > 0, "no value");
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

std::string PanelItem::of(const std::string& name) const {
  static const std::map<std::string, std::string> standard{
      {"type", "standard"}, {"enabled", "1"}, {"visible", "1"}, {"toggle-state", "-1"}};
  for (const auto* known : {&properties, &standard}) {
    if (const auto found = known->find(name); found != known->end()) return found->second;
  }
  return "";
}

std::map<std::string, std::string> readProperties(sd_bus_message* message) {
  std::map<std::string, std::string> properties;
  require(sd_bus_message_enter_container(message, 'a', "{sv}") >= 0, "no properties");
  while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
    const char* name = nullptr;
    const char* type = nullptr;
    sd_bus_message_read(message, "s", &name);
    sd_bus_message_peek_type(message, nullptr, &type);
    sd_bus_message_enter_container(message, 'v', type);
    require(properties.emplace(name, readValue(message)).second, "a property is there twice", name);
    sd_bus_message_exit_container(message);
    sd_bus_message_exit_container(message);
  }
  sd_bus_message_exit_container(message);
  return properties;
}

void readItem(sd_bus_message* message, PanelItems& items, std::int32_t parent, int depth) {
  require(sd_bus_message_enter_container(message, 'r', "ia{sv}av") > 0, "no item");
  std::int32_t id = 0;
  sd_bus_message_read(message, "i", &id);
  const PanelItem item{.parent = parent, .depth = depth, .properties = readProperties(message)};
  require(items.emplace(id, item).second, "an id is there twice", std::to_string(id));
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
          "no sockets");
  item_ = newBus(sockets[0]);
  panel_ = newBus(sockets[1]);
  sd_id128_t id{};
  sd_id128_randomize(&id);
  sd_bus_set_server(item(), 1, id);
  sd_bus_set_anonymous(item(), 1);
  sd_bus_set_trusted(item(), 1);  // as each user's bus is
  sd_bus_set_anonymous(panel(), 1);
  require(sd_bus_start(item()) >= 0 && sd_bus_start(panel()) >= 0, "no connection");
  exchange(nullptr);
  require(sd_bus_is_ready(item()) > 0 && sd_bus_is_ready(panel()) > 0, "no connection");
}

Answers Connection::exchange(sd_bus_message* call) const {
  Answers answers;
  if (call != nullptr) {
    std::uint64_t cookie = 0;  // who does not ask for it wants no answer
    require(sd_bus_send(panel(), call, &cookie) >= 0, "a call cannot be sent");
  }
  for (bool isBusy = true; isBusy;) {
    const int done = sd_bus_process(item(), nullptr);
    sd_bus_message* received = nullptr;
    const int heard = sd_bus_process(panel(), &received);
    require(done >= 0 && heard >= 0, "a connection broke");
    BusMessage message(received);
    isBusy = done > 0 || heard > 0;
    if (!message) continue;
    const bool isSignal = sd_bus_message_is_signal(received, nullptr, nullptr) > 0;
    (isSignal ? answers.signals : answers.replies).push_back(std::move(message));
  }
  return answers;
}

Panel::Layout Panel::ask() {
  const BusMessage call = callOf(connection_.panel(), "GetLayout iias 0 -1 0");
  const Answers answers = connection_.exchange(call.get());
  require(answers.replies.size() == 1 && answers.signals.empty(), "answers to a question");
  sd_bus_message* const reply = answers.replies.front().get();
  Layout layout;
  require(sd_bus_message_read(reply, "u", &layout.revision) > 0, "no layout");
  readItem(reply, layout.items, -1, 0);
  return layout;
}

void Panel::fetch() {
  Layout layout = ask();
  revision_ = layout.revision;
  items_ = std::move(layout.items);
}

bool Panel::hear(const std::vector<BusMessage>& signals) {
  bool isNewLayout = false;
  for (const BusMessage& signal : signals) {
    if (sd_bus_message_is_signal(signal.get(), nullptr, "LayoutUpdated") > 0) {
      std::uint32_t revision = 0;
      std::int32_t parent = 0;
      sd_bus_message_read(signal.get(), "ui", &revision, &parent);
      require(revision > revision_, "a revision goes back", std::to_string(revision));
      require(knows(parent), "an unknown part changed", std::to_string(parent));
      revision_ = revision;
      isNewLayout = true;
      continue;
    }
    require(sd_bus_message_is_signal(signal.get(), nullptr, "ItemsPropertiesUpdated") > 0,
            "signal");
    sd_bus_message_enter_container(signal.get(), 'a', "(ia{sv})");
    while (sd_bus_message_enter_container(signal.get(), 'r', "ia{sv}") > 0) {
      std::int32_t id = 0;
      sd_bus_message_read(signal.get(), "i", &id);
      require(knows(id), "an unknown item changed", std::to_string(id));
      for (const auto& [name, value] : readProperties(signal.get())) {
        items_[id].properties[name] = value;
      }
      sd_bus_message_exit_container(signal.get());
    }
  }
  if (isNewLayout) {
    const PanelItems before = std::exchange(items_, ask().items);
    for (const auto& [id, item] : before) {
      const bool isInMenu = item.parent == 0;
      require(!isInMenu || knows(id), "an item is taken away", std::to_string(id));
    }
  }
  return !signals.empty();
}

void Panel::requireUpToDate() {
  const Layout now = ask();
  require(now.revision == revision_, "a revision changed in silence");
  require(now.items.size() == items_.size(), "items came or went in silence");
  for (const auto& [id, item] : now.items) {
    require(knows(id), "an item came in silence", std::to_string(id));
    // What changes; the others an item has for good.
    for (const char* name : {"label", "enabled", "visible"}) {
      require(items_[id].of(name) == item.of(name), "a property changed in silence", name);
    }
    const bool isToggle = !item.of("toggle-type").empty();
    const bool same = items_[id].of("toggle-state") == item.of("toggle-state");
    require(!isToggle || same, "a check mark changed in silence", std::to_string(id));
  }
}

bool Panel::canChoose(std::int32_t id) const {
  const auto found = items_.find(id);
  if (found == items_.end() || id == 0) return false;
  const PanelItem& item = found->second;
  const bool hasSubmenu = item.of("children-display") == "submenu";
  const bool canBe = item.of("type") == "standard" && !hasSubmenu;
  for (auto at = found; at->first != 0; at = items_.find(at->second.parent)) {
    if (at->second.of("enabled") != "1" || at->second.of("visible") != "1") return false;
  }
  return canBe;
}

}  // namespace lumowatt::fuzz
