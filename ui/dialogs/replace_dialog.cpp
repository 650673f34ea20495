#include "ui/dialogs/replace_dialog.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "ui/shared/fonts.h"
#include "ui/shared/place.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

// Twips.
constexpr int kWidth = 5544;
constexpr int kHeight = 4764;
constexpr int kButtonTop = 4032;
constexpr int kHeightWithoutField = 2858;
constexpr int kButtonTopWithoutField = 2124;

void MakeBox(ByteTextBox& box, const char* name, const Place& place, const char* tooltip) {
  Put(box, name, place);
  box.setFont(FixedFont());
  box.setToolTip(tooltip);
  box.setLineWrapMode(QPlainTextEdit::WidgetWidth);
  box.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  box.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

}  // namespace

ReplaceDialog::ReplaceDialog(QWidget* parent) : KeptDialog(parent) {
  setObjectName("frmReplace");
  setWindowTitle("Tessaril");
  setFixedSize(Pixels(kWidth), Pixels(kHeight));
  PutLabels();
  PutButtons();
  PutFields();
}

void ReplaceDialog::PutLabels() {
  struct Row {
    QLabel& label;
    const char* name;
    Place place;
    const char* caption;
  };
  const Row rows[] = {
      {Label3, "Label3", {72, 36, 516, 228}, "In file:"},
      {FileName, "FileName", {612, 36, 4836, 228}, ""},
      {Label1, "Label1", {72, 216, 4152, 336}, "Replace:"},
      {Label2, "Label2", {36, 2124, 2388, 336}, "... in link (editable):"},
      {Label4, "Label4", {2448, 2124, 2964, 336}, ""},
  };
  for (const Row& row : rows) {
    Put(row.label, row.name, row.place);
    row.label.setTextFormat(Qt::PlainText);
    row.label.setText(row.caption);
  }
  Label1.setBuddy(&SearchText);
  Label2.setBuddy(&ReplaceText);
}

void ReplaceDialog::PutFields() {
  MakeBox(SearchText, "SearchText", {36, 540, 5376, 1524}, "Not editable field");
  MakeBox(ReplaceText, "ReplaceText", {36, 2448, 5376, 1524}, "Editable field");
  SearchText.setReadOnly(true);
  SearchText.viewport()->setBackgroundRole(QPalette::Window);
}

void ReplaceDialog::PutButtons() {
  struct Row {
    AnswerButton& button;
    const char* name;
    int left;
    int width;
    const char* caption;
    const char* tooltip;
  };
  const Row rows[] = {
      {btnStop, "btnStop", 36, 1488, "Keep old && &Stop !", "Keep old text and stop the search."},
      {btnPalette, "btnPalette", 2592, 948, "&Palette", ""},
      {btnKeep, "btnKeep", 3564, 948, "&Keep old", "Next (no change)"},
      {btnReplace, "btnReplace", 4500, 948, "&Replace", "Replace as indicated in the white field"},
  };
  for (const Row& row : rows) {
    Put(row.button, row.name, {row.left, kButtonTop, row.width, 336});
    row.button.setText(row.caption);
    row.button.setToolTip(row.tooltip);
  }
  keep_tooltip_ = btnKeep.toolTip();
  btnPalette.hide();
  connect(&btnKeep, &QPushButton::clicked, this, [this] { Answer(kKeep); });
  connect(&btnReplace, &QPushButton::clicked, this, [this] { Answer(kReplace); });
  connect(&btnStop, &QPushButton::clicked, this, [this] { Answer(kStop); });
  connect(&btnPalette, &QPushButton::clicked, this, &ReplaceDialog::ChooseColour);
}

void ReplaceDialog::SetUp(const FunctionRow& row, Rules rules) {
  if (row.Label1.empty()) return;
  const bool keeps_page = row.function == Function::kLinks && rules == Rules::kToday;
  btnKeep.setToolTip(keeps_page ? "Next (keeping the page as it is)" : keep_tooltip_);
  const bool editable = !row.Label2.empty();
  Label1.setText(Shown(row.Label1));
  if (editable) Label2.setText(Shown(row.Label2));
  Label2.setVisible(editable);
  ReplaceText.setVisible(editable);
  btnReplace.setVisible(editable);
  btnStop.setText(editable ? "Keep old && Stop !" : "Stop !");
  btnKeep.setText(editable ? "Keep old" : "Next");
  setFixedSize(Pixels(kWidth), Pixels(editable ? kHeight : kHeightWithoutField));
  const int top = Pixels(editable ? kButtonTop : kButtonTopWithoutField);
  for (AnswerButton* button : {&btnKeep, &btnReplace, &btnStop}) button->move(button->x(), top);
}

void ReplaceDialog::ChooseFunction(Function function) {
  if (function != Function::kShowFile) btnPalette.setVisible(function == Function::kColours);
  if (function == Function::kLinks) {
    keep_tooltip_ = "Next (replacing as shown in the white field if changed)";
  } else if (function == Function::kReplace) {
    keep_tooltip_ = "Next, keeping the old text (no change)";
  }
  btnKeep.setToolTip(keep_tooltip_);
}

ProposalAnswer ReplaceDialog::Ask(const Proposal& proposal, const ColourPieces& colour) {
  proposal_ = proposal;
  colour_ = colour;
  const std::string text = proposal.ReplaceText.value_or("");
  FileName.SetText(Shown(proposal.FileName));
  Label4.SetText(Shown(proposal.Label4));
  ReplaceText.SetTyping(proposal.encoding, proposal.line_end);
  SearchText.SetBytes(proposal.SearchText);
  ReplaceText.SetBytes(text);
  answer_ = {kStop, text};  // unless the user answers before the program ends
  Show();
  Label4.SetText({});
  return answer_;
}

void ReplaceDialog::Answer(ReplaceAnswer answer) {
  answer_.ReplaceAnswer = answer;
  if (proposal_.ReplaceText) answer_.ReplaceText = ReplaceText.Bytes();
  accept();
}

void ReplaceDialog::StopAsking() {
  if (!isVisible()) return;
  if (palette_) palette_->reject();
  done(Rejected);
}

void ReplaceDialog::reject() {
  answer_.ReplaceAnswer = kKeep;
  KeptDialog::reject();
}

void ReplaceDialog::ChooseColour() {
  if (!palette_) palette_ = std::make_unique<SafeColourDialog>(this);
  const std::optional<QString> digits = palette_->Choose(colour_);
  if (!digits) return;
  const RecolouredText put =
      PutDigits(proposal_.SearchText, proposal_.SearchSelection.start, Entered(*digits));
  ReplaceText.SetBytes(put.text);
  ReplaceText.Select(put.selection);
  const QString old_digits = Shown(colour_[0] + colour_[1] + colour_[2]);
  if (*digits != old_digits) emit ColourChosen(old_digits, *digits);
}

void ReplaceDialog::ShowSelections() {
  SearchText.Select(proposal_.SearchSelection);
  ReplaceText.Select(proposal_.ReplaceSelection);
}

// Only now do the fields know their lines, so that a selection can be scrolled into view.
void ReplaceDialog::showEvent(QShowEvent* event) {
  KeptDialog::showEvent(event);
  if (event->spontaneous()) return;
  ShowSelections();
  btnKeep.setFocus();
}

void ReplaceDialog::keyPressEvent(QKeyEvent* event) {
  const bool back = event->key() == Qt::Key_Left || event->key() == Qt::Key_Up;
  const bool on = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
  const std::array<AnswerButton*, 4> buttons = {&btnKeep, &btnReplace, &btnPalette, &btnStop};
  const auto* at = std::find(buttons.begin(), buttons.end(), focusWidget());
  if (!(back || on) || at == buttons.end()) return KeptDialog::keyPressEvent(event);
  auto i = static_cast<std::size_t>(at - buttons.begin());
  do {
    i = (i + (on ? 1 : buttons.size() - 1)) % buttons.size();
  } while (buttons[i]->isHidden());
  buttons[i]->setFocus();
}

}  // namespace tessaril
