#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumowatt::freedesktop {

/// Icons that are made while the program runs: files for the panel, the user's alone, in a folder
/// of the session's runtime folder ($XDG_RUNTIME_DIR, as freedesktop.org has it). What a former run
/// left is removed at the beginning, and all of them at the end.
class IconFolder {
 public:
  /// Whose names begin with `prefix`; what has other names is left alone.
  explicit IconFolder(std::string_view prefix);
  IconFolder(const IconFolder&) = delete;
  IconFolder& operator=(const IconFolder&) = delete;
  ~IconFolder();

  /// What it means when `hold` fails.
  static constexpr auto failure = "its icons cannot be written into the session's runtime folder";

  const std::string& path() const { return path_; }

  /// The path of the icon of that name.
  std::string file(const std::string& name) const { return path_ + "/" + name + ".svg"; }

  using Names = std::vector<std::string>;

  /// Has the folder hold these SVG files and no others. Returns the icons' names, by which panels
  /// know that they are to have the panel's colours; and since panels remember an icon by its name,
  /// no other contents has it. Absent when they cannot be written; then it holds none.
  std::optional<Names> hold(const std::vector<std::string>& svgs);

 private:
  bool write(const std::string& name, std::string_view svg) const;
  void keep(const Names& names);

  std::string path_;
  std::string prefix_;
  Names names_;  ///< of those that it holds
};

}  // namespace lumowatt::freedesktop
