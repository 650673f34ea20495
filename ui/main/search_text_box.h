#ifndef TESSARIL_UI_MAIN_SEARCH_TEXT_BOX_H_
#define TESSARIL_UI_MAIN_SEARCH_TEXT_BOX_H_

#include <QLineEdit>

namespace tessaril {

/// A text box that says at first what is to be entered. The first click empties it; entered by keyboard, it
/// is selected whole, so that typing replaces it. From then on its dynamic property "Tag" is "X", as
/// it is when somebody else has filled the box with a real text; such a text stays when clicked.
class SearchTextBox : public QLineEdit {
 public:
  SearchTextBox(const char* hint, QWidget* parent);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_SEARCH_TEXT_BOX_H_
