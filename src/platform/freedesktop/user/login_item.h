#pragma once

#include <string>

#include "menubar/desktop.h"

namespace lumowatt::freedesktop {

/// Desktop entry that starts this program at login, in the user's autostart folder
/// (freedesktop.org).
class LoginItem {
 public:
  /// `entry` is the path of the desktop entry, `program` that of the executable.
  LoginItem(std::string entry, std::string program)
      : entry_(std::move(entry)), program_(std::move(program)) {}

  /// Returns the status of the entry. The status is `requiresApproval` if the entry is hidden,
  /// disabled or restricted to other desktops, because the user may have edited it. The status is
  /// `notFound` if the entry's program cannot be found.
  LoginItemStatus status() const;

  /// Writes the entry, and replaces an existing entry. Returns false on failure.
  bool add() const;

  /// Removes the entry. Returns false on failure; a missing entry is not a failure.
  bool remove() const;

 private:
  std::string entry_;
  std::string program_;
};

}  // namespace lumowatt::freedesktop
