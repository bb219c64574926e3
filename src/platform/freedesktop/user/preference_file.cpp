#include "platform/freedesktop/user/preference_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <limits>

#include "base/text.h"
#include "platform/freedesktop/user/user_file.h"

namespace lumowatt::freedesktop {

namespace {

/// Position of a value in a text.
struct Span {
  std::size_t start;
  std::size_t length;
};

/// Returns the position of the value in the first line with the key, without the line feed.
std::optional<Span> findValue(std::string_view text, std::string_view key) {
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    const std::string_view line = text.substr(start, end - start);
    const std::size_t sign = line.find('=');
    if (sign != std::string_view::npos && trimmed(line.substr(0, sign)) == key) {
      return Span{start + sign + 1, line.size() - sign - 1};
    }
    start = end + 1;
  }
  return std::nullopt;
}

char lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::int64_t integer(std::string_view value) {
  std::int64_t number = 0;
  const auto result = std::from_chars(value.data(), value.data() + value.size(), number);
  if (result.ec != std::errc::result_out_of_range) return number;
  using Limits = std::numeric_limits<std::int64_t>;
  return value.starts_with('-') ? Limits::min() : Limits::max();
}

/// Returns whether the value is an integer other than 0.
bool isNonZeroInteger(std::string_view value) {
  if (value.starts_with('-') || value.starts_with('+')) value.remove_prefix(1);
  return value.find_first_not_of("0123456789") == std::string_view::npos &&
         value.find_first_not_of('0') != std::string_view::npos;
}

bool boolean(std::string_view value) {
  constexpr std::array<std::string_view, 3> yes{"true", "yes", "on"};
  std::string text(value);
  std::ranges::transform(text, text.begin(), lower);
  return isNonZeroInteger(text) || std::ranges::find(yes, text) != yes.end();
}

}  // namespace

std::vector<std::optional<StoredPreference>> PreferenceFile::read(
    const std::vector<std::string_view>& keys) const {
  const std::string text = readUserFile(path_).text.value_or("");
  std::vector<std::optional<StoredPreference>> values;
  for (const std::string_view key : keys) {
    const auto span = findValue(text, key);
    if (!span) {
      values.emplace_back();
      continue;
    }
    const std::string_view value =
        trimmed(std::string_view(text).substr(span->start, span->length));
    values.emplace_back(StoredPreference{integer(value), boolean(value)});
  }
  return values;
}

Result<> PreferenceFile::set(std::string_view key, std::string_view value) const {
  if (path_.empty()) return Failure{"neither XDG_CONFIG_HOME nor HOME is set"};
  const FileContents file = readUserFile(path_);
  if (file.exists && !file.text) return Failure{"cannot read " + path_};
  std::string text = file.text.value_or("");
  if (const auto span = findValue(text, key)) {
    text.replace(span->start, span->length, value);
  } else {
    if (!text.empty() && !text.ends_with('\n')) text += '\n';
    text.append(key).append("=").append(value).append("\n");
  }
  if (text.size() > userFileLimit) return systemFailure(EFBIG);
  return replaceUserFile(path_, text);
}

}  // namespace lumowatt::freedesktop
