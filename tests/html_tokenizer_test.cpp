#include <gtest/gtest.h>

#include <random>

#include "tests/support/plain_tokenizer.h"

namespace tessaril {
namespace {

using Words = std::vector<const char*>;

std::string RandomText(std::mt19937& random, const Words& words, std::size_t most) {
  std::string text;
  for (std::size_t count = random() % most + 1; count > 0; --count) text += words[random() % words.size()];
  return text;
}

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

void HoldPages(const Words& words, HtmlTokenizer::Syntax syntax, int pages, const std::string& around = "") {
  std::mt19937 random(static_cast<unsigned>(pages));
  for (int page = 0; page < pages; ++page) {
    const std::string text = around + RandomText(random, words, 14);
    const auto plain = PlainHtmlTokens(text, syntax == HtmlTokenizer::Syntax::kXml);
    const auto tokens = TokensOf(text, syntax);
    ASSERT_TRUE(plain == tokens) << "page " << page << ": " << text
                                 << "\nplainly: " << ShownTokens(text, plain)
                                 << "\nbut: " << ShownTokens(text, tokens);
  }
}

struct Row {
  std::string page, tokens;
};

TEST(HtmlTokenizer, TakesPagesApartAsBrowsersDo) {
  const Row rows[] = {
      {"a<b>&lt;</B x=y>c", "a | <b> | &lt; | </B> | c"},
      {"a < b <1 </", "a < b <1 </"},
      {"a</>b</ c>d<?e>f<!g>h", "a | !</> | b | !</ c> | d | !<?e> | f | !<!g> | h"},
      {"<!doctype html \">\">", "!<!doctype html \"> | \">"},
      {"<a b='>' c=\"'\" d=e/f g = h>", "<a {b='>'} {c=\"'\"} {d=e/f} {g=h}>"},
      {"<a/b/=c=d e=><f/><g h=/>", "<a {b} {=c=d} {e=}> | <f /> | <g {h=/}>"},
      {"<a b=1 B=2 c'd\"=\"x\"e>", "<a {b=1} {c'd\"=\"x\"} {e}>"},
      {"a<b c='x>d", "a"},
      {"<!-->a<!--->b<!-- -- > --!>c<!---->d",
       "!<!--> | a | !<!---> | b | !<!-- -- > --!> | c | !<!----> | d"},
      {"<!--<!-->a<!--<!--->b<!--a", "!<!--<!--> | a | !<!--<!---> | b | !<!--a"},
      {"<title>&amp;<a></titles></TITLE >b", "<title> | &amp;<a></titles> | </TITLE> | b"},
      {"<style>&<!--</style>--><xmp></xmp/>", "<style> | =&<!-- | </style> | --> | <xmp> | </xmp>"},
      {"<script><!--<a></script>b", "<script> | =<!--<a> | </script> | b"},
      {"<script><!--<script></script>--></script>", "<script> | =<!--<script></script>--> | </script>"},
      {"<script><!--<script>--></script>b", "<script> | =<!--<script>--> | </script> | b"},
      {"<script><!--><script></script>b", "<script> | =<!--><script> | </script> | b"},
      {"<script/>a</script><noscript><a></noscript>",
       "<script /> | =a | </script> | <noscript> | <a> | </noscript>"},
      {"<plaintext></plaintext>", "<plaintext> | =</plaintext>"},
      {"<![CDATA[a>b]]>", "!<![CDATA[a> | b]]>"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ShownTokens(row.page, TokensOf(row.page, HtmlTokenizer::Syntax::kHtml)), row.tokens)
        << row.page;
  }
}

TEST(HtmlTokenizer, KnowsWhereSvgAndMathMlStand) {
  // What of "<![CDATA[<x>]]>" at the end of these is a comment: all that a page knows of CDATA outside.
  const std::string cdata = "<![CDATA[<x>]]>";
  const std::string inside[] = {
      "<svg>",
      "<SVG><style>a</style><script>a</script><title></title>",
      "<svg><title>",
      "<svg><desc><p></p>",
      "<svg><foreignObject><p>a<p>b</p></foreignObject>",
      "<svg><foreignObject><div></svg></div>",
      "<svg><p></p><svg>",
      "<svg><g></foreignObject></span ></g><svg>",
      "<math><mi><b></b></mi>",
      "<math><mi><mglyph>",
      "<math><svg><title>",
      "<math><annotation-xml>",
      "<math><annotation-xml><svg>",
      "<math><title>",
      "<svg><font x>",
      "<svg><path/></path></body>",
  };
  const std::string outside[] = {
      "",
      "<svg/>",
      "<svg></svg>",
      "<svg><g></svg>",
      "<svg><p>",
      "<svg></p>",
      "<svg><foreignObject><div>",
      "<svg><foreignObject><div></svg>",
      "<svg><foreignObject></svg>",
      "<svg><desc><p>",
      "<div><svg><path></div>",
      "<a><svg><g></a>",
      "<math><mi><b>",
      "<math><annotation-xml encoding='text/HTML'><b>",
      "<svg><font color=x>",
      "<svg><title><a>",
  };
  for (const std::string& page : inside) {
    const std::string text = page + cdata;
    EXPECT_TRUE(ShownTokens(text, TokensOf(text, HtmlTokenizer::Syntax::kHtml)).ends_with("=" + cdata))
        << page;
  }
  for (const std::string& page : outside) {
    const std::string text = page + cdata;
    EXPECT_TRUE(
        ShownTokens(text, TokensOf(text, HtmlTokenizer::Syntax::kHtml)).ends_with("!<![CDATA[<x> | ]]>"))
        << page;
  }
}

TEST(HtmlTokenizer, TakesXmlApart) {
  const Row rows[] = {
      {"<?x a='>'?><script><a/></script>", "!<?x a='>'?> | <script> | <a /> | </script>"},
      {"<title><![CDATA[<a>]]></title>", "<title> | =<![CDATA[<a>]]> | </title>"},
      {"<!--> <a> --!> -->b", "!<!--> <a> --!> --> | b"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ShownTokens(row.page, TokensOf(row.page, HtmlTokenizer::Syntax::kXml)), row.tokens) << row.page;
  }
}

TEST(HtmlTokenizer, TakesTagsAndCommentsApartAsThePlainReading) {
  HoldPages({"<",          ">",         "/",    "</",  "<a",   "<a ",      "</a",  "<B\n", "=",
             "\"",         "'",         "x",    "X=",  "y",    " ",        "\t",   "\r\n", "\f",
             "<!",         "<!-",       "<!--", "-",   "--",   "-->",      "--!>", "!",    "<?",
             "<!doctype ", "<![CDATA[", "]",    "]]>", "&lt;", "\xC3\xA9", "href", "`",    "<div class=x>"},
            HtmlTokenizer::Syntax::kHtml, 60000);
}

TEST(HtmlTokenizer, EndsRawTextsAsThePlainReading) {
  HoldPages(
      {"<script>",   "<script",   "</script",   "</script>",   "</SCRIPT ",   "<!--",        "<!-",
       "-",          "--",        "-->",        ">",           "/",           " ",           "<",
       "</",         "x",         "\n",         "<style>",     "</style>",    "</styl",      "<title>",
       "</title>",   "</Title\n", "<textarea>", "</textarea>", "<xmp>",       "</xmp>",      "<iframe>",
       "</iframe/",  "<noembed>", "</noembed>", "<noframes>",  "</noframes>", "<plaintext>", "<script/>",
       "<noscript>", "<a '",      "<title a=b>"},
      HtmlTokenizer::Syntax::kHtml, 60000);
}

TEST(HtmlTokenizer, KnowsForeignContentAsThePlainReading) {
  HoldPages({"<svg>",
             "<svg>",
             "</svg>",
             "<SVG/>",
             "<math>",
             "</math>",
             "<svg><foreignObject>",
             "</foreignobject>",
             "<svg><desc>",
             "</desc>",
             "<svg><title>",
             "</title>",
             "<title>",
             "<math><mi>",
             "</mi>",
             "<math><mtext>",
             "</mtext>",
             "<svg><g>",
             "</g>",
             "<svg><path/>",
             "<script>",
             "</script>",
             "<style>",
             "</style>",
             "<textarea>",
             "</textarea>",
             "<![CDATA[]]>",
             "<![CDATA[<div>]]>",
             "<p>",
             "</p>",
             "<div>",
             "</div>",
             "<br>",
             "</br>",
             "x",
             "<font>",
             "<font color=x>",
             "<math><annotation-xml>",
             "<math><annotation-xml encoding='Text/HTML'>",
             "</annotation-xml>",
             "<math><mi><mglyph>",
             "</mglyph>"},
            HtmlTokenizer::Syntax::kHtml, 60000, Repeated("<div>", 14));
}

TEST(HtmlTokenizer, TakesXmlApartAsThePlainReading) {
  HoldPages({"<a>", "<a b='>'>", "</a>", "<script>", "</script>", "<svg>", "<title>", "<!-- ", "<p/>", "-->",
             "<![CDATA[", "]", "<?x ", "?>", "x", " ", "<style a=\"b\">", "</style>", "&lt;"},
            HtmlTokenizer::Syntax::kXml, 20000);
}

}  // namespace
}  // namespace tessaril
