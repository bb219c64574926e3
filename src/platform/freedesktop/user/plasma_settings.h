#pragma once

#include <string_view>

/// Settings of Plasma, from the file "kdeglobals" in the user's configuration folder.
namespace lumowatt::freedesktop {

/// Returns whether the duration factor of animations is 0, which Plasma's settings call "Instant".
/// Returns false if the file or the factor is missing. Reads the file on every call.
bool plasmaFileHasNoAnimations();

/// Returns whether a factor in Plasma's format is 0, such as "0" or "0.0".
bool isZeroFactor(std::string_view factor);

}  // namespace lumowatt::freedesktop
