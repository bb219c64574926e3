#include "macos/fault.h"

#include "macos/compiler.h"

namespace lumowatt {

std::ostream& operator<<(std::ostream& stream, const Fault& fault) { return stream << fault.in; }

std::string nameOfFault(const testing::TestParamInfo<Fault>& info) { return info.param.name; }

PlantedFault::PlantedFault(const Fault& fault) : text_(fileContents(macosSources / fault.in)) {
  const std::size_t place = text_.find(fault.right);
  EXPECT_NE(place, std::string::npos) << "there is no longer: " << fault.right;
  EXPECT_EQ(text_.find(fault.right, place + 1), std::string::npos) << "twice: " << fault.right;
  if (place != std::string::npos) text_.replace(place, fault.right.size(), fault.wrong);
  folder_.write("platform/macos/" + fault.in, text_);
}

}  // namespace lumowatt
