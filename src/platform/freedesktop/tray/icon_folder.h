#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

namespace lumowatt::freedesktop {

/// Icons that are made while the program runs: files for the panel, the user's alone, in a folder
/// of the session's runtime folder ($XDG_RUNTIME_DIR, as freedesktop.org has it). What a former run
/// left is removed at the beginning, and all of them at the end.
class IconFolder {
 public:
  /// The icons' names begin with `prefix` and end with `suffix`. Files whose names begin otherwise
  /// are left alone. Panels recolor icons whose names end with "-symbolic".
  IconFolder(std::string_view prefix, std::string_view suffix);
  IconFolder(const IconFolder&) = delete;
  IconFolder& operator=(const IconFolder&) = delete;
  ~IconFolder();

  const std::string& path() const { return path_; }

  /// The path of the icon of that name.
  std::string file(const std::string& name) const { return path_ + "/" + name + ".svg"; }

  using Names = std::vector<std::string>;

  /// Replaces the icons in the folder by these SVG files. Returns the icons' names. Other contents
  /// has another name, because panels remember an icon by its name. When they cannot be written,
  /// the folder has none afterwards.
  Result<Names> replaceIcons(const std::vector<std::string>& svgs);

 private:
  Result<> write(const std::string& name, std::string_view svg) const;
  void removeAllBut(const Names& names);

  std::string path_;
  std::string prefix_;
  std::string suffix_;
  Names names_;  ///< of those that are in it
};

}  // namespace lumowatt::freedesktop
