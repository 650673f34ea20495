#include "settings/settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "engine/ascii.h"
#include "engine/page_encoding.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr std::string_view kDefaultText =
    "[LastDir]\r\n"
    "   LastDir = c:\\\r\n"
    "[Font]\r\n"
    "   Size = 10\r\n"
    "   Name = Arial\r\n"
    "[CGI]\r\n"
    "   CGI = CGI-bin\r\n"
    "[BrowserFirst]\r\n"
    "   BrowserFirst = -1\r\n"
    "[UPPERcaseFilenames]\r\n"
    "   UPPERcaseFilenames = 0\r\n";
constexpr std::string_view kDefaultFolder = "c:\\";
constexpr std::string_view kDefaultSize = "10";

// Looks for values in the content, and in the default text from the first search on that fails. A position
// counts from 1, and 0 stands for "not found", so that the search behind it starts at the front.
class ValueSearch {
 public:
  explicit ValueSearch(std::string_view content) : content_(content) {}

  // The value of one of the first three settings, untrimmed.
  std::string_view Value(std::string_view header, std::string_view key) {
    const std::size_t equals = Equals(header, key);
    const std::size_t line_end = Find(CrLf, equals);
    // The second call is answered by the default text, where nothing fails.
    return line_end == 0 ? Value(header, key) : Between(equals, line_end);
  }

  // The value of one of the last three. Its key is found at the latest in its header.
  std::string_view StrictValue(std::string_view header, std::string_view key) {
    const std::size_t equals = Equals(header, key);
    const std::size_t line_end = equals == 0 ? 0 : Find(CrLf, equals);
    return line_end == 0 ? StrictValue(header, key) : Between(equals, line_end);
  }

  bool damaged() const { return damaged_; }

 private:
  std::size_t Equals(std::string_view header, std::string_view key) {
    return Find("=", Find(key, Find(header, 0)));
  }

  std::size_t Find(std::string_view what, std::size_t behind) {
    const std::size_t at = content_.find(what, behind);
    if (at != std::string_view::npos) return at + 1;
    content_ = kDefaultText;
    damaged_ = true;
    return 0;
  }

  std::string_view Between(std::size_t equals, std::size_t line_end) const {
    return content_.substr(equals, line_end - 1 - equals);
  }

  std::string_view content_;
  bool damaged_ = false;
};

std::string WithSeparator(std::string_view folder) {
  std::string result(folder);
  if (!result.ends_with(kSeparator)) result += kSeparator;
  return result;
}

std::size_t DigitsAt(std::string_view text, std::size_t begin) {
  return std::min(text.find_first_not_of("0123456789", begin), text.size()) - std::min(begin, text.size());
}

std::size_t SignAt(std::string_view text, std::size_t begin) {
  return begin < text.size() && (text[begin] == '+' || text[begin] == '-') ? 1 : 0;
}

// The part of `text` that its first decimal number takes, without the sign; empty when there is none.
std::string_view UnsignedDecimal(std::string_view text) {
  const std::size_t whole = DigitsAt(text, 0);
  std::size_t end = whole;
  if (end < text.size() && text[end] == '.') end += 1 + DigitsAt(text, end + 1);
  if (whole == 0 && end <= 1) return {};
  if (end < text.size() && ToLower(text[end]) == 'e') {
    const std::size_t exponent = end + 1 + SignAt(text, end + 1);
    if (const std::size_t digits = DigitsAt(text, exponent); digits > 0) end = exponent + digits;
  }
  return text.substr(0, end);
}

// Whether a decimal number that is not zero is at least 1.
bool ReachesOne(std::string_view number) {
  const std::size_t exponent_at = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, exponent_at);
  const auto point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<long long>(digits.find_first_not_of("0."));
  const long long places = first < point ? point - first : point - first + 1;
  if (exponent_at == number.size()) return places > 0;
  std::string_view exponent_text = number.substr(exponent_at + 1);
  if (exponent_text.starts_with('+')) exponent_text.remove_prefix(1);
  long long exponent = 0;
  const auto [end, error] =
      std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
  if (error != std::errc()) return !exponent_text.starts_with('-');
  return exponent > -places;
}

template <typename Float>
Float DecimalValue(std::string_view text) {
  const bool negative = text.starts_with('-');
  const std::string_view number = UnsignedDecimal(text.substr(SignAt(text, 0)));
  Float value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc::result_out_of_range) {
    value = ReachesOne(number) ? std::numeric_limits<Float>::max() : 0;
  }
  return negative ? -value : value;
}

// The value of the hexadecimal or octal digits at the start.
double DigitsValue(std::string_view digits, int base) {
  double value = 0;
  for (const char c : digits) {
    const char folded = ToLower(c);
    const int digit = folded >= 'a' ? folded - 'a' + 10 : folded - '0';
    if (digit < 0 || digit >= base || (folded > '9' && folded < 'a')) break;
    value = value * base + digit;
  }
  return value;
}

// As NumericValue, in the precision of `Float`: a size goes straight to its own, because a second rounding
// on the way would give some sizes another last digit.
template <typename Float>
Float NumberIn(std::string_view text) {
  std::string close(text);
  std::erase_if(close, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
  if (!close.starts_with('&')) return DecimalValue<Float>(close);
  const std::string prefix = ToLower(std::string_view(close).substr(0, 2));
  const int base = prefix == "&h" ? 16 : prefix == "&o" ? 8 : 0;
  if (base == 0) return 0;
  const double value = DigitsValue(std::string_view(close).substr(2), base);
  return static_cast<Float>(std::min<double>(value, std::numeric_limits<Float>::max()));
}

std::string FolderText(const std::string& folder) {
  if (folder.find_first_of(CrLf) != std::string::npos) return std::string(kDefaultFolder);
  return folder.ends_with(' ') ? WithSeparator(folder) : folder;
}

// The shortest text that reads back as the same size.
std::string SizeText(float size) {
  constexpr float kFirstWithExponent = 1e15F;
  if (!std::isfinite(size)) return std::string(kDefaultSize);
  if (size == 0) return "0";
  std::array<char, 64> digits;  // the longest is a sign, "0." and less than 60 digits
  const auto format =
      std::abs(size) < kFirstWithExponent ? std::chars_format::fixed : std::chars_format::scientific;
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), size, format);
  return {digits.data(), result.ptr};
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string_view FlagText(bool flag) {
  return flag ? "-1" : "0";
}

}  // namespace

std::string_view DefaultSettingsText() {
  return kDefaultText;
}

SettingsReading ReadSettings(std::string_view content) {
  ValueSearch search(content);
  Settings settings;
  settings.LastDir = WithSeparator(Trimmed(search.Value("[LastDir]", "LastDir")));
  settings.PrinterFontSize = NumberIn<float>(search.Value("[Font]", "Size"));
  settings.PrinterFontName = EnteredText(Trimmed(search.Value("[Font]", "Name")));
  settings.CGIname = EnteredText(search.StrictValue("[CGI]", "CGI"));
  settings.BrowserFirst = NumericValue(search.StrictValue("[BrowserFirst]", "BrowserFirst")) != 0;
  settings.UCfilename = NumericValue(search.StrictValue("[UPPERcaseFilenames]", "UPPERcaseFilenames")) == -1;
  return {std::move(settings), search.damaged()};
}

std::string SettingsText(const Settings& settings) {
  std::string text = "[LastDir]\r\n   LastDir = ";
  text += FolderText(settings.LastDir);
  text += "\r\n[Font]\r\n   Size = ";
  text += SizeText(settings.PrinterFontSize);
  text += "\r\n   Name = ";
  text += OneLine(settings.PrinterFontName);
  text += "\r\n[CGI]\r\n   CGI = ";
  text += OneLine(settings.CGIname);
  text += "\r\n[BrowserFirst]\r\n   BrowserFirst = ";
  text += FlagText(settings.BrowserFirst);
  text += "\r\n[UPPERcaseFilenames]\r\n   UPPERcaseFilenames = ";
  text += FlagText(settings.UCfilename);
  text += "\r\n\r\n";
  return text;
}

double NumericValue(std::string_view text) {
  return NumberIn<double>(text);
}

}  // namespace tessaril
