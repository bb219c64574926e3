#include <cstddef>
#include <cstdint>

#include "support.h"

// Entry point of a fuzz target. libFuzzer specifies the name.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lumowatt::fuzz::tryInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
