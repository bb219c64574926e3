#include "render/output_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace lumowatt {

std::optional<std::string> writeFile(const std::string& path, std::string_view contents) {
  std::FILE* const file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return std::strerror(errno);
  const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
  const int writeError = errno;
  const bool closed = std::fclose(file) == 0;  // what was still buffered is written now
  if (written && closed) return std::nullopt;
  return std::strerror(written ? errno : writeError);
}

}  // namespace lumowatt
