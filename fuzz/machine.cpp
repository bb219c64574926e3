#include "machine.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "support.h"

namespace lumowatt::fuzz {

std::vector<Entry> parseEntries(std::string_view input) {
  std::vector<Entry> all;
  std::set<std::string> paths;
  const auto add = [&](const Entry& entry) {
    if (paths.insert(entry.path).second) all.push_back(entry);
  };
  for (const std::string_view line : parts(input, '\n')) {
    const std::size_t equals = line.find('=');
    const auto [device, attribute] = split(line.substr(0, equals), '/');
    if (!isFileName(device)) continue;
    std::string path = device.starts_with("hwmon") ? "hwmon/" : "supplies/";
    path += device;
    add({path, std::nullopt});
    if (!isFileName(attribute)) continue;
    path.append("/").append(attribute);
    const bool isFile = equals != std::string_view::npos;
    add({path, isFile ? std::optional(unescaped(line.substr(equals + 1))) : std::nullopt});
  }
  return all;
}

Machine::Machine(const std::string& folder, const std::vector<Entry>& entries) {
  createdPaths_.reserve(entries.size());
  for (const auto& [relative, value] : entries) {
    std::string path = folder;
    path.append("/").append(relative);
    createdPaths_.push_back(path);
    if (!value) {
      require(::mkdir(path.c_str(), 0700) == 0, "cannot create a folder", path);
      continue;
    }
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    const ssize_t written = ::write(file, value->data(), value->size());
    require(written == static_cast<ssize_t>(value->size()), "cannot create a file", path);
    ::close(file);
  }
}

Machine::~Machine() {
  std::ranges::reverse(createdPaths_);  // remove the contents before the folder
  for (const std::string& path : createdPaths_) std::remove(path.c_str());
}

}  // namespace lumowatt::fuzz
