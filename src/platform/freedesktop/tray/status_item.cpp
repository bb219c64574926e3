#include "platform/freedesktop/tray/status_item.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <utility>

#include "platform/freedesktop/bus/boottime.h"
#include "platform/freedesktop/bus/session_bus.h"
#include "platform/freedesktop/menu/server.h"
#include "platform/freedesktop/tray/panel_watch.h"

namespace lumowatt::freedesktop {

namespace {

constexpr auto itemPath = "/StatusNotifierItem";
// In Cinnamon, a left click opens the menu only for items below /org/ayatana/NotificationItem.
constexpr auto ayatanaPath = "/org/ayatana/NotificationItem/lumowatt";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";

// Time in microseconds after which an item counts as placed even if no panel has read it.
constexpr std::uint64_t placementTimeout = 3'000'000;

constexpr char hardware[] = "Hardware";
constexpr char active[] = "Active";
constexpr char noText[] = "";

/// Replies with no pixmaps: an empty list of widths, heights and bytes.
int getNoPixels(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                sd_bus_error*) {
  return sd_bus_message_append(reply, "a(iiay)", 0);
}

int getMenu(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
            sd_bus_error*) {
  return sd_bus_message_append(reply, "o", MenuServer::path);
}

/// Replies to a call that has no effect on this item.
int ignoreCall(sd_bus_message* call, void*, sd_bus_error*) {
  return sd_bus_reply_method_return(call, "");
}

/// Replaces markup characters with similar ones, for tool tips: some panels parse markup, and the
/// others would show escape sequences.
std::string replaceMarkup(std::string_view text) {
  constexpr std::string_view marks = "&<>";
  constexpr std::array replacements{"+", "‹", "›"};
  std::string plain;
  for (const char letter : text) {
    const std::size_t mark = marks.find(letter);
    if (mark == std::string_view::npos) {
      plain += letter;
    } else {
      plain += replacements[mark];
    }
  }
  return plain;
}

/// Returns the label with each digit replaced by 8, one of the widest digits. A panel can reserve
/// the width of this text.
std::string labelGuide(std::string label) {
  std::ranges::replace_if(
      label, [](char letter) { return letter >= '0' && letter <= '9'; }, '8');
  return label;
}

}  // namespace

template <std::string StatusItem::*text>
int StatusItem::getText(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                        void* item, sd_bus_error*) {
  return sd_bus_message_append(reply, "s", (static_cast<StatusItem*>(item)->*text).c_str());
}

int StatusItem::getIcon(sd_bus* bus, const char* path, const char* interface, const char* property,
                        sd_bus_message* reply, void* item, sd_bus_error* error) {
  static_cast<StatusItem*>(item)->markPlaced();
  return getText<&StatusItem::icon_>(bus, path, interface, property, reply, item, error);
}

int StatusItem::getLabelGuide(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                              void* item, sd_bus_error*) {
  const auto& self = *static_cast<StatusItem*>(item);
  return sd_bus_message_append(reply, "s", labelGuide(self.label_).c_str());
}

/// Replies with the name of an icon, the pixmaps of an icon, the title and the text.
int StatusItem::getToolTip(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                           void* item, sd_bus_error*) {
  const auto& self = *static_cast<StatusItem*>(item);
  return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0,
                               replaceMarkup(self.toolTipTitle_).c_str(),
                               replaceMarkup(self.toolTip_).c_str());
}

const sd_bus_vtable StatusItem::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", constant<hardware>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Id", "s", getText<&StatusItem::id_>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", getText<&StatusItem::title_>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", constant<active>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("WindowId", "i", constant<0>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconThemePath", "s", getText<&StatusItem::iconFolder_>, 0,
                    SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", getIcon, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", getNoPixels, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("OverlayIconName", "s", constant<noText>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", getNoPixels, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("AttentionIconName", "s", constant<noText>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", getNoPixels, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("AttentionMovieName", "s", constant<noText>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconAccessibleDesc", "s", getText<&StatusItem::description_>, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabel", "s", getText<&StatusItem::label_>, 0, 0),
    SD_BUS_PROPERTY("XAyatanaLabelGuide", "s", getLabelGuide, 0, 0),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", getToolTip, 0, 0),
    SD_BUS_PROPERTY("ItemIsMenu", "b", constant<true>, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Menu", "o", getMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_METHOD("Activate", "ii", "", handle<&StatusItem::activate>, 0),
    SD_BUS_METHOD("ContextMenu", "ii", "", handle<&StatusItem::activate>, 0),
    SD_BUS_METHOD("SecondaryActivate", "ii", "", ignoreCall, 0),
    SD_BUS_METHOD("XAyatanaSecondaryActivate", "u", "", ignoreCall, 0),
    SD_BUS_METHOD("Scroll", "is", "", ignoreCall, 0),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewIconAccessibleDesc", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("XAyatanaNewLabel", "ss", 0),
    SD_BUS_VTABLE_END,
};

StatusItem::StatusItem(sd_bus* bus, sd_event* loop, std::string icons, Handlers handlers)
    : bus_(bus), loop_(loop), handlers_(std::move(handlers)), iconFolder_(std::move(icons)) {
  moveTo(itemPath);
  sd_event_add_defer(loop, Out(signalSource_), emitSignals, this);
  sd_event_source_set_enabled(signalSource_.get(), SD_EVENT_OFF);
}

/// Returns the error UnknownMethod if the panel must open the menu: on this error, panels open the
/// menu themselves.
int StatusItem::activate(sd_bus_message* call, sd_bus_error* error) const {
  if (handlers_.openMenu()) return sd_bus_reply_method_return(call, "");
  return sd_bus_error_setf(error, SD_BUS_ERROR_UNKNOWN_METHOD, "The panel opens the menu");
}

void StatusItem::setIcon(std::string_view name) { set(icon_, name, newIcon); }

void StatusItem::setLabel(std::string_view label) { set(label_, label, newLabel); }

void StatusItem::setToolTipTitle(std::string_view text) { set(toolTipTitle_, text, newToolTip); }

void StatusItem::setToolTip(std::string_view text) { set(toolTip_, text, newToolTip); }

void StatusItem::setDescription(std::string_view text) { set(description_, text, newDescription); }

void StatusItem::copyTexts(const StatusItem& other) {
  setToolTipTitle(other.toolTipTitle_);
  setToolTip(other.toolTip_);
  setDescription(other.description_);
}

void StatusItem::set(std::string& property, std::string_view value, unsigned signals) {
  if (value != property) {
    property = value;
    if (isRegistered_) signals_ |= signals;
  }
  if (signals_ != 0) sd_event_source_set_enabled(signalSource_.get(), SD_EVENT_ONESHOT);
}

int StatusItem::emitSignals(sd_event_source*, void* item) {
  auto& self = *static_cast<StatusItem*>(item);
  if (isCongested(self.bus_)) return 0;  // `set` retries
  const unsigned signals = std::exchange(self.signals_, 0U);
  const auto emit = [&self](const char* signal, const char* types, auto... values) {
    sd_bus_emit_signal(self.bus_, self.path_, itemInterface, signal, types, values...);
  };
  if (signals & newIcon) emit("NewIcon", "");
  if (signals & newDescription) emit("NewIconAccessibleDesc", "");
  if (signals & newLabel) {
    emit("XAyatanaNewLabel", "ss", self.label_.c_str(), labelGuide(self.label_).c_str());
  }
  if (signals & newToolTip) emit("NewToolTip", "");
  return 0;
}

void StatusItem::registerItem(Address address) {
  moveTo(address == Address::connection ? itemPath : ayatanaPath);
  isRegistered_ = true;
  const char* name = path_;
  if (address == Address::connection) sd_bus_get_unique_name(bus_, &name);
  sd_bus_call_method_async(bus_, nullptr, watcherName, "/StatusNotifierWatcher", watcherName,
                           "RegisterStatusNotifierItem", nullptr, nullptr, "s", name);
  const int status = sd_event_add_time(loop_, Out(placementTimer_), CLOCK_BOOTTIME,
                                       boottime() + placementTimeout, 0, onPlacementTimeout, this);
  isPlaced_ = status < 0;
}

int StatusItem::onPlacementTimeout(sd_event_source*, std::uint64_t, void* item) {
  static_cast<StatusItem*>(item)->markPlaced();
  return 0;
}

void StatusItem::markPlaced() {
  if (isPlaced_ || !isRegistered_) return;
  isPlaced_ = true;
  placementTimer_.reset();
  handlers_.onPlaced();
}

void StatusItem::moveTo(const char* path) {
  if (path == path_) return;
  path_ = path;
  object_.reset();
  sd_bus_add_object_vtable(bus_, Out(object_), path, itemInterface, table, this);
}

}  // namespace lumowatt::freedesktop
