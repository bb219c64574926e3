#include "support/fixtures.h"

#include <algorithm>
#include <cctype>

namespace lumowatt {

std::vector<std::string> fixtureNames(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(fixturePath(folder, ""))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::filesystem::path fixturePath(const std::string& folder, const std::string& name) {
  return std::filesystem::path(LUMOWATT_FIXTURES) / folder / name;
}

std::string testName(const std::string& fixtureName) {
  std::string name = fixtureName.substr(0, fixtureName.find(".json"));
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

}  // namespace lumowatt
