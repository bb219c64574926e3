#include "base/output_file.h"

#include <cerrno>
#include <cstdio>

namespace lumowatt {

namespace {

Result<> write(std::FILE* file, std::string_view contents) {
  const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size() &&
                       std::fflush(file) == 0;
  return written ? Result<>() : systemFailure(errno);
}

}  // namespace

Result<> writeToStandardOutput(std::string_view text) { return write(stdout, text); }

Result<> writeFile(const std::string& path, std::string_view contents) {
  // Opened by its name, a file that it leads to would be emptied.
  if (path == "/dev/stdout") return writeToStandardOutput(contents);

  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return systemFailure(errno);
  const Result<> written = write(file, contents);
  const bool closed = std::fclose(file) == 0;
  return !written || closed ? written : systemFailure(errno);
}

}  // namespace lumowatt
