#pragma once

namespace lumowatt::macos {

/// From now on, each change of a power source makes the application's delegate do its
/// `powerSourceAction`, in a task of the main queue. Nothing happens where the system reports no
/// changes.
void watchPowerSources();

}  // namespace lumowatt::macos
