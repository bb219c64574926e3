#include "base/output_file.h"

#include <cerrno>
#include <cstdio>

namespace lumowatt {

namespace {

/// Writes `contents` to `file`, whose buffer may retain the last bytes until a flush or `fclose`.
bool writeToStream(std::FILE* file, std::string_view contents) {
  return std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
}

}  // namespace

Result<> writeToStandardOutput(std::string_view text) {
  const bool written = writeToStream(stdout, text) && std::fflush(stdout) == 0;
  return written ? Result<>() : systemFailure(errno);
}

Result<> writeFile(const std::string& path, std::string_view contents) {
  // Opening "/dev/stdout" would truncate a file to which the standard output is redirected.
  if (path == "/dev/stdout") return writeToStandardOutput(contents);

  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return systemFailure(errno);
  Result<> written = writeToStream(file, contents) ? Result<>() : systemFailure(errno);
  if (std::fclose(file) != 0) return systemFailure(errno);
  return written;
}

}  // namespace lumowatt
