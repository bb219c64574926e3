#include "platform/macos/block_timer.h"

namespace lumowatt::macos {

BlockTimer::BlockTimer(double interval, std::function<void()> tick)
    : timer_([NSTimer scheduledTimerWithTimeInterval:interval
                                             repeats:YES
                                               block:^(NSTimer*) {
                                                 tick();
                                               }]) {}

BlockTimer::~BlockTimer() { [timer_ invalidate]; }

}  // namespace lumowatt::macos
