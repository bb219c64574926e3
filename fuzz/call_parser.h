#pragma once

#include <string_view>

#include "platform/freedesktop/bus/sd.h"

namespace lumowatt::fuzz {

/// Parses a call of a method of the menu object from a line in the format of busctl: the method,
/// the signature and the values. An array starts with its length, a variant with its type. Example:
/// `GetLayout iias 0 -1 1 label`. Missing values are 0 or empty. Returns null if the line is not a
/// valid message.
freedesktop::BusMessage parseCall(sd_bus* bus, std::string_view line);

}  // namespace lumowatt::fuzz
