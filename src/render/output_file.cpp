#include "render/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace lumowatt {

namespace {

using Error = std::optional<std::string>;

Error write(std::FILE* file, std::string_view contents) {
  const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size() &&
                       std::fflush(file) == 0;
  return written ? Error() : std::strerror(errno);
}

}  // namespace

Error writeFile(const std::string& path, std::string_view contents) {
  // Opened by its name, a file that it leads to would be emptied.
  if (path == "/dev/stdout") return write(stdout, contents);

  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return std::strerror(errno);
  const Error error = write(file, contents);
  const bool closed = std::fclose(file) == 0;
  return error || closed ? error : std::strerror(errno);
}

}  // namespace lumowatt
