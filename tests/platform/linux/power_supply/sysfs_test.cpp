#include "platform/linux/power_supply/sysfs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "base/failure.h"
#include "support/failing_call.h"
#include "support/files.h"

namespace lumowatt::sysfs {

namespace {

/// A class with one device, BAT0.
class Sysfs : public testing::Test {
 protected:
  Sysfs() { folder.write("BAT0/type", "Battery\n"); }

  std::optional<std::string> text(const std::string& contents) {
    folder.write("BAT0/attribute", contents);
    return Device(Class(folder.path()), "BAT0").text("attribute");
  }

  TemporaryFolder folder;
};

/// Returns the reason of the `Failure` that the action throws, or an empty string if it throws
/// none.
template <typename Action>
std::string failureOf(const Action& action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.reason;
  }
  return {};
}

}  // namespace

TEST_F(Sysfs, ListsDevicesSortedByName) {
  folder.write("BAT1/type", "");
  folder.write("AC/type", "");
  folder.write("BAT10/type", "");
  folder.write(".hidden/type", "");
  const std::vector<std::string> expected = {"AC", "BAT0", "BAT1", "BAT10"};
  EXPECT_EQ(Class(folder.path()).deviceNames(), expected);
}

TEST_F(Sysfs, ListsNoDevicesOfAMissingClass) {
  const Class missing(folder.path() / "nowhere");
  EXPECT_TRUE(missing.deviceNames().empty());
  EXPECT_FALSE(Device(missing, "BAT0").text("type"));
  EXPECT_FALSE(Device(missing, "BAT0").isListed());
}

TEST_F(Sysfs, OpensDevicesThatAreLinks) {
  std::filesystem::create_directory(folder.path() / "class");
  std::filesystem::create_directory_symlink("../BAT0", folder.path() / "class/BAT0");
  const Class devices(folder.path() / "class");
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("type"), "Battery");
  EXPECT_TRUE(device.isListed());
}

TEST_F(Sysfs, TrimsText) {
  EXPECT_EQ(text(" \tNot charging \n\n"), "Not charging");
  EXPECT_EQ(text("100"), "100");
}

TEST_F(Sysfs, ReturnsEmptyTextForAnEmptyFile) {
  EXPECT_EQ(text(""), "");
  EXPECT_EQ(text("\n"), "");
}

TEST_F(Sysfs, PreservesArbitraryBytesInText) {
  const std::string bytes("\xFF\0\x01", 3);
  EXPECT_EQ(text(bytes), bytes);
}

TEST_F(Sysfs, RejectsTooLongTextInsteadOfTruncatingIt) {
  EXPECT_EQ(text(std::string(1023, '1')), std::string(1023, '1'));
  EXPECT_EQ(text(std::string(1024, '1')), std::nullopt);
  EXPECT_EQ(text(std::string(100000, '1')), std::nullopt);
}

TEST_F(Sysfs, ReturnsNoTextForMissingAttributesAndFolders) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("missing"), std::nullopt);
  std::filesystem::create_directory(folder.path() / "BAT0/power");
  EXPECT_EQ(device.text("power"), std::nullopt);
  std::filesystem::create_symlink("nowhere", folder.path() / "BAT0/dangling");
  EXPECT_EQ(device.text("dangling"), std::nullopt);
  EXPECT_TRUE(device.isListed());
}

TEST_F(Sysfs, IgnoresAttributesThatAreCreatedAfterListing) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  device.listAttributes();
  folder.write("BAT0/late", "1");
  EXPECT_EQ(device.text("type"), "Battery");
  EXPECT_EQ(device.text("late"), std::nullopt);
}

TEST_F(Sysfs, ReturnsNoNumberForMissingAttributesAndOtherText) {
  folder.write("BAT0/voltage_now", "12000000\n");
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.number("voltage_now"), 12000000);
  EXPECT_EQ(device.number("type"), std::nullopt);
  EXPECT_EQ(device.number("missing"), std::nullopt);
}

TEST_F(Sysfs, IgnoresAttributesThatAreEmptyPipes) {
  const std::string pipe = folder.path() / "BAT0/pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("pipe"), std::nullopt) << "without a writer";
  const int writer = ::open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(writer, 0);
  EXPECT_EQ(device.text("pipe"), std::nullopt) << "with a writer that never writes";
  ::close(writer);
}

TEST_F(Sysfs, ReadsAttributesThatArePipesWithData) {
  const std::string pipe = folder.path() / "BAT0/pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int writer = ::open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::write(writer, "1", 1), 1);
  const Class devices(folder.path());
  EXPECT_EQ(Device(devices, "BAT0").text("pipe"), "1");
  ::close(writer);
}

TEST_F(Sysfs, OpensAttributesWithCloseOnExec) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  runWithFailingCall({.number = SYS_openat, .error = EACCES, .exemptFlags = O_CLOEXEC},
                     [&] { EXPECT_EQ(device.text("type"), "Battery"); });
}

TEST_F(Sysfs, IgnoresAttributesThatAreDeviceFiles) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  for (const char* const target : {"/dev/null", "/dev/zero", "/dev/full", "/dev/tty"}) {
    std::filesystem::remove(folder.path() / "BAT0/device");
    std::filesystem::create_symlink(target, folder.path() / "BAT0/device");
    EXPECT_EQ(device.text("device"), std::nullopt) << target;
  }
}

TEST_F(Sysfs, IgnoresAttributesThatAreSocketsOrLinkLoops) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  const std::string path = folder.path() / "BAT0/socket";
  ASSERT_LT(path.copy(address.sun_path, sizeof address.sun_path - 1), sizeof address.sun_path - 1);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  std::filesystem::create_symlink("loop", folder.path() / "BAT0/loop");
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("socket"), std::nullopt);
  EXPECT_EQ(device.text("loop"), std::nullopt);
  ::close(socket);
}

TEST_F(Sysfs, ListsNoDevicesOfAClassThatIsNotAFolder) {
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("loop", folder.path() / "loop");
  folder.write("file", "BAT0");
  for (const char* const name : {"pipe", "loop", "file"}) {
    EXPECT_TRUE(Class(folder.path() / name).deviceNames().empty()) << name;
  }
}

TEST_F(Sysfs, IgnoresDevicesThatArePipes) {
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  const Class devices(folder.path());
  Device device(devices, "pipe");
  EXPECT_FALSE(device.text("type"));
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, IgnoresDevicesThatAreFiles) {
  folder.write("stray", "text");
  const Class devices(folder.path());
  Device device(devices, "stray");
  EXPECT_FALSE(device.text("type"));
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, ReportsRemovedDevicesAsNotListed) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_TRUE(device.isListed());
  std::filesystem::remove_all(folder.path() / "BAT0");
  EXPECT_FALSE(device.isListed());
  EXPECT_EQ(device.text("type"), std::nullopt);
}

TEST_F(Sysfs, ReportsReplacedDevicesAsNotListed) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  std::filesystem::rename(folder.path() / "BAT0", folder.path() / "gone");
  folder.write("BAT0/type", "Battery\n");
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, ReportsReplacedDevicesAsNotListedDespiteEqualInodes) {
  struct stat processes {};
  struct stat kernel {};
  ASSERT_EQ(::stat("/proc", &processes), 0);
  ASSERT_EQ(::stat("/sys", &kernel), 0);
  if (processes.st_ino != kernel.st_ino) GTEST_SKIP() << "/proc or /sys is not mounted";
  const auto link = folder.path() / "link";
  std::filesystem::create_directory_symlink("/proc", link);
  const Class devices(folder.path());
  const Device device(devices, "link");
  EXPECT_TRUE(device.isListed());
  std::filesystem::remove(link);
  std::filesystem::create_directory_symlink("/sys", link);
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, ReportsRemovalIfReadsFailWithENODEVAndNoneSucceeds) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_FALSE(device.isBeingRemoved()) << "before anything is read";
  runWithFailingCall({SYS_read, EIO}, [&] { EXPECT_EQ(device.text("type"), std::nullopt); });
  EXPECT_FALSE(device.isBeingRemoved()) << "after another error";
  runWithFailingCall({SYS_read, ENODEV}, [&] { EXPECT_EQ(device.text("type"), std::nullopt); });
  EXPECT_TRUE(device.isBeingRemoved());
  runWithFailingCall({SYS_read, EIO}, [&] { EXPECT_EQ(device.text("type"), std::nullopt); });
  EXPECT_TRUE(device.isBeingRemoved()) << "after both errors";
  EXPECT_EQ(device.text("type"), "Battery");
  EXPECT_FALSE(device.isBeingRemoved()) << "after a successful read";
}

TEST_F(Sysfs, ReportsNoRemovalAfterASuccessfulRead) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("type"), "Battery");
  EXPECT_FALSE(device.isBeingRemoved());
  runWithFailingCall({SYS_read, ENODEV}, [&] { EXPECT_EQ(device.text("type"), std::nullopt); });
  EXPECT_FALSE(device.isBeingRemoved());
}

TEST_F(Sysfs, IgnoresReadsBeforeTheResetWhenReportingRemoval) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("type"), "Battery");
  device.resetReadResults();
  runWithFailingCall({SYS_read, ENODEV}, [&] { EXPECT_EQ(device.text("type"), std::nullopt); });
  EXPECT_TRUE(device.isBeingRemoved());
  device.resetReadResults();
  EXPECT_FALSE(device.isBeingRemoved());
}

TEST_F(Sysfs, ThrowsIfOpeningExhaustsFilesOrMemory) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  for (const int error : {EMFILE, ENFILE, ENOMEM}) {
    const FailingCall opening{SYS_openat, static_cast<unsigned>(error)};
    runWithFailingCall(opening, [&, expected = systemFailure(error).reason] {
      EXPECT_EQ(failureOf([&] { const Class other(folder.path()); }), expected);
      EXPECT_EQ(failureOf([&] { const Device other(devices, "BAT0"); }), expected);
      EXPECT_EQ(failureOf([&] { device.text("type"); }), expected);
    });
  }
}

TEST_F(Sysfs, IgnoresAShortageBeforeOpening) {
  std::vector<std::string> names;
  const std::string reason = failureOf([&] {
    errno = EMFILE;
    names = Class(folder.path()).deviceNames();
  });
  EXPECT_EQ(reason, "");
  EXPECT_EQ(names, std::vector<std::string>{"BAT0"});
}

TEST_F(Sysfs, ThrowsIfListingExhaustsFilesOrMemory) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  runWithFailingCall({SYS_getdents64, ENOMEM}, [&, expected = systemFailure(ENOMEM).reason] {
    EXPECT_EQ(failureOf([&] { const Class other(folder.path()); }), expected);
    EXPECT_EQ(failureOf([&] { device.listAttributes(); }), expected);
  });
}

TEST_F(Sysfs, TreatsFoldersThatCannotBeReadAsEmpty) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  runWithFailingCall({SYS_openat, EACCES}, [&] {
    EXPECT_TRUE(Class(folder.path()).deviceNames().empty());
    EXPECT_EQ(device.text("type"), std::nullopt);
  });
  runWithFailingCall({SYS_getdents64, EIO}, [&] {
    EXPECT_TRUE(Class(folder.path()).deviceNames().empty());
    device.listAttributes();
  });
  EXPECT_EQ(device.text("type"), std::nullopt) << "not in the list of attributes";
}

TEST(ParseInteger, AcceptsAnOptionalSign) {
  EXPECT_EQ(parseInteger("42"), 42);
  EXPECT_EQ(parseInteger("-42"), -42);
  EXPECT_EQ(parseInteger("+42"), 42);
  EXPECT_EQ(parseInteger("0"), 0);
  EXPECT_EQ(parseInteger("007"), 7);
}

TEST(ParseInteger, AcceptsTheFullRangeOf64Bits) {
  EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(ParseInteger, RejectsOtherTextAndOverflow) {
  for (const char* text : {"", "-", "+", "+-1", "-+1", "--1", "1 2", "12.5", "1e3", "0x10", "12abc",
                           "abc", " 1", "9223372036854775808", "-9223372036854775809"}) {
    EXPECT_EQ(parseInteger(text), std::nullopt) << '"' << text << '"';
  }
}

}  // namespace lumowatt::sysfs
