#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support/process.h"

namespace lumowatt {

inline const std::filesystem::path macosSources = LUMOWATT_MACOS_SOURCES;

/// Returns the sorted names of the files in `macosSources` that have this extension.
std::vector<std::string> macosFiles(const std::string& extension);

/// Underlying type of `BOOL`: signed char on Macs with an Intel processor, otherwise bool.
enum class ObjcBool { isBool, isChar };

// Each of these functions runs clang on a file in `macosSources`. Clang uses the flags for a Mac
// and the headers in `declarations/`. Files below the folder `overrides` replace the files with the
// same path below `src`.

/// Checks the types. Returns clang's status and diagnostics.
ProcessResult typeCheck(const std::string& file, ObjcBool boolType,
                        const std::filesystem::path& overrides = {});

/// Checks the ownership of objects with clang's analyzer. Returns its status and diagnostics.
ProcessResult ownershipCheck(const std::string& file, const std::filesystem::path& overrides = {});

/// Returns the methods that the file defines, each as "-[Class selector]", in the file's order.
std::vector<std::string> definedMethods(const std::string& file,
                                        const std::filesystem::path& overrides = {});

}  // namespace lumowatt
