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
    sd_event* made = nullptr;
    EXPECT_GE(sd_event_new(&made), 0);
    loop.reset(made);
  }

  /// Runs the loop until something of it has happened.
  void turn() const { EXPECT_GE(sd_event_run(loop.get(), UINT64_MAX), 0); }

  /// Runs it for as long as something is due.
  void catchUp() const {
    while (sd_event_run(loop.get(), 0) > 0) continue;
  }

  EventLoop loop;
  int ticks = 0;
};

}  // namespace

TEST_F(LoopTimerTest, TicksAgainAndAgain) {
  const LoopTimer timer(loop.get(), 0.005, [this] { ++ticks; });
  while (ticks < 3) turn();
}

TEST_F(LoopTimerTest, DoesNotTickBeforeItsInterval) {
  const LoopTimer timer(loop.get(), 1000.0, [this] { ++ticks; });
  catchUp();
  EXPECT_EQ(ticks, 0);
}

TEST_F(LoopTimerTest, ItsEndEndsTheTicks) {
  auto timer = std::make_unique<LoopTimer>(loop.get(), 0.005, [this] { ++ticks; });
  timer.reset();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  catchUp();
  EXPECT_EQ(ticks, 0);
}

TEST_F(LoopTimerTest, ATickMayEndItsTimer) {
  std::unique_ptr<LoopTimer> timer;
  timer = std::make_unique<LoopTimer>(loop.get(), 0.005, [&] {
    timer.reset();
    ++ticks;
  });
  while (timer) turn();
  EXPECT_EQ(ticks, 1);
}

TEST_F(LoopTimerTest, OfTheTicksThatWereMissedOneIsMadeUpFor) {
  const LoopTimer timer(loop.get(), 0.5, [this] { ++ticks; });
  std::this_thread::sleep_for(std::chrono::milliseconds(1600));
  catchUp();
  EXPECT_EQ(ticks, 1);
}

}  // namespace lumowatt::freedesktop
