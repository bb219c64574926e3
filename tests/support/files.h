#pragma once

#include <filesystem>
#include <string>

namespace lumowatt {

/// The contents of a file; fails the running test when it cannot be read.
std::string fileContents(const std::filesystem::path& path);

/// Returns the folder for temporary files that are to be in memory: the usual one where $TMPDIR
/// names it, or where the system has none in memory.
std::filesystem::path memoryFolder();

/// A folder of the running test's own, removed at its end.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }

  /// Writes a file at a path below the folder, with the folders on the way to it.
  void write(const std::filesystem::path& file, const std::string& contents) const;

 private:
  std::filesystem::path path_;
};

}  // namespace lumowatt
