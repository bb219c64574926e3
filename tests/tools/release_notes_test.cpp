#include "tools/release_notes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumowatt::release_notes {

namespace {

Block heading(const std::string& text) { return {Block::Kind::heading, text}; }
Block paragraph(const std::string& text) { return {Block::Kind::paragraph, text}; }
Block item(const std::string& text) { return {Block::Kind::item, text}; }

/// Returns the blocks of a version with the given lines below its heading.
std::vector<Block> notesOf(const std::string& lines) {
  const auto releases = parse("## 1.0.0 - 2026-11-21\n" + lines);
  return releases && releases->size() == 1 ? releases->front().notes : std::vector<Block>();
}

/// Returns the reason why a changelog cannot be parsed, or an empty string if it can.
std::string parseError(const std::string& changelog) {
  const auto releases = parse(changelog);
  return releases ? std::string() : releases.failure().reason;
}

}  // namespace

TEST(ReleaseNotes, ListReleasedVersionsInTheOrderOfTheChangelog) {
  const auto releases = parse(
      "# Changelog\n"
      "\n"
      "What changed.\n"
      "- not of a version\n"
      "\n"
      "## Unreleased\n"
      "\n"
      "### Added\n"
      "- Something new.\n"
      "\n"
      "## 1.9.10 - 2026-12-01\n"
      "### Fixed\n"
      "- Something.\n"
      "\n"
      "## 1.2 - 2024-02-29\n"
      "- The first.\n");
  ASSERT_TRUE(releases);
  EXPECT_EQ(*releases,
            (std::vector<Release>{{"1.9.10", "2026-12-01", {heading("Fixed"), item("Something.")}},
                                  {"1.2", "2024-02-29", {item("The first.")}}}));
}

TEST(ReleaseNotes, OmitUnreleasedChangesBelowAVersion) {
  const auto releases = parse("## 1.0.0 - 2026-11-21\n- One.\n## Unreleased\n- Two.\n");
  ASSERT_TRUE(releases);
  EXPECT_EQ(*releases, (std::vector<Release>{{"1.0.0", "2026-11-21", {item("One.")}}}));
}

TEST(ReleaseNotes, JoinTheLinesOfItemsAndParagraphs) {
  EXPECT_EQ(notesOf("Two lines\n"
                    "of text.\n"
                    "\n"
                    "- An item\n"
                    "  in three\n"
                    "lines.\n"
                    "- Another.\n"
                    "\n"
                    "The end.\n"),
            (std::vector<Block>{paragraph("Two lines of text."), item("An item in three lines."),
                                item("Another."), paragraph("The end.")}));
}

TEST(ReleaseNotes, StartANewParagraphBelowAHeading) {
  EXPECT_EQ(notesOf("- One.\n### Fixed\nA fault.\n"),
            (std::vector<Block>{item("One."), heading("Fixed"), paragraph("A fault.")}));
  const auto releases = parse("## 2 - 2026-12-01\n- Two.\n## 1 - 2026-11-21\nThe first.\n");
  ASSERT_TRUE(releases);
  EXPECT_EQ(*releases, (std::vector<Release>{{"2", "2026-12-01", {item("Two.")}},
                                             {"1", "2026-11-21", {paragraph("The first.")}}}));
}

TEST(ReleaseNotes, CombineItemsOfAllMarkersAndNestedListsInOneList) {
  EXPECT_EQ(notesOf("* One\n"
                    "  - Two\n"
                    "+ Three\n"
                    "-5 degrees\n"),
            (std::vector<Block>{item("One"), item("Two"), item("Three -5 degrees")}));
}

TEST(ReleaseNotes, TreatANumberSignWithoutASpaceAsText) {
  EXPECT_EQ(notesOf("- Mends\n  #12.\n"), std::vector<Block>{item("Mends #12.")});
}

TEST(ReleaseNotes, OmitHeadingsWithoutTextBelow) {
  EXPECT_EQ(notesOf("### Added\n\n### Fixed\n- A fault.\n### Removed\n"),
            (std::vector<Block>{heading("Fixed"), item("A fault.")}));
}

TEST(ReleaseNotes, AcceptWindowsLineEndingsAndNoFinalNewline) {
  const auto releases = parse("## 1.0.0 - 2026-11-21\r\n\r\n### Added\r\n- One\r\n  two");
  ASSERT_TRUE(releases);
  EXPECT_EQ(*releases,
            (std::vector<Release>{{"1.0.0", "2026-11-21", {heading("Added"), item("One two")}}}));
}

TEST(ReleaseNotes, RequireAVersionAndADateInAHeading) {
  const std::string reason = R"(a version's heading is "## Unreleased" or "## VERSION - DATE")";
  for (const char* const text :
       {"## Next", "## 1.0.0", "## 1.0.0 2026-11-21", "## - 2026-11-21", "## v1.0.0 - 2026-11-21",
        "## 1..0 - 2026-11-21", "## .1 - 2026-11-21", "## 1,0 - 2026-11-21", "## 1:0 - 2026-11-21",
        "## 1. - 2026-11-21", "##", "##Next"}) {
    EXPECT_EQ(parseError("# Changelog\n\n" + std::string(text)), "line 3: " + reason) << text;
  }
  EXPECT_EQ(parseError("##1.0.0 - 2026-11-21"), "");
}

TEST(ReleaseNotes, RequireAValidCalendarDate) {
  for (const std::string date :
       {"2026-02-29", "2026-13-01", "2026-00-10", "2026-11-00", "2026-11-31", "21-11-2026",
        "2026-11-1", "2026/11-21", "2026-11/21", "20x6-11-21", "2026-x1-21", "2026-11-2x",
        "2026-1121-", "2026-+1-21", "2026-11-21 x", "soon", "-"}) {
    EXPECT_EQ(parseError("## 1.0.0 - " + date),
              "line 1: \"" + date + "\" is not a date as YYYY-MM-DD");
  }
  EXPECT_EQ(parseError("## 1.0.0 - 2024-02-29\n"), "");
}

TEST(ReleaseNotes, RejectARepeatedVersion) {
  EXPECT_EQ(parseError("## 1.0.0 - 2026-11-21\n- One.\n## 1.0.0 - 2026-11-20\n"),
            "line 3: version 1.0.0 was announced above");
}

TEST(ReleaseNotes, RejectHeadingsOfOtherLevels) {
  const std::string reason = R"(a heading in a version's section begins with "###")";
  EXPECT_EQ(parseError("## 1.0.0 - 2026-11-21\n#### Details\n"), "line 2: " + reason);
  EXPECT_EQ(parseError("## 1.0.0 - 2026-11-21\n\n# Changelog\n"), "line 3: " + reason);
}

TEST(ReleaseNotes, RequireAReleasedVersion) {
  for (const char* const changelog : {"", "# Changelog\n", "## Unreleased\n- One.\n"}) {
    EXPECT_EQ(parseError(changelog), "there is no released version") << changelog;
  }
}

TEST(InlineMarkup, EscapesSpecialCharactersOfXml) {
  EXPECT_EQ(inlineMarkup("a < b && c > \"d\""), "a &lt; b &amp;&amp; c &gt; \"d\"");
  EXPECT_EQ(inlineMarkup("`<&>`"), "<code>&lt;&amp;&gt;</code>");
}

TEST(InlineMarkup, WrapsCodeInACodeElement) {
  EXPECT_EQ(inlineMarkup("`one` and `two`"), "<code>one</code> and <code>two</code>");
  EXPECT_EQ(inlineMarkup("`[a](b)`"), "<code>[a](b)</code>");
}

TEST(InlineMarkup, PreservesUnmatchedBackticks) {
  EXPECT_EQ(inlineMarkup("one ` two"), "one ` two");
  EXPECT_EQ(inlineMarkup("nothing: ``"), "nothing: ``");
  EXPECT_EQ(inlineMarkup("``one`"), "`<code>one</code>");
}

TEST(InlineMarkup, ReplacesALinkByItsTextAndItsWebAddress) {
  EXPECT_EQ(inlineMarkup("see [the docs](docs/a.md)."), "see the docs.");
  EXPECT_EQ(inlineMarkup("[a](http://a.org/?b&c), [d](https://d.org)"),
            "a (http://a.org/?b&amp;c), d (https://d.org)");
  EXPECT_EQ(inlineMarkup("nothing: [](a)."), "nothing: .");
  EXPECT_EQ(inlineMarkup("[`a` <b>](c)"), "<code>a</code> &lt;b&gt;");
}

TEST(InlineMarkup, PreservesBracketsThatAreNotLinks) {
  for (const std::string text : {"[a", "[a]", "[a] (b)", "[a](b", "[]", "a](b)", "[a [b] c"}) {
    EXPECT_EQ(inlineMarkup(text), text);
  }
  EXPECT_EQ(inlineMarkup("[a] [b](c)"), "[a] b");
}

TEST(ReleasesElement, GroupsAdjacentItemsInAList) {
  const std::vector<Block> notes{
      paragraph("Begin & end"), heading("Added"), item("`one`"),   item("two"),
      heading("Fixed"),         item("three"),    paragraph("End")};
  EXPECT_EQ(releasesElement({{"1.1.0", "2026-12-01", notes}}),
            R"(<releases>
    <release version="1.1.0" date="2026-12-01" type="stable">
      <description>
        <p>Begin &amp; end</p>
        <p>Added:</p>
        <ul>
          <li><code>one</code></li>
          <li>two</li>
        </ul>
        <p>Fixed:</p>
        <ul>
          <li>three</li>
        </ul>
        <p>End</p>
      </description>
    </release>
  </releases>)");
}

TEST(ReleasesElement, ClosesTheLastListAndOmitsEmptyDescriptions) {
  EXPECT_EQ(releasesElement({{"1.1.0", "2026-12-01", {item("one")}}, {"1.0.0", "2026-11-21", {}}}),
            R"(<releases>
    <release version="1.1.0" date="2026-12-01" type="stable">
      <description>
        <ul>
          <li>one</li>
        </ul>
      </description>
    </release>
    <release version="1.0.0" date="2026-11-21" type="stable"/>
  </releases>)");
}

TEST(Metainfo, ReplacesThePlaceholderByTheReleases) {
  const auto text = metainfo("<a>\n  @RELEASES@\n</a>\n", {{"1.0.0", "2026-11-21", {}}});
  ASSERT_TRUE(text);
  EXPECT_EQ(*text, R"(<a>
  <releases>
    <release version="1.0.0" date="2026-11-21" type="stable"/>
  </releases>
</a>
)");
}

TEST(Metainfo, RequiresExactlyOnePlaceholder) {
  const auto none = metainfo("<a/>", {});
  ASSERT_FALSE(none);
  EXPECT_EQ(none.failure().reason, "there is no @RELEASES@");
  const auto two = metainfo("@RELEASES@ @RELEASES@", {});
  ASSERT_FALSE(two);
  EXPECT_EQ(two.failure().reason, "there is more than one @RELEASES@");
}

}  // namespace lumowatt::release_notes
