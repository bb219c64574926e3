#include "base/output_file.h"

#include <cerrno>
#include <cstdio>

namespace lumowatt {

namespace {

/// Hands `contents` to `file`, which may keep the end of them until it is flushed or closed.
bool put(std::FILE* file, std::string_view contents) {
  return std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
}

}  // namespace

Result<> writeToStandardOutput(std::string_view text) {
  const bool written = put(stdout, text) && std::fflush(stdout) == 0;
  return written ? Result<>() : systemFailure(errno);
}

Result<> writeFile(const std::string& path, std::string_view contents) {
  // Opened by its name, a file that it leads to would be emptied.
  if (path == "/dev/stdout") return writeToStandardOutput(contents);

  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return systemFailure(errno);
  Result<> written = put(file, contents) ? Result<>() : systemFailure(errno);
  if (std::fclose(file) != 0) return systemFailure(errno);
  return written;
}

}  // namespace lumowatt
