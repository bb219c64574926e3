#include "platform/freedesktop/user/environment.h"

#include <algorithm>
#include <cstdlib>

namespace lumowatt::freedesktop {

namespace {

/// Returns the value of a variable; empty if the value is not an absolute path.
std::string pathVariable(const char* name) {
  std::string path = environmentVariable(name);
  return path.starts_with('/') ? path : "";
}

}  // namespace

std::string environmentVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::vector<std::string> currentDesktops() {
  std::vector<std::string> names;
  const std::string list = environmentVariable("XDG_CURRENT_DESKTOP") + ":";
  std::size_t start = 0;
  for (std::size_t end = 0; (end = list.find(':', start)) != std::string::npos; start = end + 1) {
    if (end > start) names.push_back(list.substr(start, end - start));
  }
  return names;
}

bool isCurrentDesktop(const std::string& name) {
  const std::vector<std::string> names = currentDesktops();
  return std::ranges::find(names, name) != names.end();
}

std::string configurationFolder() {
  std::string configuration = pathVariable("XDG_CONFIG_HOME");
  if (!configuration.empty()) return configuration;
  const std::string home = pathVariable("HOME");
  return home.empty() ? "" : home + "/.config";
}

std::string configurationFile(std::string_view name) {
  std::string path = configurationFolder();
  if (!path.empty()) path.append("/").append(name);
  return path;
}

std::string runtimeFolder() { return pathVariable("XDG_RUNTIME_DIR"); }

}  // namespace lumowatt::freedesktop
