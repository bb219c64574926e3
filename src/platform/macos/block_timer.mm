#include "platform/macos/block_timer.h"

#include <utility>

namespace lumowatt::macos {

namespace {

NSTimer* schedule(double interval, std::function<void()> tick) {
  const auto action = std::move(tick);
  const auto fire = ^(NSTimer*) {
    // The tick may end its own timer, and this block.
    const auto running = action;
    // Ticks can be all that happens for days.
    @autoreleasepool {
      running();
    }
  };
  NSTimer* const timer = [NSTimer scheduledTimerWithTimeInterval:interval repeats:YES block:fire];
  timer.tolerance = interval / 10.0;
  return timer;
}

}  // namespace

BlockTimer::BlockTimer(double interval, std::function<void()> tick)
    : timer_(schedule(interval, std::move(tick))) {}

BlockTimer::~BlockTimer() { [timer_ invalidate]; }

}  // namespace lumowatt::macos
