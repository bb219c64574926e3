#include "platform/freedesktop/user/plasma_settings.h"

#include <string>

#include "platform/freedesktop/user/desktop_entry.h"
#include "platform/freedesktop/user/environment.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

bool plasmaFileHasNoAnimations() {
  const auto settings = readUserFile(configurationFile("kdeglobals")).text;
  const auto factor =
      settings ? entryValue(*settings, "AnimationDurationFactor", "KDE") : std::nullopt;
  return factor && isZeroFactor(*factor);
}

bool isZeroFactor(std::string_view factor) {
  return factor.find('0') != std::string_view::npos &&
         factor.find_first_not_of("0.") == std::string_view::npos;
}

}  // namespace lumowatt::freedesktop
