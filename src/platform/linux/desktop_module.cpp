#include "platform/linux/desktop_module.h"

#include <optional>
#include <utility>

#include "base/out_of_memory.h"
#include "platform/freedesktop/session_desktop.h"
#include "platform/linux/power_monitor.h"

namespace lumowatt {

namespace {

/// Desktop of a session on Linux, whose kernel reports changes of power supplies.
class LinuxDesktop : public freedesktop::SessionDesktop {
 public:
  using SessionDesktop::SessionDesktop;

  void watchPowerSources(std::function<void()> onChanged) override {
    power_.emplace(loop(), withMenuUpdate(std::move(onChanged)));
  }

 private:
  std::optional<PowerMonitor> power_;
};

}  // namespace

}  // namespace lumowatt

lumowatt::Desktop* lumowattDesktop(const char* program, const char* icons,
                                   lumowatt::BitmapFactory* bitmaps) {
  lumowatt::exitWhenOutOfMemory();
  return new lumowatt::LinuxDesktop(program, icons,
                                    std::unique_ptr<lumowatt::BitmapFactory>(bitmaps));
}
