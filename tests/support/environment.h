#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace lumowatt {

/// Sets or unsets an environment variable of this process, and restores it on destruction.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* const old = std::getenv(name)) old_ = old;
    set(value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { set(old_); }

 private:
  void set(const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name_, value->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace lumowatt
