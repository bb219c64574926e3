#include "platform/freedesktop/menu/server.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "platform/freedesktop/bus/boottime.h"
#include "platform/freedesktop/bus/session_bus.h"
#include "platform/freedesktop/menu/compact_menu.h"
#include "platform/freedesktop/menu/properties.h"

namespace lumowatt::freedesktop {

namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu";
constexpr std::int32_t rootId = 0;
constexpr std::string_view clicked = "clicked";

// Time in microseconds after which a menu counts as closed, for panels that do not report closing.
constexpr std::uint64_t openTimeout = 60'000'000;

constexpr char leftToRight[] = "ltr";
constexpr char normal[] = "normal";

int getIconThemePath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                     sd_bus_error*) {
  return sd_bus_message_append(reply, "as", 0);
}

int noSuchItem(sd_bus_error* error, std::int32_t id) {
  return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "The menu has no item %d", id);
}

/// Reads a list of ids. `ids` refers to memory of the message and is valid as long as the message.
int readIds(sd_bus_message* message, std::span<const std::int32_t>& ids) {
  const void* array = nullptr;
  std::size_t bytes = 0;
  const int status = sd_bus_message_read_array(message, 'i', &array, &bytes);
  if (status >= 0) ids = {static_cast<const std::int32_t*>(array), bytes / sizeof(std::int32_t)};
  return status;
}

/// Returns the number of rows of the report: the visible items before the first separator.
std::ptrdiff_t reportRows(const MenuEntry& root) {
  const auto end = std::ranges::find_if(root.children, &MenuEntry::isSeparator);
  return std::count_if(root.children.begin(), end,
                       [](const MenuEntry& entry) { return entry.isVisible; });
}

void addIds(MessageWriter& message, const std::vector<std::int32_t>& ids) {
  message.begin('a', "i");
  for (const std::int32_t id : ids) message.add("i", id);
  message.end();
}

}  // namespace

const sd_bus_vtable MenuServer::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", constant<3U>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", constant<leftToRight>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", constant<normal>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "as", getIconThemePath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", handle<&MenuServer::getLayout>, 0),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})",
                  handle<&MenuServer::getGroupProperties>, 0),
    SD_BUS_METHOD("GetProperty", "is", "v", handle<&MenuServer::getProperty>, 0),
    SD_BUS_METHOD("Event", "isvu", "", handle<&MenuServer::event>, 0),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", handle<&MenuServer::eventGroup>, 0),
    SD_BUS_METHOD("AboutToShow", "i", "b", handle<&MenuServer::aboutToShow>, 0),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", handle<&MenuServer::aboutToShowGroup>, 0),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END,
};

MenuServer::MenuServer(sd_bus* bus, ApplicationDelegate& application,
                       std::function<void(const Choice&)> choose)
    : bus_(bus), application_(application), choose_(std::move(choose)) {
  sd_bus_add_object_vtable(bus, Out(object_), path, menuInterface, table, this);
}

// Contents of the menu

MenuLayout::Change MenuServer::replaceLayout(const Menu& menu) {
  return layout_.present(isCompact_ ? compactMenu(menu) : menu);
}

bool MenuServer::present(const Menu& menu) {
  const auto change = replaceLayout(menu);
  if (!change.entries.empty()) {
    BusMessage signal;
    sd_bus_message_new_signal(bus_, Out(signal), path, menuInterface, "ItemsPropertiesUpdated");
    MessageWriter message(signal.get());
    message.begin('a', "(ia{sv})");
    for (const MenuEntry& entry : change.entries) {
      message.begin('r', "ia{sv}");
      message.add("i", entry.id);
      addProperties(message, entry);
      message.end();
    }
    message.end();
    message.add("a(ias)", 0);  // no property is reset to its default
    message.send();
  }
  if (change.isStructural) {
    sd_bus_emit_signal(bus_, path, menuInterface, "LayoutUpdated", "ui", ++revision_, rootId);
  }
  return change.isStructural || !change.entries.empty();
}

void MenuServer::ensureLayout() {
  if (!layout_.root().children.empty()) return;
  replaceLayout(application_.menuWillOpen());
}

int MenuServer::getLayout(sd_bus_message* call, sd_bus_error* error) {
  std::int32_t parent = 0;
  std::int32_t depth = 0;
  PropertySet set;
  if (const int status = sd_bus_message_read(call, "ii", &parent, &depth); status < 0)
    return status;
  if (const int status = readPropertySet(call, set); status < 0) return status;
  ensureLayout();
  const MenuEntry* const entry = layout_.find(parent);
  if (entry == nullptr) return noSuchItem(error, parent);
  if (depth < -1) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "There is no depth of %d", depth);
  }
  BusMessage reply;
  if (const int status = sd_bus_message_new_method_return(call, Out(reply)); status < 0)
    return status;
  MessageWriter message(reply.get());
  message.add("u", revision_);
  addLayout(message, *entry, depth, set);
  return message.send();
}

int MenuServer::getGroupProperties(sd_bus_message* call, sd_bus_error*) {
  std::span<const std::int32_t> ids;
  PropertySet set;
  if (const int status = readIds(call, ids); status < 0) return status;
  if (const int status = readPropertySet(call, set); status < 0) return status;
  ensureLayout();
  BusMessage reply;
  if (const int status = sd_bus_message_new_method_return(call, Out(reply)); status < 0)
    return status;
  MessageWriter message(reply.get());
  message.begin('a', "(ia{sv})");
  // Replies with each item once, in the menu's order, even if the caller repeats an id.
  layout_.forEach([&](const MenuEntry& entry) {
    if (!ids.empty() && std::ranges::find(ids, entry.id) == ids.end()) return;
    message.begin('r', "ia{sv}");
    message.add("i", entry.id);
    addProperties(message, entry, set);
    message.end();
  });
  message.end();
  return message.send();
}

int MenuServer::getProperty(sd_bus_message* call, sd_bus_error* error) {
  std::int32_t id = 0;
  const char* name = nullptr;
  if (const int status = sd_bus_message_read(call, "is", &id, &name); status < 0) return status;
  ensureLayout();
  const MenuEntry* const entry = layout_.find(id);
  if (entry == nullptr) return noSuchItem(error, id);
  BusMessage reply;
  if (const int status = sd_bus_message_new_method_return(call, Out(reply)); status < 0)
    return status;
  MessageWriter message(reply.get());
  if (!addProperty(message, *entry, name)) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "Items have no property \"%s\"",
                             name);
  }
  return message.send();
}

// Events

int MenuServer::aboutToShow(sd_bus_message* call, sd_bus_error* error) {
  std::int32_t id = 0;
  if (const int status = sd_bus_message_read(call, "i", &id); status < 0) return status;
  const bool changed = id == rootId && open();
  if (layout_.find(id) == nullptr) return noSuchItem(error, id);
  return sd_bus_reply_method_return(call, "b", static_cast<int>(changed));
}

int MenuServer::aboutToShowGroup(sd_bus_message* call, sd_bus_error* error) {
  std::span<const std::int32_t> ids;
  if (const int status = readIds(call, ids); status < 0) return status;
  const bool isRoot = std::ranges::find(ids, rootId) != ids.end();
  const bool changed = isRoot && open();
  std::vector<std::int32_t> unknown;
  std::ranges::copy_if(ids, std::back_inserter(unknown),
                       [this](std::int32_t id) { return layout_.find(id) == nullptr; });
  if (!ids.empty() && unknown.size() == ids.size()) return noSuchItem(error, ids.front());
  BusMessage reply;
  if (const int status = sd_bus_message_new_method_return(call, Out(reply)); status < 0)
    return status;
  MessageWriter message(reply.get());
  addIds(message, changed ? std::vector{rootId} : std::vector<std::int32_t>{});
  addIds(message, unknown);
  return message.send();
}

int MenuServer::event(sd_bus_message* call, sd_bus_error* error) {
  std::int32_t id = 0;
  const char* name = nullptr;
  if (const int status = sd_bus_message_read(call, "is", &id, &name); status < 0) return status;
  if (!handleEvent(id, name)) return noSuchItem(error, id);
  return sd_bus_reply_method_return(call, "");
}

int MenuServer::eventGroup(sd_bus_message* call, sd_bus_error* error) {
  struct Event {
    std::int32_t id;
    const char* name;
  };
  std::vector<Event> events;
  int status = sd_bus_message_enter_container(call, 'a', "(isvu)");
  while (status >= 0 && (status = sd_bus_message_enter_container(call, 'r', "isvu")) > 0) {
    Event& event = events.emplace_back();
    status = sd_bus_message_read(call, "is", &event.id, &event.name);
    if (status >= 0) status = sd_bus_message_skip(call, "vu");
    if (status >= 0) status = sd_bus_message_exit_container(call);
  }
  if (status < 0) return status;

  std::vector<std::int32_t> unknown;
  bool hasChosen = false;
  for (const auto& [id, name] : events) {
    // A choice closes the menu, so further choices are ignored.
    const bool isChoice = layout_.choice(id) && name == clicked;
    if (!(isChoice && hasChosen) && !handleEvent(id, name)) unknown.push_back(id);
    hasChosen = hasChosen || isChoice;
  }
  if (!events.empty() && unknown.size() == events.size()) return noSuchItem(error, unknown.front());
  BusMessage reply;
  if (status = sd_bus_message_new_method_return(call, Out(reply)); status < 0) return status;
  MessageWriter message(reply.get());
  addIds(message, unknown);
  return message.send();
}

bool MenuServer::handleEvent(std::int32_t id, std::string_view event) {
  if (layout_.find(id) == nullptr) return false;
  const auto choice = event == clicked ? layout_.choice(id) : std::nullopt;
  if (choice || (event == "closed" && id == rootId)) openUntil_ = 0;  // a choice closes the menu
  if (choice) choose_(*choice);
  return true;
}

bool MenuServer::open() {
  openUntil_ = boottime() + openTimeout;
  return present(application_.menuWillOpen());
}

void MenuServer::setCompact(bool isCompact) {
  if (isCompact == isCompact_) return;
  isCompact_ = isCompact;
  update(application_.menu());
}

void MenuServer::update(const Menu& menu) {
  const bool isKnown = !layout_.root().children.empty();
  if (isKnown) present(menu);
}

void MenuServer::updateRows(std::string_view report) {
  const bool isOpen = boottime() < openUntil_;
  if (isOpen || isCompact_ || report == report_ || isCongested(bus_)) return;
  report_ = report;
  const bool hasOtherRows = 1 + std::ranges::count(report, '\n') != reportRows(layout_.root());
  if (hasOtherRows) update(application_.menu());
}

}  // namespace lumowatt::freedesktop
