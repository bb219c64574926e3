#pragma once

/// Ids of the menu's items on the bus, for a report of at least six lines.
namespace lumowatt::menu_id {

inline constexpr int root = 0;

inline constexpr int statusLine = 1;
inline constexpr int powerLine = 4;

inline constexpr int firstSeparator = 100;
inline constexpr int chartHeader = 101;
inline constexpr int chart = 102;

inline constexpr int secondSeparator = 200;
inline constexpr int modes = 201;
inline constexpr int colors = 202;
inline constexpr int animation = 203;
inline constexpr int copyDetails = 204;
inline constexpr int openAtLogin = 205;
inline constexpr int settings = 206;

inline constexpr int thirdSeparator = 300;
inline constexpr int about = 301;
inline constexpr int quit = 302;

inline constexpr int percent = 30101;
inline constexpr int percentPower = 30102;
inline constexpr int percentTime = 30103;
inline constexpr int allFigures = 30104;

/// Ids in the compact menu that differ from those in the full menu.
namespace compact {

inline constexpr int report = 1;
inline constexpr int chart = 101;
inline constexpr int more = 202;
inline constexpr int colors = 30201;
inline constexpr int quit = 301;

}  // namespace compact

}  // namespace lumowatt::menu_id
