#include "engine/page_findings.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/search_run.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

void Fill(ByteBuffer& buffer, const std::string& text) {
  buffer.SetSize(0);
  buffer.Reserve(text.size());
  text.copy(buffer.data(), text.size());
  buffer.SetSize(text.size());
}

// The place of a byte, found from the front each time.
PagePlace PlainPlace(const std::string& text, bool utf8, std::size_t offset) {
  PagePlace place{1, 1};
  for (std::size_t i = utf8 && text.starts_with("\xEF\xBB\xBF") ? 3 : 0; i < offset; ++i) {
    const bool line_end = text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n");
    const bool character = !utf8 || (text[i] & 0xC0) != 0x80;
    if (line_end) {
      place = {place.line + 1, 1};
    } else if (character) {
      ++place.column;
    }
  }
  return place;
}

TEST(PagePlaces, AgreeWithCountingFromTheFrontWhateverIsEdited) {
  std::mt19937 random(11);
  ByteBuffer buffer;
  for (int round = 0; round < 200; ++round) {
    const std::vector<std::string> pieces = {
        "\r\n", "\n", "\r", round % 3 == 0 ? "\xC3\xA9" : "\xE9", "a", std::string(random() % 700, 'x')};
    const auto text_of = [&](std::size_t count) {
      std::string text;
      while (text.size() < count) text += pieces[random() % pieces.size()];
      return text;
    };
    std::string plain = (round % 2 == 0 ? "\xEF\xBB\xBF" : "") + text_of(random() % 9000);
    Fill(buffer, plain);
    PageText page(buffer);
    const bool utf8 = page.Encoding() == PageEncoding::kUtf8;
    PagePlaces places;
    std::size_t at = 0;
    for (int step = 0; step < 60; ++step) {
      at = step % 20 == 19 ? random() % (plain.size() + 1) : std::min(at + random() % 300, plain.size());
      at = page.CharacterAtOrBefore(at);
      if (at > 0 && at < 3) at = 3;  // within the mark is no place
      const PagePlace place = places.At(page, std::min(at, plain.size()));
      const PagePlace expected = PlainPlace(plain, utf8, std::min(at, plain.size()));
      ASSERT_EQ(place.line, expected.line) << round << " " << at;
      ASSERT_EQ(place.column, expected.column) << round << " " << at;
      if (step % 3 != 0 || plain.size() < 4) continue;
      const std::size_t begin =
          page.CharacterAtOrBefore(std::max<std::size_t>(3, at - std::min<std::size_t>(at, random() % 30)));
      const std::size_t end = page.CharacterAtOrAfter(std::min(begin + random() % 40, plain.size()));
      const std::string text = text_of(random() % 20);
      page.Replace(begin, end, text);
      plain.replace(begin, end - begin, text);
      places.NoteChange(begin);
    }
  }
}

struct Noted {
  std::string file_and_place;
  FindingKind kind;
  std::string message;
  std::string found;
  std::optional<std::string> proposal;
};

class PageFindingsOfRuns : public testing::Test {
 protected:
  PageFindingsOfRuns() {
    options.dirList = "/s";
    options.ShowEach = false;
    host.wants_findings = true;
  }
  void ExpectNoted(const std::vector<Noted>& expected) {
    host.findings.clear();
    SearchRun(files, host, {}, options, state);
    ASSERT_EQ(host.findings.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const FindingRecord& found = host.findings[i];
      const std::string place =
          ":" + std::to_string(found.place.line) + ":" + std::to_string(found.place.column);
      EXPECT_EQ(found.file + (found.place.line == 0 ? "" : place), expected[i].file_and_place);
      EXPECT_EQ(found.kind, expected[i].kind) << i;
      EXPECT_EQ(found.message, expected[i].message);
      EXPECT_EQ(found.found, expected[i].found);
      EXPECT_EQ(found.proposal, expected[i].proposal);
    }
  }

  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  RunState state;
};

TEST_F(PageFindingsOfRuns, OfLinksNameTheLinkAndEachUpperCaseFileOnce) {
  options.function = Function::kLinks;
  const std::string upper =
      "Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!";
  files.contents["/s/B.htm"] = "";
  files.contents["/s/a.htm"] =
      "<a\r\nhref='no.htm?x=1'>\xE9 <a href=#gone> <a href='file:x'>\n<a href='B.htm'> <a href='B.htm#y'>";
  ExpectNoted(
      {{"/s/a.htm:2:7", FindingKind::kMissingFile, "No such file or directory: /s/no.htm", "no.htm?x=1", {}},
       {"/s/a.htm:2:29", FindingKind::kMissingAnchor, "No corresponding anchor", "#gone", {}},
       {"/s/a.htm:2:45", FindingKind::kFileLink, "Link to internal file!", "file:x", {}},
       {"/s/a.htm:3:10", FindingKind::kUpperCaseLink, upper, "B.htm", {}},
       {"/s/B.htm",
        FindingKind::kUpperCaseFile,
        "Found UPPERcase characters in a linked file's filename!",
        "B.htm",
        {}},
       {"/s/a.htm:3:27", FindingKind::kUpperCaseLink, upper, "B.htm#y", {}},
       {"/s/a.htm:3:27", FindingKind::kMissingAnchor, "No corresponding anchor", "B.htm#y", {}}});
}

TEST_F(PageFindingsOfRuns, HaveTheirPlaceInThePageAsItWasEditedUntilThen) {
  options.function = Function::kLinks;
  options.ShowEach = true;
  files.contents["/s/a.htm"] = "<a href='x'>.....................<a href='#y'>";
  host.answers = {{kReplace, "\n\n<a href='#'>.....................<a href='#y'>"}};
  ExpectNoted({{"/s/a.htm:1:10", FindingKind::kMissingFile, "No such file or directory: /s/x", "x", {}},
               {"/s/a.htm:3:43", FindingKind::kMissingAnchor, "No corresponding anchor", "#y", {}}});
}

TEST_F(PageFindingsOfRuns, OfTextsHaveTheReplacementAsItIsProposed) {
  options.function = Function::kReplace;
  options.SearchTekst = "foo bar";
  options.ReplaceText = "x y";
  options.ShowEach = true;
  const std::string page = "foo bar\n foo\nbar";
  files.contents["/s/a.htm"] = page;
  ExpectNoted({{"/s/a.htm:1:1", FindingKind::kText, "Found", "foo bar", "x y"},
               {"/s/a.htm:2:2", FindingKind::kText, "Found", "foo\nbar", "x\ny"}});
  options.ShowEach = false;  // then it is as it is written
  ExpectNoted({{"/s/a.htm:1:1", FindingKind::kText, "Found", "foo bar", "x y"},
               {"/s/a.htm:2:2", FindingKind::kText, "Found", "foo\nbar", "x y"}});
  options.function = Function::kSearch;
  options.SearchTekst = "y";
  ExpectNoted({{"/s/a.htm:1:3", FindingKind::kText, "Found", "y", {}},
               {"/s/a.htm:2:4", FindingKind::kText, "Found", "y", {}}});
}

TEST_F(PageFindingsOfRuns, OfColoursAndExternalLinksAreAsTheyStandInThePage) {
  files.contents["/s/a.htm"] =
      "<body text='#aaBBcc' link='#fff'>\n<font color='#12'> href='http://x/?q' <font color=\"#ABCDEF01\"";
  options.function = Function::kColours;
  const std::string unsafe = "Not a web safe colour";
  ExpectNoted({{"/s/a.htm:1:13", FindingKind::kUnsafeColour, unsafe, "#aaBBcc", {}},
               {"/s/a.htm:1:28", FindingKind::kUnsafeColour, unsafe, "#fff", {}},
               {"/s/a.htm:2:14", FindingKind::kUnsafeColour, unsafe, "#12", {}},
               {"/s/a.htm:2:52", FindingKind::kUnsafeColour, unsafe, "#ABCDEF", {}}});
  options.function = Function::kExternal;
  ExpectNoted({{"/s/a.htm:2:26", FindingKind::kExternalLink, "External link", "http://x/", {}}});
}

}  // namespace
}  // namespace tessaril
