#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

/// Conversion of the release notes in a changelog to metainfo for software centers.
namespace lumowatt::release_notes {

/// A heading, a paragraph or an item of a list, in Markdown and without line breaks.
struct Block {
  enum class Kind { heading, paragraph, item };
  Kind kind;
  std::string text;

  friend bool operator==(const Block&, const Block&) = default;
};

struct Release {
  std::string version;  ///< numbers separated by dots
  std::string date;     ///< YYYY-MM-DD
  std::vector<Block> notes;

  friend bool operator==(const Release&, const Release&) = default;
};

/// Placeholder for the releases in a template.
inline constexpr std::string_view placeholder = "@RELEASES@";

/// Returns the releases of a changelog in the format of Keep a Changelog, in the order of the
/// changelog. Omits unreleased changes, and headings without text below them. Fails if a heading is
/// invalid or repeats a version, with the line number in the reason. Also fails if the changelog
/// contains no release.
Result<std::vector<Release>> parse(std::string_view changelog);

/// Converts Markdown to the contents of an AppStream element. Code becomes a code element. A link
/// becomes its text, followed by the address if that is an HTTP or HTTPS address. Everything else
/// is escaped and otherwise unchanged.
std::string inlineMarkup(std::string_view markdown);

/// Returns the AppStream element that lists the releases. All lines except the first are indented
/// to fit into the component element.
std::string releasesElement(const std::vector<Release>& releases);

/// Returns the template `source` with the releases instead of the placeholder. Fails unless the
/// template contains exactly one placeholder.
Result<std::string> metainfo(std::string_view source, const std::vector<Release>& releases);

}  // namespace lumowatt::release_notes
