#pragma once

#include <string_view>

namespace lumowatt {

/// Descriptor of an open file or folder, closed on destruction.
class Descriptor {
 public:
  /// Takes ownership of a file descriptor. A negative number means that no file is open.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { static_cast<void>(close()); }

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

  /// Writes all of `contents`. Returns false, with the reason in errno, on failure.
  bool write(std::string_view contents) const;

  /// Closes the file. Returns false if written data could not be stored.
  bool close();

 private:
  int number_;
};

}  // namespace lumowatt
