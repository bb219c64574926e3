#include "platform/linux/module.h"

#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdio>
#include <string>

namespace lumowatt {

namespace {

/// The folder of the executable, with a slash at its end; empty when it is not known.
std::string executableFolder() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  if (length <= 0) return "";
  const std::string executable(path.data(), static_cast<std::size_t>(length));
  return executable.substr(0, executable.rfind('/') + 1);
}

/// Where a module is: beside the executable in a build, else where an installation has it.
std::string modulePath(const std::string& folder, const std::string& module) {
  const std::string beside = folder + module;
  return ::access(beside.c_str(), F_OK) == 0 ? beside : folder + "../lib/lumowatt/" + module;
}

}  // namespace

void* loadModule(const char* module, const char* symbol) {
  const std::string folder = executableFolder();
  if (folder.empty()) {  // the working directory would be nowhere to look
    std::fprintf(stderr, "lumowatt: cannot tell where %s is without /proc\n", module);
    return nullptr;
  }
  void* const library = ::dlopen(modulePath(folder, module).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const found = library != nullptr ? ::dlsym(library, symbol) : nullptr;
  if (found == nullptr) std::fprintf(stderr, "lumowatt: %s\n", ::dlerror());
  return found;
}

}  // namespace lumowatt
