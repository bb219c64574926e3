#include "platform/macos/block_timer.h"

#include <utility>

namespace lumowatt::macos {

namespace {

NSTimer* schedule(double interval, std::function<void()> tick) {
  const auto callback = std::move(tick);
  const auto block = ^(NSTimer*) {
    // The callback is copied because it may destroy its timer, and with the timer this block.
    const auto copy = callback;
    // AppKit drains its own pool only when it handles an event, and there may be none for days.
    @autoreleasepool {
      copy();
    }
  };
  NSTimer* const timer = [NSTimer scheduledTimerWithTimeInterval:interval repeats:YES block:block];
  timer.tolerance = interval / 10.0;
  return timer;
}

}  // namespace

BlockTimer::BlockTimer(double interval, std::function<void()> tick)
    : timer_(schedule(interval, std::move(tick))) {}

BlockTimer::~BlockTimer() { [timer_ invalidate]; }

}  // namespace lumowatt::macos
