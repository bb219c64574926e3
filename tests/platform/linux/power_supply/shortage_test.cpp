// A machine whose files can no longer be opened, from every moment on at which that can begin: no
// reading may be half of one.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <initializer_list>
#include <string>

#include "base/failure.h"
#include "platform/linux/power_supply/opening_moments.h"
#include "platform/linux/power_supply/service.h"
#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

/// As long as it lives, this process cannot open another file.
class NoFiles {
 public:
  NoFiles() {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none{.rlim_cur = 0, .rlim_max = before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  }
  NoFiles(const NoFiles&) = delete;
  NoFiles& operator=(const NoFiles&) = delete;
  ~NoFiles() { ::setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_{};
};

/// A laptop that is read in every way that there is: on power, with sensors of its own.
void makeLaptop(const MockMachine& machine) {
  machine.supply("macsmc-battery", chargePack({{"status", "Charging\n"}}));
  machine.supply("port", {{"type", "USB\n"},
                          {"online", "1\n"},
                          {"model_name", "Brick\n"},
                          {"voltage_max", "20000000\n"},
                          {"current_max", "3250000\n"}});
  machine.sensors("hwmon0", {{"name", "macsmc_hwmon\n"},
                             {"power1_label", "Total System Power\n"},
                             {"power1_input", "9876543\n"},
                             {"power2_label", "AC Input Power\n"},
                             {"power2_input", "12345678\n"}});
}

std::string errorLine() {
  return "lumowatt: cannot read the battery: " + systemFailure(EMFILE).reason + "\n";
}

}  // namespace

TEST(Shortage, OfFilesIsNoBatteryAndToldOnceUntilItIsOver) {
  const MockMachine machine;
  makeLaptop(machine);
  Service service(machine.powerSupplyFolder(), machine.hwmonFolder());
  for (int shortage = 0; shortage < 2; ++shortage) {
    EXPECT_TRUE(service.properties());
    testing::internal::CaptureStderr();
    {
      const NoFiles none;
      for (int i = 0; i < 3; ++i) EXPECT_FALSE(service.properties());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), errorLine());
  }
}

TEST(Shortage, OfFilesFromAnyMomentOnIsNoBatteryRatherThanHalfOfOne) {
  const MockMachine machine;
  makeLaptop(machine);
  const auto whole = machine.properties();
  ASSERT_NE(whole, nullptr);
  int moment = 1;
  for (bool happened = true; happened; ++moment) {
    std::optional<NoFiles> shortage;
    testing::internal::CaptureStderr();
    atOpening(moment, [&shortage] { shortage.emplace(); });
    const auto properties = machine.properties();
    happened = shortage.has_value();
    shortage.reset();
    atOpening(0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), happened ? errorLine() : "") << moment;
    if (happened) {
      EXPECT_EQ(properties, nullptr) << moment;
    } else {
      EXPECT_EQ(properties, whole) << moment;
    }
  }
  EXPECT_GT(moment, 20);
}

}  // namespace lumowatt::power_supply
