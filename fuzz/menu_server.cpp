/// Fuzz target: a panel calls the D-Bus menu while the application changes the menu. A line of the
/// input is a call in the format of busctl, such as `Event isvu 202 clicked s x 0`. A leading "!"
/// marks a call that expects no reply. Other lines change the application: `menu llv-tcsrr` sets
/// the menu for the next update (see menu_parser.h), `update` updates the menu, `chart TEXT`
/// changes the text of the chart, and `follow TEXT` passes a report to `MenuServer::updateRows`.

#include "platform/freedesktop/menu/server.h"

#include <set>

#include "call_parser.h"
#include "menu_panel.h"
#include "menu_parser.h"
#include "support.h"

namespace lumowatt::fuzz {

namespace {

using freedesktop::MenuServer;
using Ids = std::set<std::int32_t>;

/// Start of the chart's text. The rest of the text may change before the menu shows it.
const std::string chartPrefix = "chart ";

/// Application whose menu the input sets.
class Application : public ApplicationDelegate {
 public:
  void applicationDidFinishLaunching() override {}
  Menu menuWillOpen() override { return menu(); }
  Menu menu() override {
    Menu menu = nextMenu;
    for (MenuItem& item : menu) {
      if (auto* const view = std::get_if<MenuChart>(&item)) view->text = chartText;
    }
    return menu;
  }
  void perform(const Choice&) override {}

  Menu nextMenu = parseMenu("l");
  std::string chartText = chartPrefix;
};

/// Tag of the chart in this test; differs from the tags of the other choices.
constexpr std::int64_t chartTag = -1;

std::int64_t tagOf(const Choice& choice) {
  return choice.action == Action::showChart ? chartTag : choice.tag;
}

/// Returns the tag of the item with this label.
std::int64_t tagOf(const std::string& label) {
  return label.starts_with(chartPrefix) ? chartTag : std::stoll(label);
}

/// Run of one input: an application, its menu server and a panel.
class Session {
 public:
  explicit Session(Connection& connection) : connection_(connection), panel_(connection) {
    panel_.fetch();
  }

  void step(std::string_view line) {
    const auto [command, rest] = split(line, ' ');
    chosenTags_.clear();
    if (command == "menu") {
      application_.nextMenu = parseMenu(rest);
    } else if (command == "chart") {
      application_.chartText = chartPrefix + std::to_string(rest.size());
    } else if (command == "update") {
      server_.update(application_.menu());
    } else if (command == "follow") {
      server_.updateRows(unescaped(rest));
    } else {
      call(line);
      return;
    }
    require(chosenTags_.empty(), "a choice without a call");
    panel_.handleSignals(connection_.exchange(nullptr).signals);
    panel_.requireUpToDate();
  }

 private:
  void call(std::string_view line) {
    const bool expectsReply = !line.starts_with('!');
    if (!expectsReply) line.remove_prefix(1);
    const freedesktop::BusMessage message = parseCall(connection_.panel(), line);
    if (!message) return;
    sd_bus_message_set_expect_reply(message.get(), expectsReply ? 1 : 0);
    const ReceivedMessages received = connection_.exchange(message.get());
    recordExpectedChoice(message.get());
    require(received.replies.size() == (expectsReply ? 1U : 0U), "a wrong number of replies", line);
    require(chosenTags_ == expectedTags_, "a choice other than the clicked item", line);

    const PanelItems before = panel_.items();
    const bool hasSignals = panel_.handleSignals(received.signals);
    panel_.requireUpToDate();
    if (!expectsReply) return;
    sd_bus_message* const reply = received.replies.front().get();
    std::uint64_t cookie = 0;
    std::uint64_t replyCookie = 0;
    sd_bus_message_get_cookie(message.get(), &cookie);
    sd_bus_message_get_reply_cookie(reply, &replyCookie);
    require(cookie == replyCookie, "a reply to another call", line);
    requireValidReply(message.get(), reply, before, hasSignals);
  }

  /// Records the tag of the item that the call chooses, according to the panel's copy before the
  /// call. A call chooses at most one item, because a choice closes the menu.
  void recordExpectedChoice(sd_bus_message* call) {
    expectedTags_.clear();
    sd_bus_message_rewind(call, 1);
    const auto record = [this](std::int32_t id, std::string_view event) {
      if (event != "clicked" || !panel_.canChoose(id) || !expectedTags_.empty()) return;
      expectedTags_.push_back(tagOf(panel_.items().at(id).property("label")));
    };
    std::int32_t id = 0;
    const char* event = nullptr;
    if (isCall(call, "Event", "isvu")) {
      sd_bus_message_read(call, "is", &id, &event);
      record(id, event);
    } else if (isCall(call, "EventGroup", "a(isvu)")) {
      sd_bus_message_enter_container(call, 'a', "(isvu)");
      while (sd_bus_message_enter_container(call, 'r', "isvu") > 0) {
        sd_bus_message_read(call, "is", &id, &event);
        sd_bus_message_skip(call, "vu");
        sd_bus_message_exit_container(call);
        record(id, event);
      }
    }
  }

  /// Requires that a reply follows the com.canonical.dbusmenu interface.
  void requireValidReply(sd_bus_message* call, sd_bus_message* reply, const PanelItems& before,
                         bool hasSignals) {
    const bool isError = sd_bus_message_is_method_error(reply, nullptr) > 0;
    sd_bus_message_rewind(call, 1);
    std::int32_t id = 0;
    for (const auto& [method, types] : {std::pair{"GetLayout", "iias"},
                                        {"GetProperty", "is"},
                                        {"Event", "isvu"},
                                        {"AboutToShow", "i"}}) {
      if (!isCall(call, method, types)) continue;
      sd_bus_message_read(call, "i", &id);
      const bool isUnknown = !before.contains(id) && !panel_.hasItem(id);
      require(!isUnknown || isError, "no error for an unknown item", method);
    }
    if (isError) return;
    if (isCall(call, "GetLayout", "iias")) requireLayout(call, reply, id);
    if (isCall(call, "GetGroupProperties", "aias")) requireGroup(call, reply);
    if (isCall(call, "EventGroup", "a(isvu)")) requireUnknownIds(reply);
    if (isCall(call, "AboutToShow", "i")) {
      int changed = 0;
      sd_bus_message_read(reply, "b", &changed);
      require((changed != 0) == hasSignals, "signals that contradict the reply");
    }
    if (isCall(call, "AboutToShowGroup", "ai")) {
      const auto changed = readIds(reply);
      require(changed == (hasSignals ? Ids{0} : Ids{}), "signals that contradict the reply");
      requireUnknownIds(reply);
    }
  }

  void requireLayout(sd_bus_message* call, sd_bus_message* reply, std::int32_t parent) {
    std::int32_t depth = 0;
    sd_bus_message_read(call, "i", &depth);
    const auto names = readNames(call);
    std::uint32_t revision = 0;
    sd_bus_message_read(reply, "u", &revision);
    require(revision == panel_.revision(), "another revision than the panel's");
    PanelItems items;
    readItem(reply, items, panel_.items().at(parent).parent, 0);
    require(items.contains(parent) && depth >= -1, "a layout of another item");
    for (const auto& [id, item] : items) {
      require(depth < 0 || item.depth <= depth, "an item below the requested depth",
              std::to_string(id));
      require(panel_.items().at(id).parent == item.parent, "another parent than the panel's",
              std::to_string(id));
      requireRequestedNames(item.properties, names);
    }
    for (const auto& [id, item] : panel_.items()) {
      const bool isBelow = items.contains(item.parent) && item.parent != -1 && id != parent;
      const bool isRequested = isBelow && (depth < 0 || items.at(item.parent).depth < depth);
      require(!isRequested || items.contains(id), "a missing item", std::to_string(id));
    }
  }

  void requireGroup(sd_bus_message* call, sd_bus_message* reply) const {
    const Ids requested = readIds(call);
    const auto names = readNames(call);
    Ids expected;
    for (const auto& [id, item] : panel_.items()) {
      if (requested.empty() || requested.contains(id)) expected.insert(id);
    }
    sd_bus_message_enter_container(reply, 'a', "(ia{sv})");
    while (sd_bus_message_enter_container(reply, 'r', "ia{sv}") > 0) {
      std::int32_t id = 0;
      sd_bus_message_read(reply, "i", &id);
      require(expected.erase(id) == 1, "an unrequested or duplicate item", std::to_string(id));
      requireRequestedNames(readProperties(reply), names);
      sd_bus_message_exit_container(reply);
    }
    require(expected.empty(), "a missing item in a group");
  }

  /// Reads an array of ids from a reply. Requires that no item has one of them.
  void requireUnknownIds(sd_bus_message* reply) const {
    for (const std::int32_t id : readIds(reply)) {
      require(!panel_.hasItem(id), "an existing item reported as unknown", std::to_string(id));
    }
  }

  static Ids readIds(sd_bus_message* message) {
    const void* array = nullptr;
    std::size_t bytes = 0;
    sd_bus_message_read_array(message, 'i', &array, &bytes);
    const auto* const ids = static_cast<const std::int32_t*>(array);
    return {ids, ids + bytes / sizeof *ids};
  }

  static std::set<std::string> readNames(sd_bus_message* call) {
    std::set<std::string> names;
    sd_bus_message_enter_container(call, 'a', "s");
    const char* name = nullptr;
    while (sd_bus_message_read(call, "s", &name) > 0) names.insert(name);
    return names;
  }

  static void requireRequestedNames(const std::map<std::string, std::string>& properties,
                                    const std::set<std::string>& names) {
    for (const auto& [name, value] : properties) {
      require(names.empty() || names.contains(name), "an unrequested property", name);
    }
  }

  static bool isCall(sd_bus_message* call, const char* method, const char* types) {
    return sd_bus_message_is_method_call(call, "com.canonical.dbusmenu", method) > 0 &&
           sd_bus_message_has_signature(call, types) > 0;
  }

  Connection& connection_;
  Application application_;
  MenuServer server_{connection_.item(), application_, [this](const Choice& choice) {
                       chosenTags_.push_back(tagOf(choice));
                       server_.update(application_.menu());
                     }};
  Panel panel_;
  std::vector<std::int64_t> chosenTags_;    // chosen by the last line
  std::vector<std::int64_t> expectedTags_;  // expected according to the panel's copy
};

}  // namespace

void tryInput(std::string_view input) {
  static Connection connection;
  Session session(connection);
  int remaining = 60;  // limits the number of lines; more lines find nothing new
  for (const std::string_view line : parts(input, '\n')) {
    if (--remaining > 0) session.step(line);
  }
}

}  // namespace lumowatt::fuzz
