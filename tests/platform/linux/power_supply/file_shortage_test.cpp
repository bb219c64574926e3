// The process runs out of file descriptors during a reading, at each possible moment. No reading
// may return incomplete properties.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cerrno>
#include <initializer_list>
#include <string>

#include "base/failure.h"
#include "platform/linux/power_supply/open_hooks.h"
#include "platform/linux/power_supply/service.h"
#include "support/mock_machine.h"

namespace lumowatt::power_supply {

namespace {

/// Prevents this process from opening further files until it is destroyed.
class FileBlocker {
 public:
  FileBlocker() {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit limit{.rlim_cur = 0, .rlim_max = before_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
  }
  FileBlocker(const FileBlocker&) = delete;
  FileBlocker& operator=(const FileBlocker&) = delete;
  ~FileBlocker() { ::setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_{};
};

/// Adds a laptop for which all kinds of files are read: it is on external power and has sensors.
void addLaptop(const MockMachine& machine) {
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

TEST(FileShortage, YieldsNoBatteryAndIsReportedOnceUntilItEnds) {
  const MockMachine machine;
  addLaptop(machine);
  Service service(machine.powerSupplyFolder(), machine.hwmonFolder());
  for (int shortage = 0; shortage < 2; ++shortage) {
    EXPECT_TRUE(service.properties());
    testing::internal::CaptureStderr();
    {
      const FileBlocker blocker;
      for (int i = 0; i < 3; ++i) EXPECT_FALSE(service.properties());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), errorLine());
  }
}

TEST(FileShortage, YieldsNoBatteryWheneverItBeginsDuringAReading) {
  const MockMachine machine;
  addLaptop(machine);
  const auto whole = machine.properties();
  ASSERT_NE(whole, nullptr);
  int moment = 1;
  for (bool hasOccurred = true; hasOccurred; ++moment) {
    std::optional<FileBlocker> shortage;
    testing::internal::CaptureStderr();
    onOpen(moment, [&shortage] { shortage.emplace(); });
    const auto properties = machine.properties();
    hasOccurred = shortage.has_value();
    shortage.reset();
    onOpen(0, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), hasOccurred ? errorLine() : "") << moment;
    if (hasOccurred) {
      EXPECT_EQ(properties, nullptr) << moment;
    } else {
      EXPECT_EQ(properties, whole) << moment;
    }
  }
  EXPECT_GT(moment, 20);
}

}  // namespace lumowatt::power_supply
