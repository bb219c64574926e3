#include "platform/linux/power_supply/sysfs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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

}  // namespace

TEST_F(Sysfs, AClassListsItsDevicesByName) {
  folder.write("BAT1/type", "");
  folder.write("AC/type", "");
  folder.write("BAT10/type", "");
  folder.write(".hidden/type", "");
  const std::vector<std::string> expected = {"AC", "BAT0", "BAT1", "BAT10"};
  EXPECT_EQ(Class(folder.path()).deviceNames(), expected);
}

TEST_F(Sysfs, AClassThatIsMissingHasNoDevices) {
  const Class missing(folder.path() / "nowhere");
  EXPECT_TRUE(missing.deviceNames().empty());
  EXPECT_FALSE(Device(missing, "BAT0").text("type"));
  EXPECT_FALSE(Device(missing, "BAT0").isListed());
}

TEST_F(Sysfs, ADeviceMayBeALink) {
  std::filesystem::create_directory(folder.path() / "class");
  std::filesystem::create_directory_symlink("../BAT0", folder.path() / "class/BAT0");
  const Class devices(folder.path() / "class");
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("type"), "Battery");
  EXPECT_TRUE(device.isListed());
}

TEST_F(Sysfs, TextIsTrimmed) {
  EXPECT_EQ(text(" \tNot charging \n\n"), "Not charging");
  EXPECT_EQ(text("100"), "100");
}

TEST_F(Sysfs, TextOfAnEmptyFileIsEmpty) {
  EXPECT_EQ(text(""), "");
  EXPECT_EQ(text("\n"), "");
}

TEST_F(Sysfs, TextMayBeAnyBytes) {
  const std::string bytes("\xFF\0\x01", 3);
  EXPECT_EQ(text(bytes), bytes);
}

TEST_F(Sysfs, TextThatIsTooLongIsAbsentRatherThanCut) {
  EXPECT_EQ(text(std::string(1023, '1')), std::string(1023, '1'));
  EXPECT_EQ(text(std::string(1024, '1')), std::nullopt);
  EXPECT_EQ(text(std::string(100000, '1')), std::nullopt);
}

TEST_F(Sysfs, AnAttributeThatIsMissingOrNoFileIsAbsent) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_EQ(device.text("missing"), std::nullopt);
  std::filesystem::create_directory(folder.path() / "BAT0/power");
  EXPECT_EQ(device.text("power"), std::nullopt);
  std::filesystem::create_symlink("nowhere", folder.path() / "BAT0/dangling");
  EXPECT_EQ(device.text("dangling"), std::nullopt);
  EXPECT_TRUE(device.isListed());
}

TEST_F(Sysfs, AnAttributeThatIsAPipeWithNothingInItIsAbsent) {
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

TEST_F(Sysfs, AnAttributeThatIsADeviceIsAbsent) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  for (const char* const target : {"/dev/null", "/dev/zero", "/dev/full", "/dev/tty"}) {
    std::filesystem::remove(folder.path() / "BAT0/device");
    std::filesystem::create_symlink(target, folder.path() / "BAT0/device");
    EXPECT_EQ(device.text("device"), std::nullopt) << target;
  }
}

TEST_F(Sysfs, AnAttributeThatIsASocketOrALoopOfLinksIsAbsent) {
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

TEST_F(Sysfs, AClassThatIsAPipeAFileOrALoopHasNoDevices) {
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("loop", folder.path() / "loop");
  folder.write("file", "BAT0");
  for (const char* const name : {"pipe", "loop", "file"}) {
    EXPECT_TRUE(Class(folder.path() / name).deviceNames().empty()) << name;
  }
}

TEST_F(Sysfs, ADeviceThatIsAPipeHasNothing) {
  ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  const Class devices(folder.path());
  Device device(devices, "pipe");
  EXPECT_FALSE(device.text("type"));
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, ADeviceThatIsAFileHasNothing) {
  folder.write("stray", "text");
  const Class devices(folder.path());
  Device device(devices, "stray");
  EXPECT_FALSE(device.text("type"));
  EXPECT_FALSE(device.isListed());
}

TEST_F(Sysfs, ADeviceThatWasRemovedIsNotListed) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  EXPECT_TRUE(device.isListed());
  std::filesystem::remove_all(folder.path() / "BAT0");
  EXPECT_FALSE(device.isListed());
  EXPECT_EQ(device.text("type"), std::nullopt);
}

TEST_F(Sysfs, ADeviceThatAnotherReplacedIsNotListed) {
  const Class devices(folder.path());
  Device device(devices, "BAT0");
  std::filesystem::rename(folder.path() / "BAT0", folder.path() / "gone");
  folder.write("BAT0/type", "Battery\n");
  EXPECT_FALSE(device.isListed());
}

TEST(ParseInteger, TakesAnOptionalSign) {
  EXPECT_EQ(parseInteger("42"), 42);
  EXPECT_EQ(parseInteger("-42"), -42);
  EXPECT_EQ(parseInteger("+42"), 42);
  EXPECT_EQ(parseInteger("0"), 0);
  EXPECT_EQ(parseInteger("007"), 7);
}

TEST(ParseInteger, TakesAll64Bits) {
  EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(ParseInteger, OfAnythingElseIsAbsent) {
  for (const char* text : {"", "-", "+", "+-1", "-+1", "--1", "1 2", "12.5", "1e3", "0x10", "12abc",
                           "abc", " 1", "9223372036854775808", "-9223372036854775809"}) {
    EXPECT_EQ(parseInteger(text), std::nullopt) << '"' << text << '"';
  }
}

}  // namespace lumowatt::sysfs
