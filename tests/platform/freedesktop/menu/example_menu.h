#pragma once

#include "menubar/menu.h"

namespace lumowatt::freedesktop {

/// Menu with an item of each kind.
inline const Menu exampleMenu{
    MenuLine{"64%, discharging"},
    MenuLine{"Cycle count: 12"},
    MenuSeparator{},
    MenuLine{"Charge over the last hour"},
    MenuChart{
        .view = {}, .text = "▁▂▃ 60–64%", .description = "", .isEnabled = true, .picture = {}},
    MenuSeparator{},
    Submenu{"Menu bar shows",
            {MenuRadioMark{"Percent", {Action::pick, 0}, false},
             MenuRadioMark{"Percent and battery power", {Action::pick, 1}, true}}},
    MenuCheckMark{"Colors", {Action::toggleColor}, true},
    MenuCheckMark{"Charging animation", {Action::toggleAnimate}, false},
    MenuCommand{"Copy details", {Action::copyDetails}, "c"},
    MenuSeparator{},
    MenuLine{"Lumowatt 1.0, by Fernhollow"},
    MenuCommand{"Quit Lumowatt", {Action::terminate}, "q"}};

}  // namespace lumowatt::freedesktop
