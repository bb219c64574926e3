#pragma once

#include <sys/prctl.h>

namespace lumowatt {

/// Temporary name of this process, by which Lumowatt recognizes a panel. The destructor restores
/// the original name. Must be used on the main thread, because its name is the name of the process.
class ProcessName {
 public:
  explicit ProcessName(const char* name) {
    ::prctl(PR_GET_NAME, originalName_);
    set(name);
  }
  ProcessName(const ProcessName&) = delete;
  ProcessName& operator=(const ProcessName&) = delete;
  ~ProcessName() { set(originalName_); }

  static void set(const char* name) { ::prctl(PR_SET_NAME, name); }

 private:
  char originalName_[16] = {};
};

}  // namespace lumowatt
