#include "settings/settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <utility>
#include <vector>

#include "engine/characters.h"

namespace tessaril {
namespace {

constexpr std::string_view kSample =
    "[LastDir]\r\n   LastDir = /home/kaj\r\n[Font]\r\n   Size = 8.25\r\n   Name = Sans\r\n"
    "[CGI]\r\n   CGI = cgi\r\n[BrowserFirst]\r\n   BrowserFirst = 0\r\n"
    "[UPPERcaseFilenames]\r\n   UPPERcaseFilenames = -1\r\n\r\n";

std::string Edited(std::string_view from, std::string_view to) {
  std::string text(kSample);
  return text.replace(text.find(from), from.size(), to);
}

std::string Told(const Settings& settings) {
  std::ostringstream told;
  told << settings.LastDir << '|' << settings.PrinterFontSize + 0 << '|' << settings.PrinterFontName << '|'
       << settings.CGIname << (settings.BrowserFirst ? "|browser" : "|editor")
       << (settings.UCfilename ? "|upper" : "|lower");
  return told.str();
}

std::vector<std::string> Parts(std::string_view text) {
  std::vector<std::string> parts;
  std::istringstream stream{std::string(text)};
  for (std::string part; std::getline(stream, part, '|');) parts.push_back(part);
  return parts;
}

using Rows = std::vector<std::pair<std::string, std::string>>;  // content and what is read of it

void ExpectRead(const Rows& rows, bool damaged) {
  for (const auto& [content, settings] : rows) {
    const SettingsReading reading = ReadSettings(content);
    EXPECT_EQ(Told(reading.settings), settings) << content.substr(0, 300);
    EXPECT_EQ(reading.damaged, damaged) << content.substr(0, 300);
  }
}

TEST(Settings, AreReadBySearches) {
  const Rows rows = {
      {std::string(kSample), "/home/kaj/|8.25|Sans| cgi|editor|upper"},
      {Edited(" /home/kaj", "   /srv/a  b/  "), "/srv/a  b/|8.25|Sans| cgi|editor|upper"},
      {Edited(" /home/kaj", ""), "/|8.25|Sans| cgi|editor|upper"},
      {Edited("8.25", "1e99"), "/home/kaj/|3.40282e+38|Sans| cgi|editor|upper"},
      {Edited(" Sans", "Arial = Narrow "), "/home/kaj/|8.25|Arial = Narrow| cgi|editor|upper"},
      {Edited(" cgi", "  my cgi "), "/home/kaj/|8.25|Sans|  my cgi |editor|upper"},
      {Edited("= 0", "= 1"), "/home/kaj/|8.25|Sans| cgi|browser|upper"},
      {Edited("= 0", "= yes"), "/home/kaj/|8.25|Sans| cgi|editor|upper"},
      {Edited("-1", "1"), "/home/kaj/|8.25|Sans| cgi|editor|lower"},
      {Edited("-1", "- 1.0 \xFF"), "/home/kaj/|8.25|Sans| cgi|editor|upper"},
      // The folder's bytes stay, other values that are no UTF-8 are 8-bit.
      {Edited("kaj", "\xE9"), "/home/\xE9/|8.25|Sans| cgi|editor|upper"},
      {Edited("Sans", "Caf\xE9 \x80"), "/home/kaj/|8.25|Caf\xC3\xA9 \xE2\x82\xAC| cgi|editor|upper"},
      {Edited("cgi", "\xC3\xA9"), "/home/kaj/|8.25|Sans| \xC3\xA9|editor|upper"},
      // The sections stand in any order; a key may stand in its header's line.
      {"[UPPERcaseFilenames]=-1\r\n[BrowserFirst]=0\r\n[CGI]=c\r\n[Font]Size=9\r\nName=B\r\n[LastDir]=/a\r\n",
       "/a/|9|B|c|editor|upper"},
  };
  ExpectRead(rows, false);
}

TEST(Settings, AreTakenFromTheDefaultTextWhereASearchFails) {
  std::string lf_only(kSample);
  std::erase(lf_only, '\r');
  const std::string defaults = "c:\\/|10|Arial| CGI-bin|browser|lower";
  const Rows rows = {
      {"", defaults},
      {std::string(5000000, '\0'), defaults},
      {lf_only, defaults},
      {Edited("[LastDir]", "[lastdir]"), defaults},
      {"[LastDir]\r\n   LastDir /a\r\n", "[LastDir]/|10|Arial| CGI-bin|browser|lower"},
      {Edited("[Font]", "[font]"), "/home/kaj/|10|Arial| CGI-bin|browser|lower"},
      {Edited("Size", "size"), "/home/kaj/|0|Arial| CGI-bin|browser|lower"},
      {Edited("Name", "name"), "/home/kaj/|8.25|c:\\| CGI-bin|browser|lower"},
      {"[LastDir]=/a\r\n[Font]Size=9\r\nName", "/a/|9|[LastDir]| CGI-bin|browser|lower"},
      {"[LastDir]=/a\r\n[Font]Size=9\r\nName=B", "/a/|9|Arial| CGI-bin|browser|lower"},
      {Edited("[CGI]", "[cgi]"), "/home/kaj/|8.25|Sans| CGI-bin|browser|lower"},
      {Edited("[BrowserFirst]", ""), "/home/kaj/|8.25|Sans| cgi|browser|lower"},
      // Neither "=" nor line end of the last three sections is guessed from elsewhere.
      {"[BrowserFirst]=0\r\n[LastDir]=/a\r\n[Font]Size=9\r\nName=B\r\n[CGI]\r\n",
       "/a/|9|B| CGI-bin|browser|lower"},
      {Edited("-1\r\n\r\n", "-1\n"), "/home/kaj/|8.25|Sans| cgi|editor|lower"},
  };
  ExpectRead(rows, true);
}

TEST(Settings, NumbersAreReadFromTheStart) {
  constexpr double kMost = std::numeric_limits<double>::max();
  const std::string zeros(400, '0');
  const std::pair<double, std::string> rows[] = {
      {0, "|.|.e1|e5|inf|-nan|--1|0x10|&|&17|&H-1|-&H1|0e999|1e-99999999999999999999"},
      {0, "0." + zeros + "1|1" + zeros + "e-800"},
      {1, "1|1,5|1\r2|1e+| & h 1 g|0." + zeros + "1e401"},
      {1234, " 1 2\t3\n4|+1234.|1.234e3|1234.0.5|12340e-1e5"},
      {-0.25, "-.25|- 0.25x|-25E-2"},
      {65535, "&HFFFF|&Hffffg|&HFFFF:|&O177777|&O1777778"},
      {kMost, "1e999|1e99999999999999999999|1" + zeros + "|0." + zeros + "1e800|&H1" + zeros},
      {-kMost, "-1e999"},
  };
  for (const auto& [value, texts] : rows) {
    for (const std::string& text : Parts(texts)) EXPECT_EQ(NumericValue(text), value) << text;
  }
}

TEST(Settings, AreWrittenAsTwelveLines) {
  EXPECT_EQ(DefaultSettingsText().size(), 180U);
  Settings settings{"/home/kaj", 8.25F, "Sans", "cgi", false, true};
  EXPECT_EQ(SettingsText(settings), kSample);
  const char* const folders[][2] = {
      {"/a/", "/a/"}, {"/a ", "/a /"}, {"/\xE9", "/\xE9"}, {"/a\n/b", "c:\\"}, {"/a\r", "c:\\"}};
  for (const auto& row : folders) {
    settings.LastDir = row[0];
    EXPECT_EQ(SettingsText(settings), Edited("/home/kaj", row[1]));
  }
  settings = {"/home/kaj", 8.25F, " DejaVu\r\n[CGI] ", "\n", false, true};
  EXPECT_EQ(Told(ReadSettings(SettingsText(settings)).settings),
            "/home/kaj/|8.25|DejaVu  [CGI]|  |editor|upper");
}

TEST(Settings, SizesAreWrittenShortAndReadBack) {
  const std::pair<float, std::string> rows[] = {
      {10, "10"},
      {0.5F, "0.5"},
      {0, "0"},
      {-0.0F, "0"},
      {123456796e6F, "123456796491776"},
      {std::nextafter(1e15F, 0.0F), "999999919882240"},
      {1e15F, "1e+15"},
      {std::numeric_limits<float>::max(), "3.4028235e+38"},
      {7.038531e-26F, "0.00000000000000000000000007038531"},  // a double in between would round it down
      {-std::numeric_limits<float>::denorm_min(), "-0.000000000000000000000000000000000000000000001"},
  };
  for (const auto& [size, digits] : rows) {
    const std::string text = SettingsText({"/", size, "", "", true, false});
    EXPECT_NE(text.find("   Size = " + digits + "\r\n"), std::string::npos) << text;
    EXPECT_EQ(ReadSettings(text).settings.PrinterFontSize, size) << digits;
  }
  for (const float size : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
    EXPECT_EQ(ReadSettings(SettingsText({"/", size, "", "", true, false})).settings.PrinterFontSize, 10);
  }
}

std::string Pick(std::minstd_rand& random, const std::vector<std::string>& pieces, std::size_t most) {
  std::string text;
  for (std::size_t count = random() % (most + 1); count > 0; --count)
    text += pieces[random() % pieces.size()];
  return text;
}

TEST(Settings, AnyBytesGiveValuesThatAreWrittenAndReadBack) {
  std::vector<std::string> pieces = Parts(
      "[LastDir]|LastDir|[Font]|Size|Name|[CGI]|CGI|[BrowserFirst]|[UPPERcaseFilenames]|=|=|\r|\n|&H|9");
  pieces.insert(pieces.end(), 4, "\r\n");
  for (int c = 0; c < 256; c += 5) pieces.emplace_back(1, static_cast<char>(c));
  std::minstd_rand random(9);
  int whole = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string content = i % 2 == 0 ? std::string(kSample) : Pick(random, pieces, 200);
    for (int edits = 0; edits < 3 && !content.empty(); ++edits) {
      content.replace(random() % content.size(), random() % 4, Pick(random, pieces, 2));
    }
    const SettingsReading reading = ReadSettings(content);
    whole += reading.damaged ? 0 : 1;
    ASSERT_TRUE(std::isfinite(reading.settings.PrinterFontSize)) << content;
    ASSERT_TRUE(IsUtf8(reading.settings.PrinterFontName + reading.settings.CGIname)) << content;
    const std::string text = SettingsText(reading.settings);
    const SettingsReading again = ReadSettings(text);
    ASSERT_FALSE(again.damaged) << text;
    if (Told(reading.settings).find_first_of("[\r\n") != std::string::npos) continue;
    Settings expected = reading.settings;
    expected.CGIname.insert(0, " ");
    ASSERT_EQ(Told(again.settings), Told(expected)) << text;
  }
  EXPECT_GT(whole, 1000);
}

}  // namespace
}  // namespace tessaril
