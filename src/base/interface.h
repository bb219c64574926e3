#pragma once

namespace lumowatt {

/// The base of what a platform implements: objects that are never copied.
class Interface {
 public:
  Interface() = default;
  Interface(const Interface&) = delete;
  Interface& operator=(const Interface&) = delete;
  virtual ~Interface() = default;
};

}  // namespace lumowatt
