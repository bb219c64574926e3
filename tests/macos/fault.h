#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "support/files.h"

namespace lumowatt {

/// Mistake that a developer might make in one of the macOS sources.
struct Fault {
  std::string name;
  std::string file;             ///< file that contains the mistake
  std::string correct;          ///< correct text, which occurs once in the file
  std::string faulty;           ///< replacement that contains the mistake
  std::string diagnostic = {};  ///< expected part of the compiler's diagnostics
  std::string source = file;    ///< source whose compilation reports the mistake
};

std::ostream& operator<<(std::ostream& stream, const Fault& fault);

std::string nameOfFault(const testing::TestParamInfo<Fault>& info);

/// Copy of the fault's file that contains the mistake.
class PlantedFault {
 public:
  explicit PlantedFault(const Fault& fault);

  const std::string& text() const { return text_; }

  /// Returns a folder that contains the copy, at the file's path below `src`.
  const std::filesystem::path& folder() const { return folder_.path(); }

 private:
  std::string text_;
  TemporaryFolder folder_;
};

}  // namespace lumowatt
