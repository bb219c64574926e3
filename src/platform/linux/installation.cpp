#include "platform/linux/installation.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstring>
#include <string_view>

namespace lumowatt {

namespace {

bool isThere(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

/// The path of a part that is called `built` beside the executable of a build, and that an
/// installation has at `installed`, relative to the executable's folder. Empty when the
/// executable's path is not known: the working directory would be nowhere to look.
std::string partPath(std::string_view built, std::string_view installed) {
  const std::string executable = executablePath();
  if (executable.empty()) return "";
  const std::string folder = executable.substr(0, executable.rfind('/') + 1);
  std::string beside = folder + std::string(built);
  // Seen from any other folder, what the layout names may be anybody's.
  if (!folder.ends_with("/" LUMOWATT_EXECUTABLE_FOLDER "/")) return beside;
  std::string path = folder + std::string(installed);
  return isThere(path) || !isThere(beside) ? path : beside;
}

}  // namespace

std::string executablePath() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : "";
}

std::string iconFolder() { return partPath("icons", LUMOWATT_ICONS); }

Result<void*> loadModule(const std::string& module, const char* symbol) {
  const std::string path = partPath(module, LUMOWATT_MODULES "/" + module);
  if (path.empty()) return Failure{"cannot locate " + module + " without /proc"};
  // With a slash in its path, the linker looks nowhere else.
  void* const library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  const void* const version = library != nullptr ? ::dlsym(library, "lumowattVersion") : nullptr;
  if (version != nullptr && std::strcmp(static_cast<const char*>(version), LUMOWATT_VERSION) != 0) {
    return Failure{path + " has another version than this process"};
  }
  void* const found = version != nullptr ? ::dlsym(library, symbol) : nullptr;
  if (found == nullptr) {
    const char* const reason = ::dlerror();
    return Failure{reason != nullptr ? reason : path + " does not export " + symbol};
  }
  return found;
}

}  // namespace lumowatt
