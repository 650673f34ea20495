#include "ui/dialogs/about_box.h"

#include <QShortcut>

#include "engine/version.h"
#include "ui/shared/controls.h"
#include "ui/shared/program_icon.h"

namespace tessaril {
namespace {

constexpr int kWidth = 5808;  // twips
constexpr int kHeight = 3924;
constexpr int kIcon = 720;
constexpr char kDescription[] =
    "The webmasters' best friend!\n"
    "\n"
    "Helps you ...\n"
    "- repairing internal/external dead links and bad &xxxx; type tags.\n"
    "- finding and replacing/editing a string in all your HTML files.\n"
    "- making minor HTML adjustments - in one file or in all files.";
constexpr char kDisclaimer[] =
    "Free software, without any warranty. Keep a copy of your site before you change many files.";

}  // namespace

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle("About Tessaril");
  setFixedSize(Pixels(kWidth), Pixels(kHeight));
  MakeLabel(this, "picIcon", {240, 240, kIcon, kIcon}, "")->setPixmap(ProgramIcon().pixmap(Pixels(kIcon)));
  QLabel* const lblTitle = MakeLabel(this, "lblTitle", {1200, 240, 4368, 384}, "Tessaril");
  QFont font = lblTitle->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  lblTitle->setFont(font);
  MakeLabel(this, "lblVersion", {1200, 672, 4368, 264}, (std::string("Version ") + Version()).c_str());
  QLabel* const lblDescription = MakeLabel(this, "lblDescription", {240, 1104, 5328, 1848}, kDescription);
  QLabel* const lblDisclaimer = MakeLabel(this, "lblDisclaimer", {240, 3072, 3780, 696}, kDisclaimer);
  for (QLabel* const label : {lblDescription, lblDisclaimer}) {
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  }
  QPushButton* const cmdOK = MakeButton(this, "cmdOK", {4140, 3072, 1428, 300}, "&OK", "");
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::close);
  QPushButton* const cmdSysInfo =
      MakeButton(this, "cmdSysInfo", {4140, 3468, 1428, 300}, "&System Info...", "");
  connect(cmdSysInfo, &QPushButton::clicked, this, &AboutBox::SystemInfoWanted);
  auto* const help = new QShortcut(Qt::Key_F1, this);
  help->setAutoRepeat(false);
  connect(help, &QShortcut::activated, this, &AboutBox::HelpWanted);
}

}  // namespace tessaril
