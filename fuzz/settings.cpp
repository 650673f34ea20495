// The settings file: any bytes give values that are written and read back; numbers against the C library.
// Input: five bytes and three texts for settings of the program, then the content of a file.

#include "settings/settings.h"

#include <cmath>
#include <cstring>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/page_encoding.h"
#include "fuzz/input.h"

namespace tessaril {
namespace {

std::string Told(const Settings& settings) {
  return settings.LastDir + "|" + std::to_string(settings.PrinterFontSize + 0) + "|" +
         settings.PrinterFontName + "|" + settings.CGIname + "|" +
         (settings.BrowserFirst ? "browser" : "editor") + (settings.UCfilename ? "|upper" : "|lower");
}

bool HasAny(const Settings& settings, const char* characters) {
  const std::string texts = settings.LastDir + settings.PrinterFontName + settings.CGIname;
  return texts.find_first_of(characters) != std::string::npos;
}

// Values as they are read, written and read again. A "[" in a text may be taken for a header.
void CheckReadBack(const Settings& settings, const std::string& lead) {
  const std::string text = SettingsText(settings);
  const SettingsReading again = ReadSettings(text);
  Require(!again.damaged, "what is written counts as damaged: " + Readable(text));
  if (HasAny(settings, "[\r\n")) return;
  Settings expected = settings;
  expected.CGIname = lead + expected.CGIname;
  RequireEqual(Told(again.settings), Told(expected), "settings that are written and read");
  RequireEqual(SettingsText(again.settings).substr(0, text.find("[CGI]")), text.substr(0, text.find("[CGI]")),
               "the text of the same");
}

// The decimal number at the start, found plainly and read by the C library.
void CheckNumber(const std::string& text) {
  std::string close;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') close += c;
  }
  const double value = NumericValue(text);
  Require(std::isfinite(value), "a number that is none");
  if (close.starts_with('&')) return;
  const auto digits = [&close](std::size_t at) {
    while (at < close.size() && close[at] >= '0' && close[at] <= '9') ++at;
    return at;
  };
  const std::size_t sign = close.starts_with('+') || close.starts_with('-') ? 1 : 0;
  std::size_t end = digits(sign);
  bool has_digits = end > sign;
  if (end < close.size() && close[end] == '.') {
    const std::size_t fraction = digits(end + 1);
    has_digits = has_digits || fraction > end + 1;
    end = fraction;
  }
  if (!has_digits) end = 0;
  if (end > 0 && end < close.size() && (close[end] == 'e' || close[end] == 'E')) {
    const std::size_t signs = close.find_first_of("+-", end + 1) == end + 1 ? 1 : 0;
    if (digits(end + 1 + signs) > end + 1 + signs) end = digits(end + 1 + signs);
  }
  double plain = std::strtod(close.substr(0, end).c_str(), nullptr);
  if (std::isinf(plain)) plain = std::copysign(std::numeric_limits<double>::max(), plain);
  // Numbers that are too small for a double are 0 here.
  if (std::fpclassify(plain) == FP_SUBNORMAL && value == 0) return;
  Require(value == plain, "the number of " + Readable(text));
}

Settings TakeSettings(Input& input) {
  Settings settings;
  unsigned char size_bytes[4];
  for (unsigned char& byte : size_bytes) byte = input.Byte();
  std::memcpy(&settings.PrinterFontSize, size_bytes, sizeof size_bytes);
  const std::size_t flags = input.Below(4);
  settings.BrowserFirst = flags % 2 == 1;
  settings.UCfilename = flags > 1;
  settings.LastDir = "/" + input.Field();
  settings.PrinterFontName = Trimmed(EnteredText(input.Field()));
  settings.CGIname = EnteredText(input.Field());
  return settings;
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  Settings settings = TakeSettings(input);
  const std::string content = input.Rest();

  const SettingsReading reading = ReadSettings(content);
  Require(std::isfinite(reading.settings.PrinterFontSize), "a font size that is no number");
  Require(IsUtf8(reading.settings.PrinterFontName + reading.settings.CGIname), "names that are not UTF-8");
  Require(reading.settings.LastDir.ends_with('/'), "a folder without a separator");
  CheckReadBack(reading.settings, " ");
  CheckNumber(content);

  // A folder is read with a separator behind it, and blanks around names count for nothing.
  (void)SettingsText(settings);
  if (!std::isfinite(settings.PrinterFontSize)) return 0;
  if (!settings.LastDir.ends_with('/')) settings.LastDir += '/';
  CheckReadBack(settings, " ");
  return 0;
}
