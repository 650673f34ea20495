#include "engine/html_tokenizer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "engine/ascii.h"

namespace tessaril {
namespace {

// What a byte is inside a tag, as bits.
enum : unsigned char { kBlank = 1, kEndsTagName = 2, kEndsAttributeName = 4, kEndsUnquoted = 8 };

constexpr std::array<unsigned char, 256> MakeClasses() {
  std::array<unsigned char, 256> classes{};
  for (const char c : {' ', '\t', '\n', '\f', '\r'}) {
    classes[static_cast<unsigned char>(c)] = kBlank | kEndsTagName | kEndsAttributeName | kEndsUnquoted;
  }
  classes['/'] = kEndsTagName | kEndsAttributeName;
  classes['>'] = kEndsTagName | kEndsAttributeName | kEndsUnquoted;
  classes['='] = kEndsAttributeName;
  return classes;
}
constexpr std::array<unsigned char, 256> kClasses = MakeClasses();

bool Is(unsigned char what, char c) {
  return (kClasses[static_cast<unsigned char>(c)] & what) != 0;
}

// The first place at or behind `pos` of a byte of that kind; the size of the text when there is none.
std::size_t Find(std::string_view text, std::size_t pos, unsigned char what) {
  while (pos < text.size() && !Is(what, text[pos])) ++pos;
  return pos;
}

std::size_t SkipBlanks(std::string_view text, std::size_t pos) {
  while (pos < text.size() && Is(kBlank, text[pos])) ++pos;
  return pos;
}

bool StartsLower(std::string_view text, std::string_view lower) {
  return EqualsLower(text.substr(0, lower.size()), lower);
}

bool EqualFolded(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ToLower(x) == ToLower(y); });
}

}  // namespace

HtmlTokenizer::Token HtmlTokenizer::Next() {
  begin_ = end_;
  if (begin_ >= text_.size()) return Token::kEnd;
  if (inside_ != Inside::kMarkup) {
    const Token token = InsideElement();
    if (end_ > begin_) return token;
  }
  if (text_[begin_] == '<') {
    const Token token = Markup();
    if (token != Token::kText) return token;
  }
  // Text goes up to the next "<" that begins something else.
  std::size_t pos = begin_ + 1;
  for (;;) {
    pos = std::min(text_.find('<', pos), text_.size());
    if (pos + 1 >= text_.size()) return Until(text_.size(), Token::kText);
    const char next = text_[pos + 1];
    if (IsAsciiLetter(next) || next == '!' || next == '?' || (next == '/' && pos + 2 < text_.size())) break;
    ++pos;
  }
  return Until(pos, Token::kText);
}

HtmlTokenizer::Token HtmlTokenizer::Until(std::size_t end, Token token) {
  end_ = end;
  return token;
}

// The token ends behind `mark`, or with the text.
HtmlTokenizer::Token HtmlTokenizer::UntilBehind(std::string_view mark, Token token) {
  const std::size_t place = text_.find(mark, begin_ + 2);
  return Until(place == std::string_view::npos ? text_.size() : place + mark.size(), token);
}

// At a "<". What begins nothing is text.
HtmlTokenizer::Token HtmlTokenizer::Markup() {
  if (begin_ + 1 >= text_.size()) return Token::kText;
  const char next = text_[begin_ + 1];
  if (IsAsciiLetter(next)) {
    end_ = begin_ + 1;
    return TakeTag(Token::kStartTag);
  }
  if (next == '/') return EndTagOrNot();
  if (next == '!') return Declaration();
  if (next == '?') return UntilBehind(syntax_ == Syntax::kXml ? "?>" : ">", Token::kComment);
  return Token::kText;
}

HtmlTokenizer::Token HtmlTokenizer::EndTagOrNot() {
  if (begin_ + 2 >= text_.size()) return Token::kText;
  if (!IsAsciiLetter(text_[begin_ + 2])) return UntilBehind(">", Token::kComment);
  end_ = begin_ + 2;
  return TakeTag(Token::kEndTag);
}

HtmlTokenizer::Token HtmlTokenizer::Declaration() {
  const std::string_view rest = text_.substr(begin_);
  if (rest.starts_with("<![CDATA[") && is_foreign()) return UntilBehind("]]>", Token::kRawText);
  if (!rest.starts_with("<!--")) return UntilBehind(">", Token::kComment);
  if (syntax_ == Syntax::kHtml) {
    if (rest.starts_with("<!-->")) return Until(begin_ + 5, Token::kComment);
    if (rest.starts_with("<!--->")) return Until(begin_ + 6, Token::kComment);
  }
  for (std::size_t pos = text_.find("--", begin_ + 4); pos != std::string_view::npos;
       pos = text_.find("--", pos + 1)) {
    const std::string_view behind = text_.substr(pos + 2, 2);
    if (behind.starts_with('>')) return Until(pos + 3, Token::kComment);
    if (behind == "!>" && syntax_ == Syntax::kHtml) return Until(pos + 4, Token::kComment);
  }
  return Until(text_.size(), Token::kComment);
}

// A tag whose name begins at `end_`. One that does not end is dropped with the rest of the text.
HtmlTokenizer::Token HtmlTokenizer::TakeTag(Token token) {
  const std::size_t name_end = Find(text_, end_, kEndsTagName);
  name_ = text_.substr(end_, name_end - end_);
  end_ = name_end;
  attributes_.clear();
  self_closing_ = false;
  if (end_ < text_.size() && text_[end_] == '>') {
    ++end_;
  } else if (!TakeAttributes()) {
    begin_ = end_ = text_.size();
    return Token::kEnd;
  }
  if (token == Token::kStartTag) {
    NoteStartTag();
  } else {
    foreign_.TakeEndTag(name_);
  }
  return token;
}

// From `end_` to behind the ">" of the tag; false when there is none.
bool HtmlTokenizer::TakeAttributes() {
  for (;;) {
    end_ = SkipBlanks(text_, end_);
    if (end_ >= text_.size()) return false;
    if (text_[end_] == '>') {
      ++end_;
      return true;
    }
    if (text_[end_] == '/') {
      ++end_;
      self_closing_ = end_ < text_.size() && text_[end_] == '>';
      continue;
    }
    const std::size_t name_end = Find(text_, end_ + 1, kEndsAttributeName);  // a "=" may begin the name
    HtmlAttribute& attribute = attributes_.emplace_back();
    attribute.name = text_.substr(end_, name_end - end_);
    attribute.value = text_.substr(name_end, 0);
    end_ = name_end < text_.size() && text_[name_end] == '=' ? name_end : SkipBlanks(text_, name_end);
    if (end_ < text_.size() && text_[end_] == '=' && !TakeValue(attribute)) return false;
    if (attributes_.size() > 1) DropRepeated();
  }
}

// At the "=" before a value; false when the text ends in it.
bool HtmlTokenizer::TakeValue(HtmlAttribute& attribute) {
  const std::size_t begin = SkipBlanks(text_, end_ + 1);
  if (begin >= text_.size()) return false;
  attribute.has_value = true;
  const char first = text_[begin];
  if (first == '"' || first == '\'') {
    const std::size_t close = text_.find(first, begin + 1);
    if (close == std::string_view::npos) return false;
    attribute.quote = first;
    attribute.value = text_.substr(begin + 1, close - begin - 1);
    end_ = close + 1;
    return true;
  }
  end_ = Find(text_, begin, kEndsUnquoted);
  attribute.value = text_.substr(begin, end_ - begin);
  return end_ < text_.size();
}

// Drops the last attribute when its name is there already.
void HtmlTokenizer::DropRepeated() {
  constexpr std::size_t kFew = 16;  // beyond that, a tag is no longer compared name by name
  const std::size_t others = attributes_.size() - 1;
  const std::string_view name = attributes_.back().name;
  bool is_repeated = false;
  if (others < kFew) {
    for (std::size_t i = 0; i < others; ++i) {
      const std::string_view other = attributes_[i].name;
      is_repeated = is_repeated || (other.size() == name.size() && EqualFolded(other, name));
    }
  } else {
    if (others == kFew) {
      many_names_.clear();
      for (std::size_t i = 0; i < others; ++i) many_names_.insert(ToLower(attributes_[i].name));
    }
    is_repeated = !many_names_.insert(ToLower(name)).second;
  }
  if (is_repeated) attributes_.pop_back();
}

// What stands behind a start tag is decided by its name.
void HtmlTokenizer::NoteStartTag() {
  if (syntax_ == Syntax::kXml) return;
  const bool is_foreign_element = foreign_.TakeStartTag(name_, attributes_, self_closing_);
  struct Row {
    std::string_view name;
    Inside inside;
  };
  constexpr Row kRows[] = {
      {"script", Inside::kScript},       {"style", Inside::kRaw},  {"title", Inside::kReferences},
      {"textarea", Inside::kReferences}, {"iframe", Inside::kRaw}, {"noembed", Inside::kRaw},
      {"noframes", Inside::kRaw},        {"xmp", Inside::kRaw},    {"plaintext", Inside::kRest}};
  // Most names have another length than those.
  constexpr std::size_t kLongest = 9;
  constexpr std::size_t kFrequent = 4;
  if (is_foreign_element || name_.size() < 3 || name_.size() == kFrequent || name_.size() > kLongest) return;
  const char initial = ToLower(name_[0]);
  for (const Row& row : kRows) {
    if (row.name.size() != name_.size() || row.name[0] != initial || !EqualsLower(name_, row.name)) continue;
    inside_ = row.inside;
    inside_name_ = row.name;
  }
}

// The text of an element that holds no markup; it may be empty.
HtmlTokenizer::Token HtmlTokenizer::InsideElement() {
  const Inside inside = std::exchange(inside_, Inside::kMarkup);
  if (inside == Inside::kRest) return Until(text_.size(), Token::kRawText);
  end_ = inside == Inside::kScript ? EndOfScript() : EndOfRawText();
  return inside == Inside::kReferences ? Token::kText : Token::kRawText;
}

// Whether the end tag of the element that holds the text begins at `pos`.
bool HtmlTokenizer::IsEndTag(std::size_t pos) const {
  const std::size_t behind = pos + 2 + inside_name_.size();
  return behind < text_.size() && text_[pos + 1] == '/' && Is(kEndsTagName, text_[behind]) &&
         StartsLower(text_.substr(pos + 2), inside_name_);
}

std::size_t HtmlTokenizer::EndOfRawText() const {
  std::size_t pos = text_.find('<', begin_);
  while (pos != std::string_view::npos && !IsEndTag(pos)) pos = text_.find('<', pos + 1);
  return std::min(pos, text_.size());
}

// A script may hide its end tag in what looks like a comment with a script in it.
std::size_t HtmlTokenizer::EndOfScript() const {
  constexpr std::string_view kScript = "<script";
  enum { kPlain, kHidden, kHiddenTwice } state = kPlain;
  std::size_t pos = begin_;
  for (;;) {
    pos = state == kPlain ? text_.find('<', pos) : text_.find_first_of("<-", pos);
    if (pos == std::string_view::npos) return text_.size();
    const std::string_view rest = text_.substr(pos);
    if (rest[0] == '-') {
      if (rest.starts_with("-->")) state = kPlain;
    } else if (state == kPlain && rest.starts_with("<!--")) {
      state = kHidden;
      ++pos;  // its own "--" may be those of a "-->"
    } else if (IsEndTag(pos)) {
      if (state != kHiddenTwice) return pos;
      state = kHidden;
    } else if (state == kHidden && rest.size() > kScript.size() && StartsLower(rest, kScript) &&
               Is(kEndsTagName, rest[kScript.size()])) {
      state = kHiddenTwice;
    }
    ++pos;
  }
}

}  // namespace tessaril
