#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/environment.h"
#include "support/files.h"

namespace lumowatt::freedesktop {

/// A $PATH with nothing but what a test puts there.
class ProgramsFolder : public testing::Test {
 protected:
  /// Puts a shell script there.
  void addProgram(const std::string& name, const std::string& script = "") const {
    folder.write("bin/" + name, "#!/bin/sh\n" + script);
    std::filesystem::permissions(folder.path() / "bin" / name, std::filesystem::perms(0755));
  }

  std::string place(const std::string& name) const { return folder.path() / "bin" / name; }

  TemporaryFolder folder;
  ScopedVariable path{"PATH", (folder.path() / "bin").string()};
};

}  // namespace lumowatt::freedesktop
