#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumowatt {

/// Returns the sorted names of the fixtures in a folder, such as "linux" or "registry".
std::vector<std::string> fixtureNames(const std::string& folder);

/// Returns the path of the fixture `name` in `folder`.
std::filesystem::path fixturePath(const std::string& folder, const std::string& name);

/// Converts a fixture's name to a valid name of a parameterized test.
std::string testName(const std::string& fixtureName);

}  // namespace lumowatt
