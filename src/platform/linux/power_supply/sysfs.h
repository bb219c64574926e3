#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/descriptor.h"

/// Device classes of the kernel's sysfs. A class is a folder of devices. A device is a folder with
/// one small text file per attribute (Documentation/filesystems/sysfs.rst).
namespace lumowatt::sysfs {

// Functions that open or list files throw a `Failure` if the process or the machine is out of file
// descriptors or memory, because the data would be incomplete.

/// An open class folder such as /sys/class/power_supply. If the folder cannot be opened, the class
/// has no devices.
class Class {
 public:
  explicit Class(const std::string& path);

  /// Returns the names of the devices at the time when the class was opened, sorted bytewise.
  const std::vector<std::string>& deviceNames() const { return deviceNames_; }

 private:
  friend class Device;

  Descriptor folder_;
  std::vector<std::string> deviceNames_;
};

/// An open device of a class. All data is read from the same instance of the device, even if
/// another device replaces it under the same name. Must not outlive the class.
class Device {
 public:
  Device(const Class& devices, std::string name);

  const std::string& name() const { return name_; }

  /// Lists the attributes. From then on, attributes that are not in the list count as missing and
  /// are not opened. This saves time if many attributes may be missing.
  void listAttributes();

  /// Opens and reads an attribute, and returns its text without surrounding white space. The text
  /// may contain any bytes; it is empty for an empty file. Returns std::nullopt if the file is
  /// missing, unreadable, 1 KiB or longer, or a pipe or device without data. Never blocks, except
  /// while a driver blocks.
  std::optional<std::string> text(const char* attribute);

  /// Reads an attribute like `text` and parses it with `parseInteger`. Returns std::nullopt if
  /// either fails.
  std::optional<std::int64_t> number(const char* attribute);

  /// Returns whether the class still lists this instance of the device. If not, the device was
  /// removed, and the data read from it may be incomplete.
  bool isListed() const;

  /// Returns whether the device is being removed: since the last call of `resetReadResults`, at
  /// least one read failed with ENODEV and no read succeeded. During a removal, reads fail with
  /// ENODEV while the class still lists the device.
  bool isBeingRemoved() const { return hasFailed_ && !hasSucceeded_; }

  /// Discards the results of all previous reads for `isBeingRemoved`.
  void resetReadResults() { hasSucceeded_ = hasFailed_ = false; }

 private:
  int classFolder_;
  std::string name_;
  Descriptor folder_;
  std::optional<std::vector<std::string>> attributes_;  // names, set by `listAttributes`
  bool hasSucceeded_ = false;                           // whether a read succeeded
  bool hasFailed_ = false;                              // whether a read failed with ENODEV
};

/// Parses a decimal integer with an optional sign. Returns std::nullopt if `text` contains anything
/// else or the integer does not fit in 64 bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

}  // namespace lumowatt::sysfs
