#include "platform/macos/block_timer.h"

#include <utility>

namespace lumowatt::macos {

BlockTimer::BlockTimer(double interval, std::function<void()> tick) {
  const std::function<void()> action = std::move(tick);
  timer_ = [NSTimer scheduledTimerWithTimeInterval:interval
                                           repeats:YES
                                             block:^(NSTimer*) {
                                               action();
                                             }];
}

BlockTimer::~BlockTimer() { [timer_ invalidate]; }

}  // namespace lumowatt::macos
