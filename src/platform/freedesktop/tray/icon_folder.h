#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

namespace lumowatt::freedesktop {

/// Folder of the icons that the program generates for the panel, in the session's runtime folder
/// ($XDG_RUNTIME_DIR, XDG Base Directory). Only the user can access the files.
/// Construction removes the icons of previous runs. Destruction removes all icons, and the folder
/// if empty.
class IconFolder {
 public:
  /// The names of the icons begin with `prefix` and end with `suffix`. Files without the prefix are
  /// not changed. Panels recolor icons whose names end with "-symbolic".
  IconFolder(std::string_view prefix, std::string_view suffix);
  IconFolder(const IconFolder&) = delete;
  IconFolder& operator=(const IconFolder&) = delete;
  ~IconFolder();

  const std::string& path() const { return path_; }

  /// Returns the path of the icon `name`.
  std::string file(const std::string& name) const { return path_ + "/" + name + ".svg"; }

  using Names = std::vector<std::string>;

  /// Replaces the icons in the folder with one icon for each of `svgs`, the contents of SVG files.
  /// Returns the names of the icons in the order of `svgs`. Each name contains a hash of the
  /// contents, because panels cache icons by name. If an icon cannot be written, removes all icons
  /// and returns the failure.
  Result<Names> replaceIcons(const std::vector<std::string>& svgs);

 private:
  Result<> write(const std::string& name, std::string_view svg) const;
  void removeAllExcept(const Names& names);

  std::string path_;
  std::string prefix_;
  std::string suffix_;
  Names names_;  ///< of the icons in the folder
};

}  // namespace lumowatt::freedesktop
