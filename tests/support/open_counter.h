#pragma once

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>

namespace lumowatt {

/// An attribute of the battery pack that each reading opens.
inline constexpr auto alwaysReadAttribute = "energy_full";

/// Counts how often each file in the watched folders is opened.
class OpenCounter {
 public:
  OpenCounter() : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}
  OpenCounter(const OpenCounter&) = delete;
  OpenCounter& operator=(const OpenCounter&) = delete;
  ~OpenCounter() { ::close(events_); }

  void watch(const std::filesystem::path& folder) const {
    // inotify merges identical consecutive events. Close events keep repeated opens separate.
    EXPECT_GE(::inotify_add_watch(events_, folder.c_str(), IN_OPEN | IN_CLOSE), 0);
  }

  /// Returns the names of the files that were opened since the previous call, once per open.
  std::multiset<std::string> opened() const {
    std::multiset<std::string> names;
    alignas(inotify_event) char buffer[65536];
    const ssize_t length = ::read(events_, buffer, sizeof buffer);
    for (ssize_t at = 0; at < length;) {
      const auto* event = static_cast<const inotify_event*>(static_cast<const void*>(buffer + at));
      if ((event->mask & IN_OPEN) != 0 && event->len > 0) names.insert(event->name);
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    return names;
  }

 private:
  int events_;
};

}  // namespace lumowatt
