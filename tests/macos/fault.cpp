#include "macos/fault.h"

#include "macos/compiler.h"

namespace lumowatt {

std::ostream& operator<<(std::ostream& stream, const Fault& fault) { return stream << fault.file; }

std::string nameOfFault(const testing::TestParamInfo<Fault>& info) { return info.param.name; }

PlantedFault::PlantedFault(const Fault& fault) : text_(fileContents(macosSources / fault.file)) {
  const std::size_t place = text_.find(fault.correct);
  EXPECT_NE(place, std::string::npos) << "missing: " << fault.correct;
  EXPECT_EQ(text_.find(fault.correct, place + 1), std::string::npos)
      << "occurs twice: " << fault.correct;
  if (place != std::string::npos) text_.replace(place, fault.correct.size(), fault.faulty);
  folder_.write("platform/macos/" + fault.file, text_);
}

}  // namespace lumowatt
