#pragma once

#include <string>

#include "menubar/menu.h"

namespace lumowatt {

/// Returns the title of an item, or an empty string if it has no title.
inline std::string titleOf(const MenuItem& item) {
  return std::visit(
      [](const auto& kind) -> std::string {
        if constexpr (requires { kind.title; }) {
          return kind.title;
        } else {
          return "";
        }
      },
      item);
}

/// Returns whether an item has a check mark that is on.
inline bool isOn(const MenuItem& item) {
  return std::visit(
      [](const auto& kind) {
        if constexpr (requires { kind.isOn; }) {
          return kind.isOn;
        } else {
          return false;
        }
      },
      item);
}

}  // namespace lumowatt
