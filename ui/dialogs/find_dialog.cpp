#include "ui/dialogs/find_dialog.h"

#include <QLabel>
#include <QRegularExpression>

#include "ui/shared/controls.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr int kWidth = 3840;  // twips
constexpr int kHeight = 1704;

}  // namespace

FindDialog::FindDialog(QWidget* parent) : KeptDialog(parent) {
  setObjectName("frmFind");
  setWindowTitle(" ");
  setFixedSize(Pixels(kWidth), Pixels(kHeight));
  setProperty(kTag, "");
  QLabel* const Label1 = MakeLabel(this, "Label1", {72, 120, 864, 264}, "Find text:");
  Text1 = new QLineEdit(this);
  Put(*Text1, "Text1", {960, 108, 2808, 288});
  Text1->setToolTip("Enter search text here");
  Tie(*Label1, *Text1);
  chkTags = MakeCheckBox(this, "chkTags", {72, 504, 2400, 264}, "Conv. to &&xxxx; tags",
                         "Search with ASCII>127 converted to &xxxx; tags");
  chkTags->setChecked(true);
  CaseDep = MakeCheckBox(this, "CaseDep", {72, 840, 2400, 264}, "Case dependent",
                         "Tick for search in correct UPPER and lower case");
  Command1 = MakeButton(this, "Command1", {2784, 504, 984, 300}, "&Search", "Make the search");
  Command2 = MakeButton(this, "Command2", {2784, 840, 984, 300}, "&Cancel", "Return without searching");
  MakeLabel(this, "Label2", {72, 1260, 3696, 264}, "Afterwards: Next: press F3");
  Command1->setDefault(true);
  connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
  connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
  // A text that was copied from a page may have line ends in it, which match as blanks do.
  connect(Text1, &QLineEdit::textChanged, this, [this](const QString& text) {
    static const QRegularExpression kLineEnd("\\r\\n|[\\r\\n\\x{2028}\\x{2029}]");
    if (text.contains(kLineEnd)) Text1->setText(QString(text).replace(kLineEnd, " "));
  });
}

bool FindDialog::Ask() {
  Text1->setFocus();
  Text1->selectAll();
  const bool wanted = Show();
  setProperty(kTag, wanted ? " " : "");
  return wanted;
}

std::string FindDialog::Text() const {
  return Entered(Text1->text());
}

}  // namespace tessaril
