#include "platform/freedesktop/bus/loop_timer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

namespace lumowatt::freedesktop {

namespace {

class LoopTimerTest : public testing::Test {
 protected:
  LoopTimerTest() {
    sd_event* newLoop = nullptr;
    EXPECT_GE(sd_event_new(&newLoop), 0);
    loop.reset(newLoop);
  }

  /// Runs one iteration of the loop. Blocks until an event occurs.
  void runOnce() const { EXPECT_GE(sd_event_run(loop.get(), UINT64_MAX), 0); }

  /// Runs the loop until no events are pending.
  void runPending() const {
    while (sd_event_run(loop.get(), 0) > 0) continue;
  }

  EventLoop loop;
  int ticks = 0;
};

}  // namespace

TEST_F(LoopTimerTest, TicksRepeatedly) {
  const LoopTimer timer(loop.get(), 0.005, [this] { ++ticks; });
  while (ticks < 3) runOnce();
}

TEST_F(LoopTimerTest, DoesNotTickBeforeItsInterval) {
  const LoopTimer timer(loop.get(), 1000.0, [this] { ++ticks; });
  runPending();
  EXPECT_EQ(ticks, 0);
}

TEST_F(LoopTimerTest, StopsTickingWhenDestroyed) {
  auto timer = std::make_unique<LoopTimer>(loop.get(), 0.005, [this] { ++ticks; });
  timer.reset();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  runPending();
  EXPECT_EQ(ticks, 0);
}

TEST_F(LoopTimerTest, CanBeDestroyedByItsTick) {
  std::unique_ptr<LoopTimer> timer;
  timer = std::make_unique<LoopTimer>(loop.get(), 0.005, [&] {
    timer.reset();
    ++ticks;
  });
  while (timer) runOnce();
  EXPECT_EQ(ticks, 1);
}

TEST_F(LoopTimerTest, TicksOnceAfterMissingSeveralTicks) {
  const LoopTimer timer(loop.get(), 0.5, [this] { ++ticks; });
  std::this_thread::sleep_for(std::chrono::milliseconds(1600));
  runPending();
  EXPECT_EQ(ticks, 1);
}

}  // namespace lumowatt::freedesktop
