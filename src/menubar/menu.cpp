#include "menubar/menu.h"

namespace lumowatt {

const Choice* choiceOf(const MenuItem& item) {
  return std::visit(
      [](const auto& kind) -> const Choice* {
        if constexpr (requires { kind.choice; }) {
          return &kind.choice;
        } else {
          return nullptr;
        }
      },
      item);
}

}  // namespace lumowatt
