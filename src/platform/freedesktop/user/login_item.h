#pragma once

#include <string>

#include "menubar/desktop.h"

namespace lumowatt::freedesktop {

/// The program among those that the desktop starts at login: a desktop entry in the
/// user's autostart folder (freedesktop.org).
class LoginItem {
 public:
  /// `entry` is the path of the desktop entry, `program` that of the executable.
  LoginItem(std::string entry, std::string program)
      : entry_(std::move(entry)), program_(std::move(program)) {}

  /// An entry that is hidden, switched off or for other desktops requires approval: the user has
  /// said no to it. One whose program cannot be found counts as not found.
  LoginItemStatus status() const;

  /// Puts the entry there, in the place of one that was. False when that fails.
  bool add() const;

  /// Takes it away. False when that fails; one that is not there is away.
  bool remove() const;

 private:
  std::string entry_;
  std::string program_;
};

}  // namespace lumowatt::freedesktop
