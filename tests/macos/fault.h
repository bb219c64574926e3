#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "support/files.h"

namespace lumowatt {

/// A mistake that somebody might make in one of the Mac's sources.
struct Fault {
  std::string name;
  std::string in;         ///< the file that has it
  std::string right;      ///< what stands there, once
  std::string wrong;      ///< what the mistake makes of it
  std::string seen = {};  ///< what the compiler says of it
  std::string of = in;    ///< the source in which the compiler sees it
};

std::ostream& operator<<(std::ostream& stream, const Fault& fault);

std::string nameOfFault(const testing::TestParamInfo<Fault>& info);

/// The fault's file as it would be with it.
class PlantedFault {
 public:
  explicit PlantedFault(const Fault& fault);

  const std::string& text() const { return text_; }

  /// The folder that has the file, at its path below `src`.
  const std::filesystem::path& folder() const { return folder_.path(); }

 private:
  std::string text_;
  TemporaryFolder folder_;
};

}  // namespace lumowatt
