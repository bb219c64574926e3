#include "platform/linux/linux_desktop.h"

#include <utility>

namespace lumowatt {

void LinuxDesktop::watchPowerSources(std::function<void()> changed) {
  power_.emplace(loop(), followed(std::move(changed)));
}

}  // namespace lumowatt
