#include "ui/editor/editor_window.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>

#include "engine/paths.h"
#include "ui/shared/controls.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/texts.h"
#include "ui/shared/undoable_save.h"

namespace tessaril {
namespace {

constexpr int kNarrower = 150;                // twips that the text is narrower than the frame
constexpr int kLower = 1650;                  // and lower
constexpr Place kNamePlace{72, 540, 0, 264};  // its width goes with the frame's

}  // namespace

EditorWindow::EditorWindow(Session& session, QWidget* parent)
    : QWidget(parent),
      session_(session),
      file_(session.files),
      Gem(MakeButton(this, "Gem", {72, 96, 984, 300}, "&Save", "Save the HTML file")),
      GemSom(
          MakeButton(this, "GemSom", {1072, 96, 984, 300}, "Save  &As", "Save the HTML file as <filename>")),
      MainScreen(MakeButton(this, "MainScreen", {2072, 96, 984, 300}, "To &Main", "Back to the main screen")),
      Command2(MakeButton(this, "Command2", {3072, 96, 984, 300}, "To &Browser", "Back to the browser")),
      Command3(MakeButton(this, "Command3", {4072, 96, 984, 300}, "&Print", "Print the error list")),
      cmdErrorList(MakeButton(this, "cmdErrorList", {5072, 96, 1140, 300}, "&Result List",
                              "See the list of errors found to get the next error")),
      Filname(new CutLabel(Qt::ElideMiddle, this)),
      lblLine(MakeLabel(this, "lblLine", {72, 876, 2400, 264}, "")),
      EditTekst(new EditBox(this)),
      find_(*EditTekst, session.entities) {
  setObjectName("frmEditor");
  Put(*Filname, "Filname", kNamePlace);
  EditTekst->setObjectName("EditTekst");
  EditTekst->setAccessibleName("Text");
  connect(EditTekst, &QPlainTextEdit::textChanged, this, [this] { session_.EditorTextChanged = true; });
  connect(EditTekst, &EditBox::CaretMoved, this, &EditorWindow::ShowLine);
  connect(EditTekst, &EditBox::CaretPut, this, &EditorWindow::ForgetLine);
  connect(&find_, &EditorFind::Found, this, &EditorWindow::ShowLine);
  connect(Gem, &QPushButton::clicked, this, &EditorWindow::Save);
  connect(GemSom, &QPushButton::clicked, this, &EditorWindow::SaveAs);
  connect(MainScreen, &QPushButton::clicked, this, &EditorWindow::MainWanted);
  connect(Command2, &QPushButton::clicked, this, &EditorWindow::BrowserWanted);
  connect(Command3, &QPushButton::clicked, this,
          [this] { emit PrintingWanted(Text(), session_.CurrentFile); });
  connect(cmdErrorList, &QPushButton::clicked, this, &EditorWindow::ResultsWanted);
  MakeMenus();
}

QMenu* EditorWindow::AddMenu(const char* name, const char* caption) {
  auto* const menu = new QMenu(caption, this);
  menu->setObjectName(name);
  menus_.append(menu);
  return menu;
}

void EditorWindow::MakeMenus() {
  QMenu* const menuEMisc = AddMenu("menuEMisc", "&Misc.");
  connect(AddItem(*menuEMisc, "menuEPrinterFont", "&PrinterFont"), &QAction::triggered, this,
          &EditorWindow::PrinterFontWanted);
  QAction* const menuMonospaced = AddItem(*menuEMisc, "menuMonospaced", "&Monospaced Editor Font");
  menuMonospaced->setCheckable(true);
  connect(menuMonospaced, &QAction::toggled, EditTekst, &EditBox::UseMonospacedFont);
  menuEMisc->addSeparator()->setObjectName("menuSpacer0");
  connect(AddItem(*menuEMisc, "menuNewDoc", "New document"), &QAction::triggered, this,
          &EditorWindow::BeginNew);
  menuEMisc->addSeparator()->setObjectName("menuSpacer1");
  connect(AddItem(*menuEMisc, "menuEExit", "&Exit"), &QAction::triggered, this, &EditorWindow::ExitWanted);
  QMenu* const menuEdit = AddMenu("menuEdit", "&Edit");
  QAction* const menuEditFind = AddItem(*menuEdit, "menuEditFind", "Find");
  menuEditFind->setShortcut(Qt::CTRL | Qt::Key_F);
  connect(menuEditFind, &QAction::triggered, &find_, &EditorFind::Find);
  QAction* const menuEditFindAgain = AddItem(*menuEdit, "menuEditFindAgain", "Find Again");
  menuEditFindAgain->setShortcut(Qt::Key_F3);
  connect(menuEditFindAgain, &QAction::triggered, &find_, &EditorFind::FindAgain);
  QMenu* const menuEHelp = AddMenu("menuEHelp", "&Help");
  QAction* const menuE0Help = AddItem(*menuEHelp, "menuE0Help", "&Help");
  menuE0Help->setShortcut(Qt::Key_F1);
  menuE0Help->setAutoRepeat(false);
  connect(menuE0Help, &QAction::triggered, this, &EditorWindow::HelpWanted);
  connect(AddItem(*menuEHelp, "menuEAbout", "&About"), &QAction::triggered, this,
          &EditorWindow::AboutBoxWanted);
}

void EditorWindow::Prepare() {
  EditTekst->Move({0, 0});
}

void EditorWindow::ForgetLine() {
  lblLine->clear();
}

void EditorWindow::ShowLine() {
  lblLine->setText("Line " + QString::number(EditTekst->CaretLine()));
}

void EditorWindow::OfferResults(bool offered) {
  cmdErrorList->setVisible(offered);
}

bool EditorWindow::Load(const std::string& path) {
  session_.CurrentFile = path;
  LoadedText text;
  const bool is_read = file_.Load(path, text).ok();
  if (is_read) {
    if (text.is_cut) {
      Tell(this, "File too lang: " + std::to_string(text.size) +
                     " bytes.\r\nShows the first 56.000 characters in HTML.");
    }
    EditTekst->Load(text.bytes, text.encoding, text.line_end);
    session_.EditorTextChanged = false;
  }
  ShowFile();
  return is_read;
}

void EditorWindow::ShowFile() {
  session_.CurrentFile = file_.path();
  Filname->SetText(Shown(file_.path()));
}

void EditorWindow::BeginNew() {
  if (session_.EditorTextChanged && !AskOkCancel(this, "Leave the document WITHOUT saving the changes?")) {
    return;
  }
  file_.BeginNew(AbsolutePath("/", JoinPath(session_.LastDir, "Doc0.txt")));
  ShowFile();
  EditTekst->Load("", PageEncoding::kUtf8, "\n");
  session_.EditorTextChanged = false;
  emit NewBegun();
}

void EditorWindow::Save() {
  SaveInto(file_.path());
}

void EditorWindow::SaveAs() {
  if (const std::string path = AskWhereToSave(); !path.empty()) SaveInto(path);
}

// The file's name may be one that the dialog takes for another: it need not be a text, and of names in
// quotation marks the dialog takes these off. What is left as it was proposed is the file's own.
std::string EditorWindow::AskWhereToSave() {
  QFileDialog dialog(this, "Save As", QFile::decodeName(session_.files.CurrentFolder().c_str()));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.selectFile(QFile::decodeName(file_.path().c_str()));
  const QStringList proposed = dialog.selectedFiles();
  if (dialog.exec() != QDialog::Accepted) return {};
  const QStringList chosen = dialog.selectedFiles();
  const bool is_own = chosen == proposed && !file_.path().empty();
  return is_own ? file_.path() : QFile::encodeName(chosen.value(0)).toStdString();
}

bool EditorWindow::MayOverwriteOwnFile() {
  return (!file_.IsCut() ||
          AskOkCancel(this, "The file is longer than what is shown. Save only what is shown?")) &&
         (!file_.HasChanged() || AskOkCancel(this, "The file was changed on disk. Overwrite it?"));
}

// The folder of the file may be another by now.
void EditorWindow::SaveInto(const std::string& path) {
  (void)session_.files.EnterFolder(session_.files.CurrentFolder());
  const auto save = [this](const std::string& where, std::string_view text) {
    return SaveUndoably(session_, this, where, text);
  };
  if (IsOwnFile(path) && !MayOverwriteOwnFile()) return;
  if (const Status status = file_.Save(path, Text(), save); !status.ok()) {
    return Tell(this, "Not saved: " + status.reason());
  }
  session_.EditorTextChanged = false;
  ShowFile();
  emit Saved();
}

void EditorWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  emit MainWanted();
}

void EditorWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!window()->isMinimized()) LayOut();
}

// The text ends as far above the window's end as beside its sides.
void EditorWindow::LayOut() {
  const QSize frame = window()->size();
  if (frame.height() < Pixels(kLower)) return;
  const QSize size(frame.width() - Pixels(kNarrower), frame.height() - Pixels(kLower));
  const int margin = Pixels(kNarrower / 2);
  EditTekst->setGeometry({QPoint(margin, height() - margin - size.height()), size});
  Filname->resize(size.width(), Filname->height());
}

}  // namespace tessaril
