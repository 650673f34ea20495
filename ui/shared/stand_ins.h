#ifndef TESSARIL_UI_SHARED_STAND_INS_H_
#define TESSARIL_UI_SHARED_STAND_INS_H_

#include <QString>
#include <optional>

// Signs for characters that cannot be seen themselves, and would make something else of what is seen around
// them: names of files and texts of pages may hold any.

namespace tessaril {

/// The sign for a control character other than the tab, for a character that a document would take for a
/// boundary of its own, or for one that turns the direction of the text behind it. Nothing for all others.
std::optional<char16_t> StandIn(char32_t code);

/// A text in one line, with signs in the place of those characters.
QString Harmless(QString text);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_STAND_INS_H_
