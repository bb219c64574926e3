#include "platform/linux/linux_desktop.h"

#include <utility>

namespace lumowatt {

bool LinuxDesktop::watchPowerSources(std::function<void()> changed) {
  power_.emplace(loop(), followed(std::move(changed)));
  return power_->isWatching();
}

}  // namespace lumowatt
