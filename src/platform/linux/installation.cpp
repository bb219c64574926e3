#include "platform/linux/installation.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstring>
#include <string_view>

namespace lumowatt {

namespace {

bool fileExists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

/// Returns the path of a module or folder of the program. In a build, it is in the executable's
/// folder under the name `nameInBuild`. In an installation, `installedPath` is its path relative to
/// the executable's folder. Returns an empty string if the path of the executable is unknown,
/// because the result would be relative to the working directory.
std::string partPath(std::string_view nameInBuild, std::string_view installedPath) {
  const std::string executable = executablePath();
  if (executable.empty()) return "";
  const std::string folder = executable.substr(0, executable.rfind('/') + 1);
  std::string buildPath = folder + std::string(nameInBuild);
  // Relative to any other folder, `installedPath` may lead to untrusted files.
  if (!folder.ends_with("/" LUMOWATT_EXECUTABLE_FOLDER "/")) return buildPath;
  std::string path = folder + std::string(installedPath);
  return fileExists(path) || !fileExists(buildPath) ? path : buildPath;
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
  // The path contains a slash. Therefore dlopen does not search the library folders.
  void* const library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  const void* const version = library != nullptr ? ::dlsym(library, "lumowattVersion") : nullptr;
  if (version != nullptr && std::strcmp(static_cast<const char*>(version), LUMOWATT_VERSION) != 0) {
    return Failure{path + " has another version than this process"};
  }
  void* const address = version != nullptr ? ::dlsym(library, symbol) : nullptr;
  if (address == nullptr) {
    const char* const reason = ::dlerror();
    return Failure{reason != nullptr ? reason : path + " does not export " + symbol};
  }
  return address;
}

}  // namespace lumowatt
