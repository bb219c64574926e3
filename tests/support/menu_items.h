#pragma once

#include <string>

#include "menubar/menu.h"

namespace lumowatt {

/// The title of an item; empty for one that has none.
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

/// Whether an item has a mark, and that is on.
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
