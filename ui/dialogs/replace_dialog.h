#ifndef TESSARIL_UI_DIALOGS_REPLACE_DIALOG_H_
#define TESSARIL_UI_DIALOGS_REPLACE_DIALOG_H_

#include <QLabel>
#include <memory>
#include <string>

#include "engine/functions.h"
#include "engine/run_host.h"
#include "engine/safe_colours.h"
#include "engine/site_rules.h"
#include "ui/dialogs/answer_button.h"
#include "ui/dialogs/kept_dialog.h"
#include "ui/dialogs/safe_colour_dialog.h"
#include "ui/shared/byte_text_box.h"
#include "ui/shared/cut_label.h"

namespace tessaril {

/// frmReplace: shows one finding after another and takes the user's answers. There is one for the program.
/// What a run or the choice of a function sets stays until it is set again.
class ReplaceDialog : public KeptDialog {
  Q_OBJECT

 public:
  explicit ReplaceDialog(QWidget* parent = nullptr);

  /// What a run sets for its function: captions, which controls are shown, the height, and for links that are
  /// judged by today's rules the tooltip of `btnKeep`. A function that puts no findings to the user leaves
  /// all as it is.
  void SetUp(const FunctionRow& row, Rules rules = Rules::kClassic);

  /// What the choice of a function in the main window sets: the palette button and the tooltip of `btnKeep`.
  void ChooseFunction(Function function);

  /// Shows a finding and waits. `colour` is what the palette starts from, the colour last tested. Esc and the
  /// close box answer `kKeep` with the proposal's own text.
  ProposalAnswer Ask(const Proposal& proposal, const ColourPieces& colour);

  /// Ends an open showing, and that of the palette, as `kStop` with the proposal's own text. For when the
  /// program is left meanwhile.
  void StopAsking();

  void reject() override;

 signals:
  /// A colour other than the old one was taken from the palette. Both are digits without "#".
  void ColourChosen(const QString& old_digits, const QString& digits);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void PutLabels();
  void PutFields();
  void PutButtons();
  void Answer(ReplaceAnswer answer);
  void ChooseColour();
  void ShowSelections();

  QLabel Label3{this}, Label1{this}, Label2{this};
  CutLabel FileName{Qt::ElideMiddle, this}, Label4{Qt::ElideRight, this};
  // Made in the order of Tab.
  AnswerButton btnKeep{this}, btnReplace{this}, btnPalette{this}, btnStop{this};
  ByteTextBox SearchText{this}, ReplaceText{this};
  std::unique_ptr<SafeColourDialog> palette_;
  QString keep_tooltip_;  // as the choice of a function has set it

  // While a finding is shown:
  Proposal proposal_;
  ColourPieces colour_;
  ProposalAnswer answer_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_REPLACE_DIALOG_H_
