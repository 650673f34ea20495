#include "ui/main/function_buttons.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QShortcutEvent>
#include <string>
#include <utility>

#include "ui/shared/colours.h"
#include "ui/shared/place.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

struct Row {
  Function function;
  QColor colour;  // invalid: that of other captions
  const char* tooltip;
};

// In their order on the screen.
const std::array<Row, 7>& Rows() {
  static const QColor red(255, 0, 0), blue(0, 0, 255), green(0, 128, 0);
  static const std::array<Row, 7> rows = {{
      {Function::kEntities, red,
       "Convert ASCII > 127 characters and &#nnn; style tags to &xxxx; style tags in a file/all files in the "
       "current directory and below"},
      {Function::kLinks, red,
       "Search for \"local\" link errors in a file/all files in the current directory and below"},
      {Function::kColours, red,
       "Search for \"web safe colour\" errors in a file/all files in the current directory and below"},
      {Function::kExternal, blue, "Search for all external links and show in browser ready for testing"},
      {Function::kSearch, green, "Search for a text in a file/all files in current directory and below"},
      {Function::kReplace, green,
       "Search & replace text in a file/all files in the current directory and below"},
      {Function::kShowFile, {}, "Show the marked file in a browser/editor. See menu Misc./Show File..."},
  }};
  return rows;
}

class FunctionButton : public QRadioButton {
 public:
  using QRadioButton::QRadioButton;
  std::function<void()> on_press;
  std::function<void(int step)> on_arrow;
  std::function<void()> on_access_key;

 protected:
  // The press counts, not the release.
  void mousePressEvent(QMouseEvent* event) override {
    event->accept();
    setChecked(true);
    on_press();
  }

  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Up:
      case Qt::Key_Left:
        return on_arrow(-1);
      case Qt::Key_Down:
      case Qt::Key_Right:
        return on_arrow(1);
      default:
        QRadioButton::keyPressEvent(event);
    }
  }

  bool event(QEvent* event) override {
    if (event->type() != QEvent::Shortcut) return QRadioButton::event(event);
    setFocus(Qt::ShortcutFocusReason);
    if (!static_cast<QShortcutEvent*>(event)->isAmbiguous()) on_access_key();
    return true;
  }
};

}  // namespace

FunctionButtons::FunctionButtons(QWidget* frame) {
  int top = 180;
  for (const Row& row : Rows()) {
    const auto index = static_cast<std::size_t>(row.function);
    auto* const button = new FunctionButton(Shown(RowOf(row.function).caption), frame);
    Put(*button, ("Option1_" + std::to_string(index)).c_str(), {72, top, 3252, 300});
    top += 252;
    button->setToolTip(row.tooltip);
    if (row.colour.isValid()) SetTextColour(*button, row.colour);
    button->on_press = [this, function = row.function] { on_choose(function); };
    button->on_access_key = [this, function = row.function] {
      Select(function);
      on_move();
    };
    button->on_arrow = [this, function = row.function](int step) { Move(function, step); };
    QObject::connect(button, &QRadioButton::clicked, button, button->on_press);
    Option1[index] = button;
  }
}

Function FunctionButtons::Selected() const {
  for (const Row& row : Rows()) {
    if (Button(row.function)->isChecked()) return row.function;
  }
  return Function::kEntities;
}

void FunctionButtons::Select(Function function) {
  Button(function)->setChecked(true);
}

QRadioButton* FunctionButtons::Button(Function function) const {
  return Option1[static_cast<std::size_t>(function)];
}

void FunctionButtons::Move(Function from, int step) {
  const auto& rows = Rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].function != from) continue;
    const std::size_t to = (i + rows.size() + static_cast<std::size_t>(step)) % rows.size();
    Select(rows[to].function);
    Button(rows[to].function)->setFocus(step < 0 ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    on_move();
    return;
  }
}

}  // namespace tessaril
