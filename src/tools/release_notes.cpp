#include "tools/release_notes.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <optional>
#include <sstream>
#include <utility>

#include "base/text.h"

namespace lumowatt::release_notes {

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Returns whether the text consists of numbers separated by dots.
bool isVersion(std::string_view text) {
  bool endsNumber = false;
  for (const char character : text) {
    if (character == '.' ? !endsNumber : !isDigit(character)) return false;
    endsNumber = character != '.';
  }
  return endsNumber;
}

std::optional<unsigned> number(std::string_view digits) {
  unsigned value = 0;
  const char* const end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, value).ptr != end) return std::nullopt;
  return value;
}

/// Returns whether the text is a valid calendar date in the form YYYY-MM-DD.
bool isDate(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  const auto year = number(text.substr(0, 4));
  const auto month = number(text.substr(5, 2));
  const auto day = number(text.substr(8));
  if (!year || !month || !day) return false;
  return std::chrono::year_month_day(std::chrono::year(static_cast<int>(*year)),
                                     std::chrono::month(*month), std::chrono::day(*day))
      .ok();
}

/// Returns the level of a heading, which is its number of "#", or 0 if the line is text. A line
/// that starts with two or more "#" is a heading even without a space, so that a version with a
/// missing space is not ignored.
std::size_t headingLevel(std::string_view line) {
  const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
  return level == 1 && !line.starts_with("# ") ? 0 : level;
}

bool isItem(std::string_view line) {
  return line.starts_with("- ") || line.starts_with("* ") || line.starts_with("+ ");
}

/// Reads a changelog line by line.
class Parser {
 public:
  Result<> readLine(std::string_view line) {
    const std::size_t level = headingLevel(line);
    const std::string_view heading = trimmed(line.substr(level));
    if (level == 2) return beginSection(heading);
    if (!isRelease_) return {};
    if (level == 0) {
      addText(line);
    } else if (level == 3) {
      addHeading(heading);
    } else {
      return Failure{"a heading in a version's section begins with \"###\""};
    }
    return {};
  }

  std::vector<Release> finish() {
    for (Release& release : releases_) removeEmptyHeading(release.notes);
    return std::move(releases_);
  }

 private:
  Result<> beginSection(std::string_view heading) {
    isRelease_ = heading != "Unreleased";
    if (!isRelease_) return {};
    constexpr std::string_view separator = " - ";
    const std::size_t end = heading.find(separator);
    const std::string version(heading.substr(0, end));
    if (end == std::string_view::npos || !isVersion(version)) {
      return Failure{R"(a version's heading is "## Unreleased" or "## VERSION - DATE")"};
    }
    const std::string date(heading.substr(end + separator.size()));
    if (!isDate(date)) return Failure{"\"" + date + "\" is not a date as YYYY-MM-DD"};
    if (std::ranges::find(releases_, version, &Release::version) != releases_.end()) {
      return Failure{"version " + version + " was announced above"};
    }
    releases_.push_back({version, date, {}});
    continues_ = false;
    return {};
  }

  void addHeading(std::string_view heading) {
    std::vector<Block>& notes = releases_.back().notes;
    removeEmptyHeading(notes);
    notes.push_back({Block::Kind::heading, std::string(heading)});
    continues_ = false;
  }

  void addText(std::string_view line) {
    std::vector<Block>& notes = releases_.back().notes;
    if (isItem(line)) {
      notes.push_back({Block::Kind::item, std::string(trimmed(line.substr(2)))});
    } else if (continues_ && !line.empty()) {
      notes.back().text += " " + std::string(line);
    } else if (!line.empty()) {
      notes.push_back({Block::Kind::paragraph, std::string(line)});
    }
    continues_ = !line.empty();
  }

  /// Removes the last heading if nothing follows it.
  static void removeEmptyHeading(std::vector<Block>& notes) {
    if (!notes.empty() && notes.back().kind == Block::Kind::heading) notes.pop_back();
  }

  std::vector<Release> releases_;
  bool isRelease_ = false;  ///< whether the current line belongs to the last release
  bool continues_ = false;  ///< whether text in the next line continues the last block
};

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

/// First token of a Markdown text (a code span, a link or a single character), converted to XML.
struct Passage {
  std::size_t length;  ///< in the Markdown text
  std::string markup;
};

std::optional<Passage> codeAt(std::string_view text) {
  if (!text.starts_with('`')) return std::nullopt;
  const std::size_t end = text.find('`', 1);
  if (end == std::string_view::npos || end == 1) return std::nullopt;
  return Passage{end + 1, "<code>" + escaped(text.substr(1, end - 1)) + "</code>"};
}

std::optional<Passage> linkAt(std::string_view text) {
  if (!text.starts_with('[')) return std::nullopt;
  constexpr std::string_view separator = "](";
  const std::size_t middle = text.find_first_of("[]", 1);
  if (middle == std::string_view::npos || !text.substr(middle).starts_with(separator)) {
    return std::nullopt;
  }
  const std::size_t end = text.find(')', middle);
  if (end == std::string_view::npos) return std::nullopt;
  const std::size_t begin = middle + separator.size();
  const std::string_view address = text.substr(begin, end - begin);
  std::string markup = inlineMarkup(text.substr(1, middle - 1));
  if (address.starts_with("http://") || address.starts_with("https://")) {
    markup += " (" + escaped(address) + ")";
  }
  return Passage{end + 1, std::move(markup)};
}

/// Returns the blocks as XML elements, one per line. Wraps adjacent items in a list.
std::string noteElements(const std::vector<Block>& notes) {
  const std::string indentation(8, ' ');
  std::string result;
  bool inList = false;
  const auto setInList = [&](bool value) {
    if (value != inList) result += indentation + (value ? "<ul>\n" : "</ul>\n");
    inList = value;
  };
  for (const auto& [kind, text] : notes) {
    setInList(kind == Block::Kind::item);
    if (inList) {
      result += indentation + "  <li>" + inlineMarkup(text) + "</li>\n";
    } else {
      const std::string_view end = kind == Block::Kind::heading ? ":" : "";
      result += indentation + "<p>" + inlineMarkup(text) + std::string(end) + "</p>\n";
    }
  }
  setInList(false);
  return result;
}

}  // namespace

Result<std::vector<Release>> parse(std::string_view changelog) {
  Parser parser;
  std::istringstream lines{std::string(changelog)};
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (const Result<> read = parser.readLine(trimmed(line)); !read) {
      return Failure{"line " + std::to_string(number) + ": " + read.failure().reason};
    }
  }
  std::vector<Release> releases = parser.finish();
  if (releases.empty()) return Failure{"there is no released version"};
  return releases;
}

std::string inlineMarkup(std::string_view markdown) {
  std::string result;
  while (!markdown.empty()) {
    std::optional<Passage> passage = codeAt(markdown);
    if (!passage) passage = linkAt(markdown);
    if (!passage) passage = {1, escaped(markdown.substr(0, 1))};
    result += passage->markup;
    markdown.remove_prefix(passage->length);
  }
  return result;
}

std::string releasesElement(const std::vector<Release>& releases) {
  std::string result = "<releases>\n";
  for (const Release& release : releases) {
    result += "    <release version=\"" + release.version + "\" date=\"" + release.date +
              R"(" type="stable")";
    if (release.notes.empty()) {
      result += "/>\n";
    } else {
      result += ">\n      <description>\n" + noteElements(release.notes) +
                "      </description>\n    </release>\n";
    }
  }
  return result + "  </releases>";
}

Result<std::string> metainfo(std::string_view source, const std::vector<Release>& releases) {
  const std::size_t place = source.find(placeholder);
  if (place == std::string_view::npos) {
    return Failure{"there is no " + std::string(placeholder)};
  }
  const std::string_view rest = source.substr(place + placeholder.size());
  if (rest.find(placeholder) != std::string_view::npos) {
    return Failure{"there is more than one " + std::string(placeholder)};
  }
  return std::string(source.substr(0, place)) + releasesElement(releases) + std::string(rest);
}

}  // namespace lumowatt::release_notes
