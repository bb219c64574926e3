#pragma once

#include <array>
#include <string_view>

/// Names of the symbols. macOS provides symbols with these names. On other platforms, Lumowatt
/// draws its own artwork for each name.
namespace lumowatt::symbol {

inline constexpr std::string_view battery0 = "battery.0percent";
inline constexpr std::string_view battery25 = "battery.25percent";
inline constexpr std::string_view battery50 = "battery.50percent";
inline constexpr std::string_view battery75 = "battery.75percent";
inline constexpr std::string_view battery100 = "battery.100percent";
inline constexpr std::string_view battery100Bolt = "battery.100percent.bolt";

inline constexpr std::array all{battery0,  battery25,  battery50,
                                battery75, battery100, battery100Bolt};

}  // namespace lumowatt::symbol
