#pragma once

namespace lumowatt::macos {

/// Subscribes to changes of the power sources. After each change, the `powerSourceAction` of the
/// application's delegate runs on the main queue. Does nothing if the system cannot report changes.
void watchPowerSources();

}  // namespace lumowatt::macos
