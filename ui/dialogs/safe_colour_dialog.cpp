#include "ui/dialogs/safe_colour_dialog.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <string>

#include "ui/shared/fonts.h"
#include "ui/shared/place.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr int kWidth = 5916;  // twips
constexpr int kHeight = 2448;
constexpr int kSafeSteps = 5;    // of a slider that gives web-safe components
constexpr int kFreeSteps = 255;  // of one that gives all

enum class Lettering { kPlain, kBold, kFixed };

struct LabelRow {
  QLabel& label;
  const char* name;
  Place place;
  Lettering lettering;
  const char* caption;
};

// A caption of one line that is too wide for its place is lettered smaller.
void Make(const LabelRow& row) {
  Put(row.label, row.name, row.place);
  row.label.setTextFormat(Qt::PlainText);
  row.label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  row.label.setText(row.caption);
  QFont font = row.label.font();
  font.setBold(row.lettering == Lettering::kBold);
  if (row.lettering == Lettering::kFixed) font = FixedFont();
  if (!row.label.wordWrap()) font = FittedFont(font, row.caption, row.label.width());
  row.label.setFont(font);
}

}  // namespace

SafeColourDialog::SafeColourDialog(QWidget* parent) : KeptDialog(parent) {
  setObjectName("frmSafeColour");
  setWindowTitle("Tessaril -- Safe web colour selector");
  setFixedSize(Pixels(kWidth), Pixels(kHeight));
  setProperty("Tag", QString());
  PutLabels();
  PutSliders();
  PutFields();
}

void SafeColourDialog::PutLabels() {
  using enum Lettering;
  const LabelRow rows[] = {
      {Label10,
       "Label10",
       {72, 108, 5736, 300},
       kBold,
       "Change colour to the 216 colours \"safe colour palette\":"},
      {Label13, "Label13", {72, 396, 2532, 264}, kBold, "Click colour to select:"},
      {Label1, "Label1", {3024, 432, 2820, 228}, kPlain, "(Use 65536+ colours screen resolution)"},
      {Label19, "Label19", {72, 792, 840, 192}, kPlain, "Other:"},
      {lblR, "lblR", {1800, 1008, 948, 192}, kPlain, "R: 0% = h00"},
      {lblG, "lblG", {2772, 1008, 948, 192}, kPlain, "G: 0% = h00"},
      {lblB, "lblB", {3744, 1008, 948, 192}, kPlain, "B: 0% = h00"},
      {lblOthCol, "lblOthCol", {72, 1008, 732, 192}, kFixed, "000000"},
      {Label11, "Label11", {72, 1260, 876, 228}, kPlain, "Keep"},
      {lblColourOld, "lblColourOld", {72, 1512, 732, 192}, kFixed, "FFFFFF"},
      {Label12, "Label12", {72, 1728, 912, 432}, kPlain, "Safe      colour:"},
      {Label2, "Label2", {72, 2160, 912, 192}, kPlain, "HEX value:"},
  };
  Label12.setWordWrap(true);
  for (const LabelRow& row : rows) Make(row);
  lblOthCol.setToolTip("RGB hex value of \"Other\" colour");
  lblColourOld.setToolTip("RGB hex value of the old colour");
  QFont font = lblR.font();
  for (const char* widest : {"G: 0% = h00", "G: 100% hDD"}) font = FittedFont(font, widest, lblG.width());
  for (QLabel* label : {&lblR, &lblG, &lblB}) label->setFont(font);
}

void SafeColourDialog::PutSliders() {
  struct Row {
    QSlider& slider;
    const char* name;
    const char* colour;
    int left;
  };
  const Row rows[] = {
      {sldR, "sldR", "Red", 1728}, {sldG, "sldG", "Green", 2700}, {sldB, "sldB", "Blue", 3672}};
  for (const Row& row : rows) {
    Put(row.slider, row.name, {row.left, 756, 948, 228});
    row.slider.setAccessibleName(row.colour);
    row.slider.setToolTip(QString("%1 slider for the \"Other\" colour field.").arg(row.colour));
    row.slider.installEventFilter(this);
    connect(&row.slider, &QSlider::valueChanged, this, &SafeColourDialog::ColourUpdate);
  }
  Put(ChkSafeCol, "ChkSafeCol", {4650, 690, 1215, 444});
  ChkSafeCol.setText("216 colours palette");
  ChkSafeCol.setToolTip("Ticked: 216 colour safe colour palette. Unchecked: 16 Million colours.");
  ChkSafeCol.setChecked(true);
  SwitchMode(true);
  connect(&ChkSafeCol, &QCheckBox::toggled, this, &SafeColourDialog::SwitchMode);
}

void SafeColourDialog::PutFields() {
  Put(LblOther, "LblOther", {1044, 756, 600, 480});
  LblOther.setToolTip("Click colour field to select its colour. To adjust colour, use the sliders.");
  ChooseByClick(LblOther, lblOthCol);
  Fill(LblOther, "Other colour ", {}, lblOthCol, "000000");
  Put(lblOldCol, "lblOldCol", {1044, 1224, 4800, 480});
  lblOldCol.setToolTip("Click colour field to select the old colour");
  ChooseByClick(lblOldCol, lblColourOld);
  for (std::size_t i = 0; i < kNeighbours; ++i) PutNeighbour(i);
}

void SafeColourDialog::PutNeighbour(std::size_t i) {
  ColourField& field = lblSafeCol[i];
  QLabel& digits = lblColourHex[i];
  const int left = 1044 + 600 * static_cast<int>(i);
  const std::string index = "_" + std::to_string(i);
  field.setParent(this);
  Put(field, ("lblSafeCol" + index).c_str(), {left, 1692, 600, 480});
  field.setToolTip("Click colour field to select its colour");
  ChooseByClick(field, digits);
  digits.setParent(this);
  const std::string name = "lblColourHex" + index;
  Make({digits, name.c_str(), {left, 2196, 600, 228}, Lettering::kFixed, "FFFFFF"});
  digits.setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  digits.setToolTip("RGB hex value of the colour above");
}

// A click on `field` chooses what its label says.
void SafeColourDialog::ChooseByClick(ColourField& field, const QLabel& digits) {
  connect(&field, &ColourField::clicked, this, [this, &digits] {
    setProperty("Tag", digits.text());
    accept();
  });
}

void SafeColourDialog::Fill(ColourField& field, const char* what, const Colour& colour, QLabel& digits,
                            const QString& text) {
  field.SetColour(colour);
  field.setAccessibleName(what + text);
  digits.setText(text);
}

std::optional<QString> SafeColourDialog::Choose(const ColourPieces& old_colour) {
  Fill(lblOldCol, "Old colour ", ColourOf(old_colour), lblColourOld,
       Shown(old_colour[0] + old_colour[1] + old_colour[2]));
  const std::array<Colour, kNeighbours> neighbours = NeighbourColours(old_colour);
  for (std::size_t i = 0; i < kNeighbours; ++i) {
    Fill(lblSafeCol[i], "Safe colour ", neighbours[i], lblColourHex[i], Shown(HexDigits(neighbours[i])));
  }
  if (!Show()) return {};
  return Tag();
}

void SafeColourDialog::showEvent(QShowEvent* event) {
  KeptDialog::showEvent(event);
  if (!event->spontaneous()) lblSafeCol[0].setFocus();
}

// The order of maximum and value matters: a value beyond the maximum would be cut. The "Other" colour waits
// for the next move of a slider.
void SafeColourDialog::SwitchMode(bool safe) {
  Step = safe ? kSafeStep : 1;
  for (QSlider* slider : {&sldR, &sldG, &sldB}) {
    const QSignalBlocker no_update(slider);
    if (safe) {
      slider->setValue((slider->value() + kSafeStep / 2) / kSafeStep);
      slider->setMaximum(kSafeSteps);
    } else {
      slider->setMaximum(kFreeSteps);
      slider->setValue(slider->value() * kSafeStep);
    }
    slider->setPageStep(slider->maximum() / kSafeSteps);
  }
}

void SafeColourDialog::ColourUpdate() {
  const Colour colour{sldR.value() * Step, sldG.value() * Step, sldB.value() * Step};
  lblR.setText(Shown(SliderCaption('R', colour.red)));
  lblG.setText(Shown(SliderCaption('G', colour.green)));
  lblB.setText(Shown(SliderCaption('B', colour.blue)));
  Fill(LblOther, "Other colour ", colour, lblOthCol, Shown(HexDigits(colour)));
}

// A slider that is dragged counts as moved also where its value stays the same.
bool SafeColourDialog::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::MouseMove &&
      static_cast<QMouseEvent*>(event)->buttons().testFlag(Qt::LeftButton)) {
    ColourUpdate();
  }
  return KeptDialog::eventFilter(object, event);
}

}  // namespace tessaril
