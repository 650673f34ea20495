#include "ui/shared/message_boxes.h"

#include <QMessageBox>
#include <QRegularExpression>
#include <QScreen>
#include <algorithm>

#include "ui/shared/texts.h"

namespace tessaril {
namespace {

// A file's name may be wider than the screen. It may go on in a new line where a space of no width stands.
QString BreakLongWords(QString text) {
  static const QRegularExpression piece("([^\\s/]{60})(?=[^\\s/])");
  return text.replace(piece, QString("\\1") + QChar(0x200B));
}

// As much of a text as fits on the screen with what else a box shows.
QString Beginning(const QString& text, const QWidget& box) {
  constexpr qsizetype kMost = 10000;  // characters
  constexpr int kWidth = 500;         // pixels; on a wide screen boxes are as wide before they break lines
  const QSize screen = box.screen()->availableSize();
  const QRect room(0, 0, std::min(screen.width() / 2, kWidth), 0);
  const auto fits = [&](const QString& shown) {
    return box.fontMetrics().boundingRect(room, Qt::TextWordWrap, shown).height() < screen.height() * 2 / 3;
  };
  if (text.size() <= kMost && fits(text)) return text;
  QString shown;
  for (qsizetype size = std::min(text.size(), kMost); size > 0; size -= size / 8 + 1) {
    shown = text.left(size) + " ...";
    if (fits(shown)) break;
  }
  return shown;
}

QMessageBox::StandardButton Show(QWidget* parent, const std::string& text, const char* title,
                                 QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
                                 const std::string& details = {}) {
  QMessageBox box(icon, title, {}, buttons, parent);
  const QString all = BreakLongWords(ShownLines(text));
  const QString beginning = Beginning(all, box);
  if (!details.empty()) {
    box.setDetailedText(ShownLines(details));
  } else if (beginning != all) {
    box.setDetailedText(ShownLines(text));
  }
  box.setTextFormat(Qt::PlainText);
  box.setText(beginning);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void Tell(QWidget* parent, const std::string& text) {
  Show(parent, text, "Tessaril", QMessageBox::NoIcon, QMessageBox::Ok);
}

void Warn(QWidget* parent, const std::string& text) {
  Show(parent, text, "Tessaril", QMessageBox::Warning, QMessageBox::Ok);
}

bool AskOkCancel(QWidget* parent, const std::string& text, const std::string& details) {
  return Show(parent, text, "Tessaril", QMessageBox::NoIcon, QMessageBox::Ok | QMessageBox::Cancel,
              details) == QMessageBox::Ok;
}

bool AskYesNo(QWidget* parent, const std::string& text, const char* title) {
  return Show(parent, text, title, QMessageBox::NoIcon, QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

}  // namespace tessaril
