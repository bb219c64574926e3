#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/descriptor.h"

/// Device classes of the kernel's sysfs: a folder of devices, each a folder with one small text
/// file per attribute (Documentation/filesystems/sysfs.rst).
namespace lumowatt::sysfs {

// Reading throws a `Failure` when this process or machine runs out of files or memory: what was
// read so far would be half of the truth.

/// A class folder such as /sys/class/power_supply, held open. One that cannot be opened has no
/// devices.
class Class {
 public:
  explicit Class(const std::string& path);

  /// The names of the devices that it listed when it was opened, sorted by their bytes.
  const std::vector<std::string>& deviceNames() const { return deviceNames_; }

 private:
  friend class Device;

  Descriptor folder_;
  std::vector<std::string> deviceNames_;
};

/// One device of a class, held open: whatever is read through it belongs to the same incarnation
/// of the device. Must not outlive its class.
class Device {
 public:
  Device(const Class& devices, std::string name);

  const std::string& name() const { return name_; }

  /// Lists the attributes: those that are not there now count as absent from now on, and are not
  /// looked for. Worth its cost where many may be missing.
  void listAttributes();

  /// An attribute's text without the white space around it: any bytes, and none for an empty
  /// file. Absent when the file is missing, unreadable, longer than anything of use, or a pipe or
  /// device that gives nothing. Opens and reads it afresh, and waits for nobody but a driver.
  std::optional<std::string> text(const char* attribute);

  /// An attribute that is a decimal integer with an optional sign. Absent when it is anything
  /// else or does not fit 64 bits.
  std::optional<std::int64_t> number(const char* attribute);

  /// Whether the class still lists this very device. If not, it was removed meanwhile, and what
  /// was read of it may be incomplete.
  bool isListed() const;

  /// Whether the driver answered that there is no such device, and to nothing else since the last
  /// forgetAnswers(): so it does while a device is taken down, before the class ceases to list it.
  bool isBeingRemoved() const { return refused_ && !answered_; }
  void forgetAnswers() { answered_ = refused_ = false; }

 private:
  int classFolder_;
  std::string name_;
  Descriptor folder_;
  std::optional<std::vector<std::string>> attributes_;  // their names, when they were listed
  bool answered_ = false;                               // an attribute could be read
  bool refused_ = false;                                // reading one failed with ENODEV
};

/// The decimal integer that is all of `text`, with an optional sign. Absent when it is anything
/// else or does not fit 64 bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

}  // namespace lumowatt::sysfs
