#include "machine.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "support.h"

namespace lumowatt::fuzz {

std::vector<Entry> entries(std::string_view input) {
  std::vector<Entry> all;
  std::set<std::string> paths;
  const auto add = [&](const Entry& entry) {
    if (paths.insert(entry.path).second) all.push_back(entry);
  };
  for (const std::string_view line : parts(input, '\n')) {
    const std::size_t sign = line.find('=');
    const auto [device, attribute] = split(line.substr(0, sign), '/');
    if (!isFileName(device)) continue;
    std::string path = device.starts_with("hwmon") ? "hwmon/" : "supplies/";
    path += device;
    add({path, std::nullopt});
    if (!isFileName(attribute)) continue;
    path.append("/").append(attribute);
    const bool isFile = sign != std::string_view::npos;
    add({path, isFile ? std::optional(unescaped(line.substr(sign + 1))) : std::nullopt});
  }
  return all;
}

Machine::Machine(const std::string& folder, const std::vector<Entry>& entries) {
  made_.reserve(entries.size());
  for (const auto& [relative, value] : entries) {
    std::string path = folder;
    path.append("/").append(relative);
    made_.push_back(path);
    if (!value) {
      require(::mkdir(path.c_str(), 0700) == 0, "no folder can be made", path);
      continue;
    }
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    const ssize_t written = ::write(file, value->data(), value->size());
    require(written == static_cast<ssize_t>(value->size()), "no file can be made", path);
    ::close(file);
  }
}

Machine::~Machine() {
  std::ranges::reverse(made_);  // what is in a folder goes before the folder
  for (const std::string& path : made_) std::remove(path.c_str());
}

}  // namespace lumowatt::fuzz
