/// Panels that call the menu, and a menu that changes meanwhile. A line is a call as busctl has it
/// (`Event isvu 202 clicked s x 0`, with "!" in front for one that wants no answer), or what
/// happens to the application: `menu llv-tcsrr` is the menu from its next update on, `update`
/// updates it, `chart TEXT` is another chart, `follow TEXT` gives a report to follow.

#include "platform/freedesktop/menu/server.h"

#include <set>

#include "menu_panel.h"
#include "support.h"
#include "written_call.h"
#include "written_menu.h"

namespace lumowatt::fuzz {

namespace {

using freedesktop::MenuServer;
using Ids = std::set<std::int32_t>;

/// How the text of the chart begins, which may change before the menu shows it.
const std::string chart = "chart ";

/// An application whose menu is what the input says.
class Application : public ApplicationDelegate {
 public:
  void applicationDidFinishLaunching() override {}
  Menu menuWillOpen() override { return menu(); }
  Menu menu() override {
    Menu shown = next;
    for (MenuItem& item : shown) {
      if (auto* const view = std::get_if<MenuChart>(&item)) view->text = shownChart;
    }
    return shown;
  }
  void perform(const Choice&) override {}

  Menu next = menuOf("l");
  std::string shownChart = chart;
};

/// By what the test knows the chart among the tags of choices.
constexpr std::int64_t chartTag = -1;

std::int64_t tagOf(const Choice& choice) {
  return choice.action == Action::showChart ? chartTag : choice.tag;
}

/// The tag of what a panel shows under a label.
std::int64_t tagOf(const std::string& label) {
  return label.starts_with(chart) ? chartTag : std::stoll(label);
}

/// One input: an application, its menu, and a panel that watches.
class Session {
 public:
  explicit Session(Connection& connection) : connection_(connection), panel_(connection) {
    panel_.fetch();
  }

  void step(std::string_view line) {
    const auto [word, rest] = split(line, ' ');
    chosen_.clear();
    if (word == "menu") {
      application_.next = menuOf(rest);
    } else if (word == "chart") {
      application_.shownChart = chart + std::to_string(rest.size());
    } else if (word == "update") {
      server_.update(application_.menu());
    } else if (word == "follow") {
      server_.follow(unescaped(rest));
    } else {
      call(line);
      return;
    }
    require(chosen_.empty(), "something is chosen by nobody");
    panel_.hear(connection_.exchange(nullptr).signals);
    panel_.requireUpToDate();
  }

 private:
  void call(std::string_view line) {
    const bool isAnswered = !line.starts_with('!');
    if (!isAnswered) line.remove_prefix(1);
    const freedesktop::BusMessage message = callOf(connection_.panel(), line);
    if (!message) return;
    sd_bus_message_set_expect_reply(message.get(), isAnswered ? 1 : 0);
    const Answers answers = connection_.exchange(message.get());
    expectChoices(message.get());
    require(answers.replies.size() == (isAnswered ? 1U : 0U), "one answer to a call", line);
    require(chosen_ == expected_, "what is chosen is what was clicked", line);

    const PanelItems before = panel_.items();
    const bool isTold = panel_.hear(answers.signals);
    panel_.requireUpToDate();
    if (!isAnswered) return;
    sd_bus_message* const reply = answers.replies.front().get();
    std::uint64_t cookie = 0;
    std::uint64_t replyCookie = 0;
    sd_bus_message_get_cookie(message.get(), &cookie);
    sd_bus_message_get_reply_cookie(reply, &replyCookie);
    require(cookie == replyCookie, "an answer to another call", line);
    requireAnswer(message.get(), reply, before, isTold);
  }

  /// Notes the tag of the item that the call was to choose, by what the panel knew before it: one
  /// at most, since a choice closes the menu.
  void expectChoices(sd_bus_message* call) {
    expected_.clear();
    sd_bus_message_rewind(call, 1);
    const auto note = [this](std::int32_t id, std::string_view event) {
      if (event != "clicked" || !panel_.canChoose(id) || !expected_.empty()) return;
      expected_.push_back(tagOf(panel_.items().at(id).of("label")));
    };
    std::int32_t id = 0;
    const char* event = nullptr;
    if (isCall(call, "Event", "isvu")) {
      sd_bus_message_read(call, "is", &id, &event);
      note(id, event);
    } else if (isCall(call, "EventGroup", "a(isvu)")) {
      sd_bus_message_enter_container(call, 'a', "(isvu)");
      while (sd_bus_message_enter_container(call, 'r', "isvu") > 0) {
        sd_bus_message_read(call, "is", &id, &event);
        sd_bus_message_skip(call, "vu");
        sd_bus_message_exit_container(call);
        note(id, event);
      }
    }
  }

  /// Requires of an answer what the interface says of it.
  void requireAnswer(sd_bus_message* call, sd_bus_message* reply, const PanelItems& before,
                     bool isTold) {
    const bool isError = sd_bus_message_is_method_error(reply, nullptr) > 0;
    sd_bus_message_rewind(call, 1);
    std::int32_t id = 0;
    for (const auto& [method, types] : {std::pair{"GetLayout", "iias"},
                                        {"GetProperty", "is"},
                                        {"Event", "isvu"},
                                        {"AboutToShow", "i"}}) {
      if (!isCall(call, method, types)) continue;
      sd_bus_message_read(call, "i", &id);
      const bool isUnknown = !before.contains(id) && !panel_.knows(id);
      require(!isUnknown || isError, "an item that never was", method);
    }
    if (isError) return;
    if (isCall(call, "GetLayout", "iias")) requireLayout(call, reply, id);
    if (isCall(call, "GetGroupProperties", "aias")) requireGroup(call, reply);
    if (isCall(call, "EventGroup", "a(isvu)")) requireUnknown(reply);
    if (isCall(call, "AboutToShow", "i")) {
      int changed = 0;
      sd_bus_message_read(reply, "b", &changed);
      require((changed != 0) == isTold, "a change is told, and answered");
    }
    if (isCall(call, "AboutToShowGroup", "ai")) {
      const auto changed = readIds(reply);
      require(changed == (isTold ? Ids{0} : Ids{}), "a change of the group is told, and answered");
      requireUnknown(reply);
    }
  }

  void requireLayout(sd_bus_message* call, sd_bus_message* reply, std::int32_t parent) {
    std::int32_t depth = 0;
    sd_bus_message_read(call, "i", &depth);
    const auto names = readNames(call);
    std::uint32_t revision = 0;
    sd_bus_message_read(reply, "u", &revision);
    require(revision == panel_.revision(), "another revision");
    PanelItems items;
    readItem(reply, items, panel_.items().at(parent).parent, 0);
    require(items.contains(parent) && depth >= -1, "another part of the menu");
    for (const auto& [id, item] : items) {
      require(depth < 0 || item.depth <= depth, "deeper than asked for", std::to_string(id));
      require(panel_.items().at(id).parent == item.parent, "another parent", std::to_string(id));
      requireNames(item.properties, names);
    }
    for (const auto& [id, item] : panel_.items()) {
      const bool isBelow = items.contains(item.parent) && item.parent != -1 && id != parent;
      const bool isAskedFor = isBelow && (depth < 0 || items.at(item.parent).depth < depth);
      require(!isAskedFor || items.contains(id), "an item is left out", std::to_string(id));
    }
  }

  void requireGroup(sd_bus_message* call, sd_bus_message* reply) const {
    const Ids asked = readIds(call);
    const auto names = readNames(call);
    Ids known;
    for (const auto& [id, item] : panel_.items()) {
      if (asked.empty() || asked.contains(id)) known.insert(id);
    }
    sd_bus_message_enter_container(reply, 'a', "(ia{sv})");
    while (sd_bus_message_enter_container(reply, 'r', "ia{sv}") > 0) {
      std::int32_t id = 0;
      sd_bus_message_read(reply, "i", &id);
      require(known.erase(id) == 1, "an item not asked for, or twice", std::to_string(id));
      requireNames(readProperties(reply), names);
      sd_bus_message_exit_container(reply);
    }
    require(known.empty(), "an item is left out of a group");
  }

  /// Requires that the ids that come next in a reply are of no items.
  void requireUnknown(sd_bus_message* reply) const {
    for (const std::int32_t id : readIds(reply)) {
      require(!panel_.knows(id), "an item that is called unknown", std::to_string(id));
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

  static void requireNames(const std::map<std::string, std::string>& properties,
                           const std::set<std::string>& names) {
    for (const auto& [name, value] : properties) {
      require(names.empty() || names.contains(name), "a property not asked for", name);
    }
  }

  static bool isCall(sd_bus_message* call, const char* method, const char* types) {
    return sd_bus_message_is_method_call(call, "com.canonical.dbusmenu", method) > 0 &&
           sd_bus_message_has_signature(call, types) > 0;
  }

  Connection& connection_;
  Application application_;
  MenuServer server_{connection_.item(), application_, [this](const Choice& choice) {
                       chosen_.push_back(tagOf(choice));
                       server_.update(application_.menu());
                     }};
  Panel panel_;
  std::vector<std::int64_t> chosen_;    // by the call
  std::vector<std::int64_t> expected_;  // by what the panel knows
};

}  // namespace

void tryInput(std::string_view input) {
  static Connection connection;
  Session session(connection);
  int left = 60;  // lines; more would tell nothing new
  for (const std::string_view line : parts(input, '\n')) {
    if (--left > 0) session.step(line);
  }
}

}  // namespace lumowatt::fuzz
