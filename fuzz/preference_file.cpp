/// A file of preferences and what is done with it. The first lines are that: `mode=2` sets, `mode`
/// asks, and "<folder", "<pipe", "<link", "<missing" or "<1000" make the file a folder, a pipe, at
/// the end of a link, missing, or larger by so many bytes. After a line "--" comes what is in it.

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

constexpr auto none = std::string_view::npos;

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  while (!text.empty() && blanks.find(text.front()) != none) text.remove_prefix(1);
  while (!text.empty() && blanks.find(text.back()) != none) text.remove_suffix(1);
  return text;
}

/// What a file holds as it should be: each line without its end.
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
      line.replace(line.find('=') + 1, none, value);
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
    return line.find('=') != none && trimmed(split(line, '=').before) == key;
  }

  std::vector<std::string> lines_;
};

std::int64_t expectedInteger(std::string_view text) {
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t end = std::min(text.find_first_not_of("0123456789", sign), text.size());
  std::uint64_t magnitude = 0;
  const std::uint64_t most = std::uint64_t{1} << 63U;  // that of the lowest number
  for (const char digit : text.substr(sign, end - sign)) {
    const auto next = static_cast<std::uint64_t>(digit - '0');
    magnitude = magnitude > (most - next) / 10 ? most : magnitude * 10 + next;
  }
  if (sign == 1) return static_cast<std::int64_t>(~magnitude + 1);
  return static_cast<std::int64_t>(std::min(magnitude, most - 1));
}

bool expectedTruth(std::string text) {
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
  require(file >= 0, "the file cannot be opened", path);
  std::string text(sizeLimit * 2 + 1, '\0');
  const ssize_t length = ::read(file, text.data(), text.size());
  ::close(file);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
  return text;
}

enum class Place { file, folder, pipe, link, missing };

/// The folder that a user has, with the file in it.
class Home {
 public:
  explicit Home(std::string folder) : folder_(std::move(folder)) {}

  std::string path() const { return folder_ + "/preferences"; }

  void fill(Place place, std::string_view text) const {
    for (const auto& old : std::filesystem::directory_iterator(folder_)) {
      std::filesystem::remove_all(old.path());
    }
    const std::string aim = folder_ + "/aim";
    if (place == Place::folder) ::mkdir(path().c_str(), 0700);
    if (place == Place::pipe) ::mkfifo(path().c_str(), 0600);
    if (place == Place::file) write(path(), text);
    if (place != Place::link) return;
    write(aim, text);
    require(::symlink(aim.c_str(), path().c_str()) == 0, "no link can be made", path());
  }

  /// Requires that nothing but the file is there, and that it is still what it was.
  void requireTidy(Place place) const {
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      const std::string name = entry.path().filename();
      const bool isExpected = name == "preferences" || (name == "aim" && place == Place::link);
      require(isExpected, "something is left in the folder", name);
    }
    struct stat status {};
    if (::lstat(path().c_str(), &status) != 0) {
      require(place == Place::missing, "the file is gone");
      return;
    }
    const mode_t kind = status.st_mode & S_IFMT;
    const mode_t access = status.st_mode & 07777U;
    if (place == Place::folder) require(kind == S_IFDIR, "no folder any more");
    if (place == Place::pipe) require(kind == S_IFIFO, "no pipe any more");
    if (place == Place::link) require(kind == S_IFLNK, "no link any more");
    if (place == Place::file) require(kind == S_IFREG && access == permissions, "permissions");
    if (place == Place::missing) require(kind == S_IFREG && access == 0600, "for others as well");
  }

 private:
  static void write(const std::string& path, std::string_view text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    const ssize_t written = ::write(file, text.data(), text.size());
    require(written == static_cast<ssize_t>(text.size()), "no file can be made", path);
    ::fchmod(file, permissions);
    ::close(file);
  }

  std::string folder_;
};

/// Requires that the file says what it should under the key.
void requireValue(const PreferenceFile& file, const std::string& key,
                  const std::optional<std::string>& expected) {
  const auto value = file.read({key}).at(0);
  require(value.has_value() == expected.has_value(), "has", key);
  if (!expected) return;
  require(value->integer == expectedInteger(*expected), "integer", key);
  require(value->boolean == expectedTruth(*expected), "boolean", key);
}

/// An input.
struct Story {
  explicit Story(std::string_view input) {
    while (!input.empty()) {
      const auto [line, rest] = split(input, '\n');
      input = rest;
      if (line == "--") break;
      if (!line.starts_with('<')) {
        steps.push_back(line);
        continue;
      }
      const std::string_view word = line.substr(1);
      if (word == "folder") place = Place::folder;
      if (word == "pipe") place = Place::pipe;
      if (word == "link") place = Place::link;
      if (word == "missing") place = Place::missing;
      std::from_chars(word.data(), word.data() + word.size(), extra);
    }
    text = std::string(std::min(extra, sizeLimit + 100), '#') + std::string(input);
    text.resize(std::min(text.size(), sizeLimit * 2));
    if (place == Place::missing) text.clear();
  }

  Place place = Place::file;
  std::size_t extra = 0;
  std::vector<std::string_view> steps;
  std::string text;
};

}  // namespace

void tryInput(std::string_view input) {
  static const ScratchFolder folder;
  const Home home(folder.path());
  const Story story(input);
  home.fill(story.place, story.text);
  const PreferenceFile file(home.path());
  ExpectedFile expected(story.text);
  const bool isFile = story.place != Place::folder && story.place != Place::pipe;
  bool isThere = story.place != Place::missing;
  for (const std::string_view step : story.steps) {
    const auto [name, text] = split(step, '=');
    const std::string key(trimmed(name));
    const std::string value(text);
    const bool isReadable = isFile && expected.text().size() <= sizeLimit;
    requireValue(file, key, isReadable ? expected.value(key) : std::nullopt);
    if (name.size() == step.size()) continue;

    ExpectedFile changed = expected;
    changed.set(key, value);
    const bool isPossible = isReadable && changed.text().size() <= sizeLimit;
    const bool isSet(file.set(key, value));
    require(isSet == isPossible, isPossible ? "not set" : "set nevertheless", key);
    if (isPossible) {
      expected = changed;
      isThere = true;
      requireValue(file, key, std::string(trimmed(value)));
      require(static_cast<bool>(file.set(key, value)), "not set a second time", key);
    }
    if (isFile && isThere) require(contents(home.path()) == expected.text(), "another text", key);
    home.requireTidy(story.place);
  }
}

}  // namespace lumowatt::fuzz
