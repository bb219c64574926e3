#pragma once

#include <sys/prctl.h>

namespace lumowatt {

/// This process under another name, by which the application knows a panel; under its own again at
/// the end. To be used on the first thread, whose name is the process's.
class ProcessName {
 public:
  explicit ProcessName(const char* name) {
    ::prctl(PR_GET_NAME, own_);
    set(name);
  }
  ProcessName(const ProcessName&) = delete;
  ProcessName& operator=(const ProcessName&) = delete;
  ~ProcessName() { set(own_); }

  static void set(const char* name) { ::prctl(PR_SET_NAME, name); }

 private:
  char own_[16] = {};
};

}  // namespace lumowatt
