#include "engine/css_links.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "engine/ascii.h"
#include "engine/characters.h"

namespace tessaril {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool IsNameByte(char c) {
  return IsAsciiLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '_' || c == '\0' ||
         static_cast<unsigned char>(c) >= 0x80;
}

// Whether a name, as it stands, is that name.
bool IsName(std::string_view name, std::string_view lower) {
  if (name.find('\\') == std::string_view::npos) return EqualsLower(name, lower);
  return EqualsLower(ResolveCssEscapes(name), lower);
}

// The way through one style sheet.
class Scan {
 public:
  Scan(std::string_view css, std::vector<std::string_view>& links) : css_(css), links_(links) {}

  void Run() {
    while (pos_ < css_.size()) Step();
  }

 private:
  void Step();
  bool At(std::size_t pos, char c) const { return pos < css_.size() && css_[pos] == c; }
  bool IsLineEnd(std::size_t pos) const { return At(pos, '\n') || At(pos, '\r') || At(pos, '\f'); }
  // Whether a backslash there takes something with it.
  bool IsEscape(std::size_t pos) const { return At(pos, '\\') && !IsLineEnd(pos + 1); }
  void SkipBlanksAndComments();
  bool SkipComment();
  void SkipEscape();
  std::string_view TakeName();
  std::optional<std::string_view> TakeQuoted();
  void TakeUrl();
  void TakeAtRule();

  std::string_view css_;
  std::vector<std::string_view>& links_;
  std::size_t pos_ = 0;
  std::string_view last_name_;  // when nothing but blanks and comments follows it
  bool counts_ = true;          // false in @namespace and behavior: the addresses there are no links
};

// Past the next thing that matters: a comment, a quoted text, a name, a sign.
void Scan::Step() {
  SkipBlanksAndComments();
  if (pos_ >= css_.size()) return;
  const std::string_view property = std::exchange(last_name_, {});
  const char c = css_[pos_];
  if (c == '"' || c == '\'') {
    (void)TakeQuoted();
  } else if (c == '@') {
    TakeAtRule();
  } else if (c == '#') {
    ++pos_;
    (void)TakeName();  // not the name of a function
  } else if (IsNameByte(c) || IsEscape(pos_)) {
    last_name_ = TakeName();
    if (At(pos_, '(') && IsName(last_name_, "url")) TakeUrl();
  } else {
    if (c == ':' && (IsName(property, "behavior") || IsName(property, "-ms-behavior"))) counts_ = false;
    if (c == ';' || c == '{' || c == '}') counts_ = true;
    ++pos_;
  }
}

bool Scan::SkipComment() {
  if (!At(pos_ + 1, '*')) return false;
  const std::size_t end = css_.find("*/", pos_ + 2);
  pos_ = end == std::string_view::npos ? css_.size() : end + 2;
  return true;
}

void Scan::SkipBlanksAndComments() {
  while (pos_ < css_.size()) {
    if (IsBlank(css_[pos_])) {
      ++pos_;
    } else if (css_[pos_] != '/' || !SkipComment()) {
      return;
    }
  }
}

// At a backslash: it takes one byte with it, or up to six digits and a blank behind them.
void Scan::SkipEscape() {
  constexpr std::size_t kMostDigits = 6;
  const std::size_t begin = ++pos_;
  while (pos_ < css_.size() && pos_ < begin + kMostDigits && HexadecimalDigit(css_[pos_]) >= 0) ++pos_;
  if (css_.substr(pos_, 2) == "\r\n") {
    pos_ += 2;
  } else if (pos_ < css_.size() && (pos_ == begin || IsBlank(css_[pos_]))) {
    ++pos_;
  }
}

std::string_view Scan::TakeName() {
  const std::size_t begin = pos_;
  while (pos_ < css_.size()) {
    if (IsNameByte(css_[pos_])) {
      ++pos_;
    } else if (IsEscape(pos_)) {
      SkipEscape();
    } else {
      break;
    }
  }
  return css_.substr(begin, pos_ - begin);
}

// A text in quotes, without them; nothing when its line ends before it does.
std::optional<std::string_view> Scan::TakeQuoted() {
  const char quote = css_[pos_];
  const std::size_t begin = ++pos_;
  while (pos_ < css_.size()) {
    const char c = css_[pos_];
    if (c == '\n' || c == '\r' || c == '\f') return std::nullopt;
    if (c == quote) {
      ++pos_;
      return css_.substr(begin, pos_ - 1 - begin);
    }
    if (c == '\\') {
      SkipEscape();
    } else {
      ++pos_;
    }
  }
  return css_.substr(begin);  // the end of the sheet closes it
}

// At the "(" of a url(...).
void Scan::TakeUrl() {
  ++pos_;
  while (pos_ < css_.size() && IsBlank(css_[pos_])) ++pos_;
  if (At(pos_, '"') || At(pos_, '\'')) {
    const std::optional<std::string_view> link = TakeQuoted();
    if (link && counts_) links_.push_back(*link);
    return;
  }
  const std::size_t begin = pos_;
  std::size_t end = 0;
  bool good = true;
  bool blank = false;
  for (end = pos_; pos_ < css_.size() && css_[pos_] != ')';) {
    const char c = css_[pos_];
    if (IsBlank(c)) {
      blank = true;
      ++pos_;
      continue;
    }
    const bool is_control = (c > 0 && c < ' ') || c == 127;  // NUL is read as U+FFFD
    good = good && !blank && c != '"' && c != '\'' && c != '(' && !is_control;
    if (c == '\\') {
      good = good && !IsLineEnd(pos_ + 1);
      SkipEscape();
    } else {
      ++pos_;
    }
    end = pos_;
  }
  if (pos_ < css_.size()) ++pos_;
  if (good && counts_) links_.push_back(css_.substr(begin, end - begin));
}

// At the "@".
void Scan::TakeAtRule() {
  ++pos_;
  const std::string_view name = TakeName();
  if (IsName(name, "namespace")) counts_ = false;
  if (!IsName(name, "import")) return;
  SkipBlanksAndComments();
  if (!At(pos_, '"') && !At(pos_, '\'')) return;
  const std::optional<std::string_view> link = TakeQuoted();
  if (link && counts_) links_.push_back(*link);
}

}  // namespace

void FindCssLinks(std::string_view css, std::vector<std::string_view>& links) {
  Scan(css, links).Run();
}

std::string ResolveCssEscapes(std::string_view link) {
  constexpr char32_t kReplacement = 0xFFFD;
  constexpr int kMostDigits = 6;
  std::string text;
  for (std::size_t pos = 0; pos < link.size();) {
    if (link[pos] != '\\') {
      text += link[pos++];
      continue;
    }
    ++pos;
    char32_t code = 0;
    int digits = 0;
    for (; pos < link.size() && digits < kMostDigits && HexadecimalDigit(link[pos]) >= 0; ++digits, ++pos) {
      code = code * 16 + static_cast<char32_t>(HexadecimalDigit(link[pos]));
    }
    if (digits > 0) {
      AppendUtf8(code != 0 && IsCharacter(code) ? code : kReplacement, text);
      if (link.substr(pos, 2) == "\r\n") {
        pos += 2;
      } else if (pos < link.size() && IsBlank(link[pos])) {
        ++pos;
      }
    } else if (pos < link.size()) {
      const bool line_end = link[pos] == '\n' || link[pos] == '\r' || link[pos] == '\f';
      if (link.substr(pos, 2) == "\r\n") ++pos;
      if (!line_end) text += link[pos];
      ++pos;
    }
  }
  return text;
}

}  // namespace tessaril
