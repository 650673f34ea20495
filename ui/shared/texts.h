#ifndef TESSARIL_UI_SHARED_TEXTS_H_
#define TESSARIL_UI_SHARED_TEXTS_H_

#include <QString>
#include <string>
#include <string_view>

// Between the texts of the engine, which are bytes, and those of the toolkit.

namespace tessaril {

/// A text as it is shown, in one line: UTF-8 when it is valid UTF-8, else 8-bit, with signs for characters
/// that cannot be seen.
QString Shown(std::string_view bytes);

/// The same with a single line feed for each CR LF, as message boxes and labels part lines.
QString ShownLines(std::string_view bytes);

/// The same characters without signs, to be edited by the user.
QString Characters(std::string_view bytes);

/// What the user entered, as UTF-8.
std::string Entered(const QString& text);

/// The same text as markup, lines of which may be wrapped.
QString AsMarkup(const QString& text);

/// A text that is shown as a caption, with no access key in it: "&" stands for itself.
QString AsCaption(const QString& text);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_TEXTS_H_
