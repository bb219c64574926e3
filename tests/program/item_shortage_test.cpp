#include <sys/resource.h>

#include <csignal>

#include "program/item_fixture.h"
#include "program/menu_ids.h"

namespace lumowatt {

namespace {

/// Fixture for an item that runs out of file descriptors or memory.
class ItemShortOfResources : public ItemTest {
 protected:
  /// Limits the number of files that the item can open.
  void limitFiles(rlim_t count) const {
    rlimit limit{};
    ASSERT_EQ(::prlimit(item->id(), RLIMIT_NOFILE, nullptr, &limit), 0);
    limit.rlim_cur = count;
    ASSERT_EQ(::prlimit(item->id(), RLIMIT_NOFILE, &limit, nullptr), 0);
  }

  /// Returns whether the dynamic loader ended the process. The loader exits if it cannot allocate
  /// thread-local data. It crashes if a library's constructor looks up a missing symbol and the
  /// error cannot be allocated. libsystemd 262 has such a constructor.
  static bool isEndedByLoader(const ProcessResult& result) {
    return (result.status == 127 &&
            result.errors.find("thread-local data: ABORT") != std::string::npos) ||
           (LUMOWATT_SYSTEMD_VERSION > 257 && result.status == 128 + SIGSEGV &&
            result.errors.empty());
  }

  std::string label() const { return panel->property("XAyatanaLabel"); }
};

constexpr rlim_t enoughFiles = 256;

int count(const std::string& text, const std::string& part) {
  int occurrences = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++occurrences;
  return occurrences;
}

}  // namespace

TEST_F(ItemShortOfResources, ShowsNoBatteryUntilFilesCanBeOpened) {
  install("xclip", "cat > $traces/new\nmv $traces/new $traces/copied");
  startWithChart();
  const std::string before = label();
  panel->open();

  limitFiles(0);
  panel->open();
  EXPECT_EQ(label(), "No battery");
  EXPECT_EQ(panel->click(menu_id::copyDetails), "") << "Copy details";
  EXPECT_EQ(panel->click(menu_id::chart), "") << "the chart";
  EXPECT_EQ(panel->click(menu_id::colors), "") << "Colors";
  const std::string id = std::to_string(item->id());
  EXPECT_EQ(fileContents("/proc/" + id + "/task/" + id + "/children"), "");
  panel->open();
  EXPECT_EQ(label(), "No battery");
  EXPECT_FALSE(std::filesystem::exists(preferences()));

  limitFiles(enoughFiles);
  panel->open();
  EXPECT_EQ(label(), before);
  choose(menu_id::copyDetails, "Copy details");
  EXPECT_EQ(panel->property("ToolTip").at(3), waitForTrace("copied"));
  item->send(SIGTERM);
  const ProcessResult result = item->wait();
  EXPECT_EQ(result.status, 0);
  for (const std::string& line :
       {std::string("cannot read the battery: Too many open files"),
        std::string("cannot copy the details: neither wl-copy nor xclip can be started"),
        "cannot store the preference: cannot read " + preferences().string(),
        std::string("cannot show the chart: Too many open files")}) {
    EXPECT_EQ(count(result.errors, "lumowatt: " + line + "\n"), 1) << line;
  }
}

#if !LUMOWATT_SANITIZED  // with AddressSanitizer, allocations do not fail

TEST_F(ItemShortOfResources, ExitsWithAnErrorMessageWheneverMemoryRunsOut) {
  constexpr auto preloaded = "LD_PRELOAD=" LUMOWATT_ACCELERATED_CLOCK " " LUMOWATT_FAILING_MEMORY;
  // All allocations fail from the allocation `from` on: from the first one in the first run, and
  // after the registration of the item in the last runs.
  for (int from = 1; from < 1500; from += 1 + from / 16) {
    prefix = {"/usr/bin/timeout",
              "--signal=KILL",
              "20",
              "/usr/bin/env",
              preloaded,
              "POWER_SUPPLY_FOLDER=" + machine.powerSupplyFolder().string(),
              "REFUSED_FROM=" + std::to_string(from)};
    item = startProcess();
    panel->waitUntil([this] { return !item->isRunning(); });
    const ProcessResult result = item->wait();
    const bool byLoader = isEndedByLoader(result);
    EXPECT_TRUE(byLoader || result.status == 1) << from << ": " << result.status;
    // With libc++, the error message of the bus library fits into a string without an allocation.
    const bool byBus = result.errors.ends_with(
        "lumowatt: cannot connect to the session bus: Cannot allocate memory\n");
    EXPECT_TRUE(byLoader || byBus || result.errors.ends_with("lumowatt: out of memory\n"))
        << result.errors;
  }
  EXPECT_FALSE(panel->registered.empty());
}

#endif

}  // namespace lumowatt
