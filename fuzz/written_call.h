#pragma once

#include <string_view>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::fuzz {

/// A call of the menu's object as a line, in the manner of busctl: the method, the types, the
/// values; a list has its length first, a variant its type. `GetLayout iias 0 -1 1 label`.
/// What a line does not have is 0 or empty. Null when there can be no such message.
freedesktop::BusMessage callOf(sd_bus* bus, std::string_view line);

}  // namespace lumowatt::fuzz
