#pragma once

#import <Foundation/Foundation.h>

#include <functional>

#include "menubar/desktop.h"

NS_ASSUME_NONNULL_BEGIN

namespace lumowatt::macos {

/// Timer on the run loop of the thread that creates it.
class BlockTimer : public Timer {
 public:
  /// Calls `tick` every `interval` seconds. The system may delay a call by up to a tenth of the
  /// interval, in order to wake the processor once for several timers. Delays do not accumulate.
  BlockTimer(double interval, std::function<void()> tick);
  BlockTimer(const BlockTimer&) = delete;
  BlockTimer& operator=(const BlockTimer&) = delete;
  ~BlockTimer() override;

 private:
  NSTimer* timer_;
};

}  // namespace lumowatt::macos

NS_ASSUME_NONNULL_END
