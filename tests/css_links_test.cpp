#include "engine/css_links.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/plain_tokenizer.h"

namespace tessaril {
namespace {

using Links = std::vector<std::string>;

Links Find(const std::string& css) {
  std::vector<std::string_view> found;
  FindCssLinks(css, found);
  return Links(found.begin(), found.end());
}

TEST(CssLinks, AreThoseThatBrowsersFollow) {
  struct Row {
    std::string css;
    Links links;
  };
  const Row rows[] = {
      {"a{b:url(c.png) URL( 'd' )}@import\"e\";@IMPORT/**/ url( f );", {"c.png", "d", "e", "f"}},
      {"/* url(a) */ 'url(b)' \"\\\"url(c)\" a{content:'d'}", {}},
      {"url(a b) url(c\"d) url(e(f) url(\\\n) url(g\\)h) url('i\n')", {"g\\)h"}},
      {"url( j ) url(k", {"j", "k"}},
      {std::string("a\0url(no)", 9), {}},
      {std::string("url(l\0m) url(\x01)", 15), {std::string("l\0m", 3)}},
      {"u\\72l(a) #url(b) myurl(c) url (d) -url(e) 1url(f) @\\69mport 'g'", {"a", "g"}},
      {"@namespace url(a);@namespace b url(c);@import 'd'", {"d"}},
      {"a{behavior : url(b);c:url(d)}.behavior:hover{e:url(f)}", {"d", "f"}},
  };
  for (const Row& row : rows) EXPECT_EQ(Find(row.css), row.links) << row.css;
}

TEST(CssLinks, AreThoseOfThePlainReading) {
  std::mt19937 random(1);
  const std::vector<const char*> words = {
      "url(",        "URL(",     "url( ",  ")",    "\"", "'",        "a.png", "\\",       "\\)",
      "\\26 ",       " ",        "\n",     "\r\n", "(",  "/*",       "*/",    "@import ", "@IMPORT",
      "@namespace ", "x ",       ";",      "{",    "}",  "behavior", ":",     "-",        "--",
      "#",           "1",        "e3",     ".5",   "+",  "<!--",     "-->",   "\x01",     "\xC3\xA9",
      "u\\72l(",     "\\75 rl(", "@media", "@",    ",",  "format(",  "/"};
  for (int sheet = 0; sheet < 100000; ++sheet) {
    std::string css;
    for (std::size_t count = random() % 12 + 1; count > 0; --count) css += words[random() % words.size()];
    ASSERT_EQ(PlainCssLinks(css), Find(css)) << "sheet " << sheet << ": " << css;
  }
}

}  // namespace
}  // namespace tessaril
