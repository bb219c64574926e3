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

/// Key and value that a desktop writes to an entry when the user disables the entry.
struct Switch {
  std::string_view key;
  std::string_view off;
};

constexpr std::array<Switch, 3> switches{{{"Hidden", "true"},
                                          {"X-GNOME-Autostart-enabled", "false"},
                                          {"X-MATE-Autostart-enabled", "false"}}};

bool isDisabled(std::string_view entry) {
  return std::ranges::any_of(
      switches, [&](const Switch& each) { return entryValue(entry, each.key) == each.off; });
}

/// Returns whether a list contains a name. Semicolons separate or terminate the names of the list.
bool hasName(const std::optional<std::string>& list, const std::string& name) {
  return list && (";" + *list + ";").find(";" + name + ";") != std::string::npos;
}

/// Returns whether the entry is for the running desktop. If
/// XDG_CURRENT_DESKTOP contains several names, the first name in OnlyShowIn or NotShowIn decides.
/// Returns true if XDG_CURRENT_DESKTOP is empty.
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

/// Returns whether the programs of both keys are installed: "Exec" is the program that the session
/// starts, and "TryExec" a program without which the session ignores the entry.
bool hasPrograms(std::string_view entry) {
  const std::string needed = entryValue(entry, "TryExec").value_or("");
  return !findProgram(execProgram(entryValue(entry, "Exec").value_or(""))).empty() &&
         (needed.empty() || !findProgram(needed).empty());
}

}  // namespace

LoginItemStatus LoginItem::status() const {
  const FileContents file = readUserFile(entry_);
  if (!file.text) return LoginItemStatus::notRegistered;
  const bool isRefused = isDisabled(*file.text) || !isForThisDesktop(*file.text);
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
