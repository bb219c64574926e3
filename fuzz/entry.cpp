#include <cstddef>
#include <cstdint>

#include "support.h"

// What libFuzzer calls, by the name that it has for it.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lumowatt::fuzz::tryInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
