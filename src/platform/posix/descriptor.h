#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumowatt {

/// An open file or folder, closed at the end of its life.
class Descriptor {
 public:
  /// A number below 0 is that of no file.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
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

/// What is in a folder.
struct Listing {
  std::vector<std::string> names;  ///< sorted by their bytes, without those that begin with a dot
  int error = 0;                   ///< the errno with which the listing ended; 0 when it is whole
};

Listing listFolder(const Descriptor& folder);

}  // namespace lumowatt
