#include "platform/freedesktop/user/login_item.h"

#include <unistd.h>

#include <array>
#include <cerrno>

#include "platform/freedesktop/user/desktop_entry.h"
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

}  // namespace

LoginItemStatus LoginItem::status() const {
  const FileContents file = readUserFile(entry_);
  if (!file.text) return LoginItemStatus::notRegistered;
  for (const auto& [key, off] : switches) {
    if (entryValue(*file.text, key) == off) return LoginItemStatus::requiresApproval;
  }
  const std::string program = execProgram(entryValue(*file.text, "Exec").value_or(""));
  return findProgram(program).empty() ? LoginItemStatus::notFound : LoginItemStatus::enabled;
}

bool LoginItem::add() const {
  if (findProgram(program_).empty()) return false;
  return replaceUserFile(entry_,
                         "[Desktop Entry]\n"
                         "Type=Application\n"
                         "Name=Lumowatt\n"
                         "Comment=Battery item for the panel\n"
                         "Exec=" +
                             execValue(program_) +
                             "\n"
                             "Terminal=false\n");
}

bool LoginItem::remove() const { return ::unlink(entry_.c_str()) == 0 || errno == ENOENT; }

}  // namespace lumowatt::freedesktop
