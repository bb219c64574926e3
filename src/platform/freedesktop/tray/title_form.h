#pragma once

#include <string_view>

namespace lumowatt::freedesktop {

/// How a panel shows the title of an item.
enum class TitleForm {
  label,  ///< as text beside the icon
  tiles,  ///< not at all: the item has more icons there, which are text
  wide,   ///< in the icon, which may be wider than it is high
};

/// The form of the title for the panel whose tray is a process of that name, as the kernel has it
/// in /proc/PID/comm. A panel that is not known has labels.
TitleForm titleForm(std::string_view process);

}  // namespace lumowatt::freedesktop
