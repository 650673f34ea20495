#ifndef TESSARIL_UI_DIALOGS_FIND_DIALOG_H_
#define TESSARIL_UI_DIALOGS_FIND_DIALOG_H_

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <string>

#include "ui/dialogs/kept_dialog.h"

namespace tessaril {

/// frmFind: what the editor is to find, and how. The text and both options stay from one showing to the next.
class FindDialog : public KeptDialog {
  Q_OBJECT

 public:
  explicit FindDialog(QWidget* parent = nullptr);

  /// Shows the dialog and waits. True when the user wants the search; the dynamic property "Tag" is one blank
  /// then, else empty.
  bool Ask();

  /// The text as it is in the box now, UTF-8, and what is ticked.
  std::string Text() const;
  bool ConvertsToTags() const { return chkTags->isChecked(); }
  bool IsCaseDependent() const { return CaseDep->isChecked(); }

 private:
  QLineEdit* Text1;
  QCheckBox* chkTags;
  QCheckBox* CaseDep;
  QPushButton* Command1;
  QPushButton* Command2;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_FIND_DIALOG_H_
