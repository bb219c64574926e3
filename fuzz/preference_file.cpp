/// Fuzz target: reads and writes of a preference file. The first lines of an input describe the
/// initial file and the steps. "<folder", "<pipe", "<link" and "<missing" replace the file by a
/// folder, a pipe, a symbolic link to the file, or nothing. "<1000" inserts a thousand "#" at the
/// beginning of the file. `mode=2` sets a value, `mode` reads the value. The contents of the file
/// follow after a line "--".

#include "platform/freedesktop/user/preference_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <set>

#include "support.h"

namespace lumowatt::fuzz {

namespace {

using freedesktop::PreferenceFile;

constexpr std::size_t sizeLimit = 65536;
constexpr mode_t permissions = 0640;

constexpr auto npos = std::string_view::npos;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  while (!text.empty() && blanks.find(text.front()) != npos) text.remove_prefix(1);
  while (!text.empty() && blanks.find(text.back()) != npos) text.remove_suffix(1);
  return text;
}

/// Expected contents of the file, as lines without line feeds.
class ExpectedFile {
 public:
  explicit ExpectedFile(std::string_view text) {
    for (const std::string_view line : parts(text, '\n')) lines_.emplace_back(line);
  }

  std::optional<std::string> value(std::string_view key) const {
    for (const std::string& line : lines_) {
      if (isOf(line, key)) return std::string(trimmed(split(line, '=').after));
    }
    return std::nullopt;
  }

  void set(const std::string& key, const std::string& value) {
    for (std::string& line : lines_) {
      if (!isOf(line, key)) continue;
      line.replace(line.find('=') + 1, npos, value);
      return;
    }
    if (!lines_.back().empty()) lines_.emplace_back();
    lines_.back() = key + "=" + value;
    lines_.emplace_back();
  }

  std::string text() const {
    std::string all = lines_.front();
    for (std::size_t i = 1; i < lines_.size(); ++i) all += "\n" + lines_[i];
    return all;
  }

 private:
  static bool isOf(std::string_view line, std::string_view key) {
    return line.find('=') != npos && trimmed(split(line, '=').before) == key;
  }

  std::vector<std::string> lines_;
};

std::int64_t expectedInteger(std::string_view text) {
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t end = std::min(text.find_first_not_of("0123456789", sign), text.size());
  std::uint64_t magnitude = 0;
  const std::uint64_t limit = std::uint64_t{1} << 63U;  // magnitude of the lowest number
  for (const char digit : text.substr(sign, end - sign)) {
    const auto next = static_cast<std::uint64_t>(digit - '0');
    magnitude = magnitude > (limit - next) / 10 ? limit : magnitude * 10 + next;
  }
  if (sign == 1) return static_cast<std::int64_t>(~magnitude + 1);
  return static_cast<std::int64_t>(std::min(magnitude, limit - 1));
}

bool expectedBoolean(std::string text) {
  static const std::set<std::string> yes{"true", "yes", "on"};
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter + ('a' - 'A'));
  }
  if (yes.contains(text)) return true;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.erase(0, 1);
  const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
  return std::ranges::all_of(text, isDigit) &&
         std::ranges::any_of(text, [](char digit) { return digit != '0'; });
}

std::string contents(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  require(file >= 0, "cannot open the file", path);
  std::string text(sizeLimit * 2 + 1, '\0');
  const ssize_t length = ::read(file, text.data(), text.size());
  ::close(file);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  return text;
}

/// What the path of the preferences refers to.
enum class FileType { file, folder, pipe, link, missing };

/// Folder that contains the preference file.
class Home {
 public:
  explicit Home(std::string folder) : folder_(std::move(folder)) {}

  std::string path() const { return folder_ + "/preferences"; }

  /// Removes the contents of the folder, then creates the file.
  void create(FileType type, std::string_view text) const {
    for (const auto& old : std::filesystem::directory_iterator(folder_)) {
      std::filesystem::remove_all(old.path());
    }
    const std::string target = folder_ + "/target";
    if (type == FileType::folder) ::mkdir(path().c_str(), 0700);
    if (type == FileType::pipe) ::mkfifo(path().c_str(), 0600);
    if (type == FileType::file) write(path(), text);
    if (type != FileType::link) return;
    write(target, text);
    require(::symlink(target.c_str(), path().c_str()) == 0, "cannot create a link", path());
  }

  /// Requires that the folder contains only the file, and that the type and the permissions of the
  /// file are unchanged. A new file must be accessible only to the user.
  void requireFolderState(FileType type) const {
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      const std::string name = entry.path().filename();
      const bool isExpected = name == "preferences" || (name == "target" && type == FileType::link);
      require(isExpected, "another file in the folder", name);
    }
    struct stat status {};
    if (::lstat(path().c_str(), &status) != 0) {
      require(type == FileType::missing, "the file was removed");
      return;
    }
    const mode_t kind = status.st_mode & S_IFMT;
    const mode_t access = status.st_mode & 07777U;
    if (type == FileType::folder) require(kind == S_IFDIR, "the folder was replaced");
    if (type == FileType::pipe) require(kind == S_IFIFO, "the pipe was replaced");
    if (type == FileType::link) require(kind == S_IFLNK, "the link was replaced");
    if (type == FileType::file)
      require(kind == S_IFREG && access == permissions, "the type or the permissions changed");
    if (type == FileType::missing)
      require(kind == S_IFREG && access == 0600, "a new file accessible to others");
  }

 private:
  static void write(const std::string& path, std::string_view text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    const ssize_t written = ::write(file, text.data(), text.size());
    require(written == static_cast<ssize_t>(text.size()), "cannot create a file", path);
    ::fchmod(file, permissions);
    ::close(file);
  }

  std::string folder_;
};

/// Requires that the file contains the expected value under a key.
void requireValue(const PreferenceFile& file, const std::string& key,
                  const std::optional<std::string>& expected) {
  const auto value = file.read({key}).at(0);
  require(value.has_value() == expected.has_value(), "a missing or unexpected value", key);
  if (!expected) return;
  require(value->integer == expectedInteger(*expected), "a wrong integer", key);
  require(value->boolean == expectedBoolean(*expected), "a wrong Boolean", key);
}

/// Parsed input.
struct ParsedInput {
  explicit ParsedInput(std::string_view input) {
    while (!input.empty()) {
      const auto [line, rest] = split(input, '\n');
      input = rest;
      if (line == "--") break;
      if (!line.starts_with('<')) {
        steps.push_back(line);
        continue;
      }
      const std::string_view word = line.substr(1);
      if (word == "folder") type = FileType::folder;
      if (word == "pipe") type = FileType::pipe;
      if (word == "link") type = FileType::link;
      if (word == "missing") type = FileType::missing;
      std::from_chars(word.data(), word.data() + word.size(), padding);
    }
    text = std::string(std::min(padding, sizeLimit + 100), '#') + std::string(input);
    text.resize(std::min(text.size(), sizeLimit * 2));
    if (type == FileType::missing) text.clear();
  }

  FileType type = FileType::file;
  std::size_t padding = 0;
  std::vector<std::string_view> steps;
  std::string text;
};

}  // namespace

void tryInput(std::string_view input) {
  static const ScratchFolder folder;
  const Home home(folder.path());
  const ParsedInput parsed(input);
  home.create(parsed.type, parsed.text);
  const PreferenceFile file(home.path());
  ExpectedFile expected(parsed.text);
  const bool isFile = parsed.type != FileType::folder && parsed.type != FileType::pipe;
  bool exists = parsed.type != FileType::missing;
  for (const std::string_view step : parsed.steps) {
    const auto [name, text] = split(step, '=');
    const std::string key(trimmed(name));
    const std::string value(text);
    const bool isReadable = isFile && expected.text().size() <= sizeLimit;
    requireValue(file, key, isReadable ? expected.value(key) : std::nullopt);
    if (name.size() == step.size()) continue;

    ExpectedFile changed = expected;
    changed.set(key, value);
    const bool canSet = isReadable && changed.text().size() <= sizeLimit;
    const bool isSet(file.set(key, value));
    require(isSet == canSet, canSet ? "not set" : "set nevertheless", key);
    if (canSet) {
      expected = changed;
      exists = true;
      requireValue(file, key, std::string(trimmed(value)));
      require(static_cast<bool>(file.set(key, value)), "not set a second time", key);
    }
    if (isFile && exists)
      require(contents(home.path()) == expected.text(), "unexpected contents of the file", key);
    home.requireFolderState(parsed.type);
  }
}

}  // namespace lumowatt::fuzz
