#pragma once

#include <filesystem>
#include <string>

namespace lumowatt {

/// Returns the contents of a file. Fails the running test if the file cannot be read.
std::string fileContents(const std::filesystem::path& path);

/// Returns /dev/shm, the folder for temporary files in memory. Returns the folder of
/// `temp_directory_path` instead if $TMPDIR is set or /dev/shm is not writable.
std::filesystem::path memoryFolder();

/// A temporary folder with a unique name, removed on destruction.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }

  /// Writes a file to a path relative to the folder, and creates missing parent folders.
  void write(const std::filesystem::path& file, const std::string& contents) const;

 private:
  std::filesystem::path path_;
};

}  // namespace lumowatt
