#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumowatt {

/// The fixtures are machines: those of a folder ("linux", "registry"), by name, sorted.
std::vector<std::string> fixtureNames(const std::string& folder);

std::filesystem::path fixturePath(const std::string& folder, const std::string& name);

/// A fixture's name as the name of a parameterised test.
std::string testName(const std::string& fixtureName);

}  // namespace lumowatt
