#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// What the fuzz targets share. An input is lines of text, so that seeds can be written by hand.
namespace lumowatt::fuzz {

/// Tries one input. Each target has its own.
void tryInput(std::string_view input);

/// Ends the run, as a finding, unless something `holds` that must. `subject` is what it is about.
inline void require(bool holds, std::string_view message, std::string_view subject = {}) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: %.*s: %.*s\n", static_cast<int>(message.size()), message.data(),
               static_cast<int>(subject.size()), subject.data());
  std::abort();
}

/// What stands before the first `sign`, and what stands after it; the second is empty without one.
struct Halves {
  std::string_view before;
  std::string_view after;
};

inline Halves split(std::string_view text, char sign) {
  const std::size_t at = text.find(sign);
  if (at == std::string_view::npos) return {text, {}};
  return {text.substr(0, at), text.substr(at + 1)};
}

/// The parts of a text between the signs.
inline std::vector<std::string_view> parts(std::string_view text, char sign) {
  std::vector<std::string_view> all;
  for (std::size_t start = 0; start <= text.size();) {
    all.push_back(text.substr(start, text.find(sign, start) - start));
    start += all.back().size() + 1;
  }
  return all;
}

/// A text with "\n", "\0" and "\\" for the bytes that a line cannot have.
inline std::string unescaped(std::string_view text) {
  std::string bytes;
  bool escaped = false;
  for (const char letter : text) {
    if (!escaped && letter == '\\') {
      escaped = true;
      continue;
    }
    const char meant = letter == 'n' ? '\n' : letter == '0' ? '\0' : letter;
    bytes += escaped ? meant : letter;
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

/// Whether a file can have that name.
inline bool isFileName(std::string_view name) {
  return !name.empty() && name.size() < 256 && name != "." && name != ".." &&
         name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

/// A folder of this process, in $TMPDIR or else in memory where it can be. A finding leaves it
/// there.
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
    require(::mkdtemp(pattern.data()) != nullptr, "no folder can be made", pattern);
    return pattern;
  }

  std::string path_;
};

}  // namespace lumowatt::fuzz
