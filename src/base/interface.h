#pragma once

namespace lumowatt {

/// Base class of the interfaces that a platform implements. Not copyable.
class Interface {
 public:
  Interface() = default;
  Interface(const Interface&) = delete;
  Interface& operator=(const Interface&) = delete;
  virtual ~Interface() = default;
};

}  // namespace lumowatt
