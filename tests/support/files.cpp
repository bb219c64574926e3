#include "support/files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace lumowatt {

std::string fileContents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.good()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::filesystem::path memoryFolder() {
  const bool isAvailable = std::getenv("TMPDIR") == nullptr && ::access("/dev/shm", W_OK) == 0;
  return isAvailable ? "/dev/shm" : std::filesystem::temp_directory_path();
}

TemporaryFolder::TemporaryFolder(const std::filesystem::path& parent) {
  std::string name = (parent / "lumowatt-test-XXXXXX").string();
  EXPECT_NE(::mkdtemp(name.data()), nullptr);
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::write(const std::filesystem::path& file, const std::string& contents) const {
  const std::filesystem::path target = path_ / file;
  std::filesystem::create_directories(target.parent_path());
  std::ofstream stream(target, std::ios::binary);
  stream << contents;
  stream.close();
  EXPECT_TRUE(stream.good()) << target;
}

}  // namespace lumowatt
