#ifndef TESSARIL_UI_SHARED_FONTS_H_
#define TESSARIL_UI_SHARED_FONTS_H_

#include <QFont>
#include <QString>

namespace tessaril {

/// Courier New in the size of the application's font; where it is not installed, the platform's own
/// fixed-width font.
QFont FixedFont();

/// MS Sans Serif in the size of the application's font; where it is not installed, the application's font.
QFont SansSerifFont();

/// One of the two for a text, in the size of the font that it has now.
QFont FontOfText(bool monospaced, const QFont& now);

/// `font`, made smaller until `text` is at most `width` pixels wide.
QFont FittedFont(QFont font, const QString& text, int width);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_FONTS_H_
