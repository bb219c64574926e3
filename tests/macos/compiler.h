#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/process.h"

namespace lumowatt {

inline const std::filesystem::path macosSources = LUMOWATT_MACOS_SOURCES;

/// The names of the Mac's sources with that extension, sorted.
std::vector<std::string> macosFiles(const std::string& extension);

/// What `BOOL` is: on Macs with an Intel processor a signed char, else a bool.
enum class ObjcBool { isBool, isChar };

/// What clang says of one of those sources, which it only reads, as they are compiled on a Mac but
/// with the declarations of `declarations/` in the place of the system's. A file at the same path
/// below the folder `changed`, if there is one, is read in the place of the project's.
ProcessResult typeCheck(const std::string& file, ObjcBool boolType,
                        const std::filesystem::path& changed = {});

/// What its analyzer says of who owns what.
ProcessResult ownershipCheck(const std::string& file, const std::filesystem::path& changed = {});

/// The methods that the source defines, "-[Class selector]" each, in its order.
std::vector<std::string> definedMethods(const std::string& file,
                                        const std::filesystem::path& changed = {});

}  // namespace lumowatt
