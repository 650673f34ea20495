#ifndef TESSARIL_UI_DIALOGS_SAFE_COLOUR_DIALOG_H_
#define TESSARIL_UI_DIALOGS_SAFE_COLOUR_DIALOG_H_

#include <QLabel>
#include <QSlider>
#include <array>
#include <optional>

#include "engine/safe_colours.h"
#include "ui/dialogs/colour_field.h"
#include "ui/dialogs/kept_dialog.h"
#include "ui/dialogs/wrapping_check_box.h"

namespace tessaril {

/// frmSafeColour: the user takes the old colour, one of eight web-safe colours near it, or another colour
/// that three sliders mix. The sliders, their mode and the colour chosen last stay from one showing to the
/// next.
class SafeColourDialog : public KeptDialog {
  Q_OBJECT

 public:
  explicit SafeColourDialog(QWidget* parent = nullptr);

  /// Offers the colours for an old one, shows the dialog and waits. Returns the new `Tag`; nothing when the
  /// dialog was closed without a choice.
  std::optional<QString> Choose(const ColourPieces& old_colour);

  /// The colour chosen last: the text beside its field, which is six upper-case hexadecimal digits, or the
  /// old colour as it stood. Also the dynamic property "Tag".
  QString Tag() const { return property("Tag").toString(); }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  static constexpr std::size_t kNeighbours = 8;

  void PutLabels();
  void PutFields();
  void PutSliders();
  void PutNeighbour(std::size_t i);
  void ChooseByClick(ColourField& field, const QLabel& digits);
  void Fill(ColourField& field, const char* what, const Colour& colour, QLabel& digits, const QString& text);
  void SwitchMode(bool safe);
  void ColourUpdate();

  QLabel Label10{this}, Label13{this}, Label1{this}, Label19{this}, Label11{this}, Label12{this},
      Label2{this};
  QLabel lblR{this}, lblG{this}, lblB{this}, lblOthCol{this}, lblColourOld{this};
  std::array<QLabel, kNeighbours> lblColourHex;

  ColourField LblOther{this};
  QSlider sldR{Qt::Horizontal, this}, sldG{Qt::Horizontal, this}, sldB{Qt::Horizontal, this};
  WrappingCheckBox ChkSafeCol{this};
  ColourField lblOldCol{this};
  std::array<ColourField, kNeighbours> lblSafeCol;
  int Step = kSafeStep;  // components to a step of a slider
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_SAFE_COLOUR_DIALOG_H_
