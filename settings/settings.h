#ifndef TESSARIL_SETTINGS_SETTINGS_H_
#define TESSARIL_SETTINGS_SETTINGS_H_

#include <string>
#include <string_view>

// The settings file "TSL32.ini": eleven lines and an empty one, each ended by CR LF, that a user may edit by
// hand. It is not read key by key: each value is looked for with plain searches, and what a search misses is
// taken from the default text.

namespace tessaril {

inline constexpr std::string_view kSettingsFileName = "TSL32.ini";

/// The values as the program holds them.
struct Settings {
  std::string LastDir;          // a path in the file system's bytes; as read it ends with a separator
  float PrinterFontSize = 10;   // points; as read any finite number, zero and negative ones too
  std::string PrinterFontName;  // UTF-8
  std::string CGIname;          // UTF-8; as read with the blanks around it, which the window takes off
  bool BrowserFirst = true;     // "Show file" starts in the browser
  bool UCfilename = false;      // upper-case file names are permitted
};

/// The text of the settings file when there is none or it is damaged, without the line end that ends every
/// settings file.
std::string_view DefaultSettingsText();

struct SettingsReading {
  Settings settings;
  bool damaged = false;  // a search failed: the file is to hold the default text until the next save
};

/// Takes the values out of the content of a settings file, whatever bytes it holds.
///
/// A value is what stands between "=" and the next CR LF, behind its key, behind its header. From the search
/// that fails on, the default text is read instead of the content; values already taken stay. Where header,
/// key or "=" is not found, the searches of that value go on from the start of the default text; where the
/// line end is not found, or the "=" of one of the last three values, the whole value is taken from the
/// default text.
///
/// The folder may be one that does not exist, that of the default text always: the caller then takes the
/// current one.
SettingsReading ReadSettings(std::string_view content);

/// The whole content of the settings file for these values. What would not read back is written so that it
/// does: a folder that ends in a blank gets a separator behind it; a folder with a line end in it and a size
/// that is no finite number make way for the default's; a line end in a name becomes blanks.
std::string SettingsText(const Settings& settings);

/// The number that a text begins with: blanks, tabs and line feeds do not count wherever they stand; decimal
/// with sign, point and exponent, or hexadecimal behind "&H", octal behind "&O"; 0 when there is none. One
/// that is too large for a double is the largest double, with its sign. The user's locale plays no part.
double NumericValue(std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_SETTINGS_SETTINGS_H_
