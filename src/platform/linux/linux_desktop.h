#pragma once

#include <optional>

#include "platform/freedesktop/session_desktop.h"
#include "platform/linux/power_monitor.h"

namespace lumowatt {

/// A session's desktop whose kernel tells of power supplies.
class LinuxDesktop : public freedesktop::SessionDesktop {
 public:
  using SessionDesktop::SessionDesktop;

  void watchPowerSources(std::function<void()> changed) override;

 private:
  std::optional<PowerMonitor> power_;
};

}  // namespace lumowatt
