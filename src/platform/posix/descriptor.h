#pragma once

#include <string_view>

namespace lumowatt {

/// An open file or folder, closed at the end of its life.
class Descriptor {
 public:
  /// A number below 0 is that of no file.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { static_cast<void>(close()); }

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

  /// Writes all of `contents`; false, with the reason in errno, when that fails.
  bool write(std::string_view contents) const;

  /// Closes the file; false when what was written could not be kept.
  bool close();

 private:
  int number_;
};

}  // namespace lumowatt
