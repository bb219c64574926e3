#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Helpers of the fuzz targets. Inputs are lines of text, so that seeds can be written by hand.
namespace lumowatt::fuzz {

/// Runs one input. Each fuzz target defines this function.
void tryInput(std::string_view input);

/// Reports a finding and aborts the process unless `condition` is true. `subject` is the value that
/// violates the rule, or its name.
inline void require(bool condition, std::string_view message, std::string_view subject = {}) {
  if (condition) return;
  std::fprintf(stderr, "fuzz: %.*s: %.*s\n", static_cast<int>(message.size()), message.data(),
               static_cast<int>(subject.size()), subject.data());
  std::abort();
}

/// Parts of a text before and after the first separator. `after` is empty if the text has no
/// separator.
struct SplitText {
  std::string_view before;
  std::string_view after;
};

inline SplitText split(std::string_view text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) return {text, {}};
  return {text.substr(0, at), text.substr(at + 1)};
}

/// Returns the parts of a text between the separators, including empty parts.
inline std::vector<std::string_view> parts(std::string_view text, char separator) {
  std::vector<std::string_view> all;
  for (std::size_t start = 0; start <= text.size();) {
    all.push_back(text.substr(start, text.find(separator, start) - start));
    start += all.back().size() + 1;
  }
  return all;
}

/// Returns a text in which "\n", "\0" and "\\" are replaced by a line feed, a null byte and a
/// backslash.
inline std::string unescaped(std::string_view text) {
  std::string bytes;
  bool escaped = false;
  for (const char letter : text) {
    if (!escaped && letter == '\\') {
      escaped = true;
      continue;
    }
    const char escapedByte = letter == 'n' ? '\n' : letter == '0' ? '\0' : letter;
    bytes += escaped ? escapedByte : letter;
    escaped = false;
  }
  return bytes;
}

inline bool hasControlCharacter(std::string_view text) {
  return std::ranges::any_of(text, [](char letter) {
    const auto code = static_cast<unsigned char>(letter);
    return code < 0x20 || code == 0x7F;
  });
}

/// Returns whether a file can have this name.
inline bool isFileName(std::string_view name) {
  return !name.empty() && name.size() < 256 && name != "." && name != ".." &&
         name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

/// Temporary folder of this process: in $TMPDIR if set, else in memory if possible. Removed on
/// destruction, but not after a finding.
class ScratchFolder {
 public:
  ScratchFolder() : path_(makeFolder()) {}
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }

 private:
  static std::string makeFolder() {
    const char* const chosen = std::getenv("TMPDIR");
    const std::string memory = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    std::string pattern = (chosen != nullptr ? chosen : memory) + "/lumowatt-fuzz.XXXXXX";
    require(::mkdtemp(pattern.data()) != nullptr, "cannot create a folder", pattern);
    return pattern;
  }

  std::string path_;
};

}  // namespace lumowatt::fuzz
