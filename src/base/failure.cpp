#include "base/failure.h"

#include <cstring>

namespace lumowatt {

Failure systemFailure(int error) { return {std::strerror(error)}; }

}  // namespace lumowatt
