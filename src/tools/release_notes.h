#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

/// The release notes in a changelog, as software centers show them.
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

/// What stands in a template where the releases are to be.
inline constexpr std::string_view placeholder = "@RELEASES@";

/// Returns the releases of a changelog that has the form of Keep a Changelog, in its order. Leaves
/// out what is unreleased, and headings with nothing below them. Fails, with the number of the
/// line, where a heading is none of that form or announces a version again, and without a release.
Result<std::vector<Release>> parse(std::string_view changelog);

/// Returns Markdown as the contents of an AppStream element: code is marked, a link is its text,
/// with the address after it if that is one of the web. Everything else is text as it stands.
std::string inlineMarkup(std::string_view markdown);

/// Returns the AppStream element with those releases, indented as a child of the component. Its
/// first line is not indented.
std::string releasesElement(const std::vector<Release>& releases);

/// Returns a template with the releases in the place of the placeholder. Fails unless it has
/// exactly one.
Result<std::string> metainfo(std::string_view source, const std::vector<Release>& releases);

}  // namespace lumowatt::release_notes
