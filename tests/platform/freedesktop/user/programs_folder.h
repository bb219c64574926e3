#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

/// Fixture whose $PATH is a temporary folder, which contains only the files that a test adds.
class ProgramsFolder : public testing::Test {
 protected:
  /// Adds a program to the folder: a shell script.
  void addProgram(const std::string& name, const std::string& script = "") const {
    folder.write("bin/" + name, "#!/bin/sh\n" + script);
    std::filesystem::permissions(folder.path() / "bin" / name, std::filesystem::perms(0755));
  }

  std::string pathOf(const std::string& name) const { return folder.path() / "bin" / name; }

  TemporaryFolder folder;
  ScopedVariable path{"PATH", (folder.path() / "bin").string()};
};

}  // namespace lumowatt::freedesktop
