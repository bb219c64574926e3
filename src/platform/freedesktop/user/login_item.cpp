#include "platform/freedesktop/user/login_item.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/freedesktop/user/desktop_entry.h"
#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/programs.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// What desktops write into an entry that the user switches off.
struct Switch {
  std::string_view key;
  std::string_view off;
};

constexpr std::array<Switch, 3> switches{{{"Hidden", "true"},
                                          {"X-GNOME-Autostart-enabled", "false"},
                                          {"X-MATE-Autostart-enabled", "false"}}};

bool isSwitchedOff(std::string_view entry) {
  return std::ranges::any_of(
      switches, [&](const Switch& each) { return entryValue(entry, each.key) == each.off; });
}

/// Whether a list that ends or separates its names by semicolons has this one.
bool hasName(const std::optional<std::string>& list, const std::string& name) {
  return list && (";" + *list + ";").find(";" + name + ";") != std::string::npos;
}

/// Whether the entry is for the running desktop, which may have several names: the first one that
/// is in either list decides. True where the desktop has none.
bool isForThisDesktop(std::string_view entry) {
  const auto onlyShownIn = entryValue(entry, "OnlyShowIn");
  const auto notShownIn = entryValue(entry, "NotShowIn");
  const std::vector<std::string> names = currentDesktops();
  for (const std::string& name : names) {
    if (hasName(onlyShownIn, name)) return true;
    if (hasName(notShownIn, name)) return false;
  }
  return !onlyShownIn || names.empty();
}

/// Whether the program is there, and the one without which a session ignores the entry.
bool hasPrograms(std::string_view entry) {
  const std::string needed = entryValue(entry, "TryExec").value_or("");
  return !findProgram(execProgram(entryValue(entry, "Exec").value_or(""))).empty() &&
         (needed.empty() || !findProgram(needed).empty());
}

}  // namespace

LoginItemStatus LoginItem::status() const {
  const FileContents file = readUserFile(entry_);
  if (!file.text) return LoginItemStatus::notRegistered;
  const bool isRefused = isSwitchedOff(*file.text) || !isForThisDesktop(*file.text);
  if (isRefused) return LoginItemStatus::requiresApproval;
  return hasPrograms(*file.text) ? LoginItemStatus::enabled : LoginItemStatus::notFound;
}

bool LoginItem::add() const {
  if (findProgram(program_).empty()) return false;
  const std::string entry =
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Lumowatt\n"
      "Comment=Battery item for the panel\n"
      "TryExec=" +
      textValue(program_) +
      "\n"
      "Exec=" +
      execValue(program_) +
      "\n"
      "Terminal=false\n";
  return static_cast<bool>(replaceUserFile(entry_, entry));
}

bool LoginItem::remove() const { return ::unlink(entry_.c_str()) == 0 || errno == ENOENT; }

}  // namespace lumowatt::freedesktop
