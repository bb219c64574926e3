#include "cli/standard_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace lumowatt {

bool writeToStandardOutput(std::string_view text) {
  const bool written =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!written) {
    std::fprintf(stderr, "lumowatt: cannot write to the standard output: %s\n",
                 std::strerror(errno));
  }
  return written;
}

}  // namespace lumowatt
