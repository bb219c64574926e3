#pragma once

#include <string_view>

/// What Plasma's users set, by the file "kdeglobals" in the folder of the user's configuration.
namespace lumowatt::freedesktop {

/// Whether the duration factor of animations is 0, which is Plasma's "Instant". Reads the file each
/// time; false where there is none, or nothing of the kind in it.
bool plasmaFileHasNoAnimations();

/// Whether a factor as Plasma writes it is 0: "0", "0.0".
bool isZeroFactor(std::string_view factor);

}  // namespace lumowatt::freedesktop
