#ifndef TESSARIL_UI_WEBENGINE_PAGE_QUESTION_H_
#define TESSARIL_UI_WEBENGINE_PAGE_QUESTION_H_

#include <QDialog>
#include <QString>

class QLineEdit;

namespace tessaril {

/// What a script has to say or to ask, as plain text. One that goes on and on can be stopped.
class PageQuestion : public QDialog {
  Q_OBJECT

 public:
  enum Kind { kTell, kAsk, kAskText };

  /// `can_stop` offers the button that stops the page.
  PageQuestion(QWidget* parent, const QString& origin, const QString& text, Kind kind, bool can_stop);

  void SetAnswer(const QString& text);
  QString Answer() const;

  /// Whether the page is to be stopped; the question is then answered with no.
  bool IsToStop() const { return is_to_stop_; }

 private:
  QLineEdit* answer_;
  bool is_to_stop_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_PAGE_QUESTION_H_
