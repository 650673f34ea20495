#include "ui/main/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QRegularExpression>
#include <utility>

#include "engine/paths.h"
#include "ui/main/function_choice.h"
#include "ui/main/search_text_box.h"
#include "ui/shared/controls.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/save_file.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr Place kButtonPlace{0, 4896, 984, 300};  // the left edge is set with the panel
constexpr QSize kNormalSize{7110, 5355};          // twips

}  // namespace

MainWindow::MainWindow(Session& session, Program& program, QWidget* parent)
    : QWidget(parent),
      session_(session),
      program_(program),
      Picture1(session.files, this),
      Picture2(this),
      cmdUdskriv(MakeButton(this, "cmdUdskriv", kButtonPlace, "&Print", "Print the results")),
      cmdSearch(MakeButton(this, "cmdSearch", kButtonPlace, "&Search", "Click to start the search")),
      cmdExit(MakeButton(this, "cmdExit", kButtonPlace, "E&xit", "Terminate the programme")),
      frmReplace(this),
      view_(Picture2,
            [&program](const std::string& text, const std::string& title) { program.Print(text, title); }),
      host_(*this, *this, view_, frmReplace, state_) {
  setObjectName("MainWindow");
  Picture2.hide();
  cmdUdskriv->hide();
  Picture1.cmdSeeResults->hide();
  const QString files_tooltip = Picture1.filList->toolTip();
  Picture1.Option1->Select(applied_);
  ApplyFunction(applied_, Picture1);
  ShowLabelsOfTexts(Picture1);
  frmReplace.ChooseFunction(applied_);
  Picture1.filList->setToolTip(files_tooltip);
  Picture1.filList->SetPattern(Picture1.cboSearchSpec->Text());
  Connect();
  setTabOrder(cmdExit, Picture2.UdTxt);  // all others are made in their order
  PlaceBtn();
  Picture1.cboSearchSpec->setFocus();
  Timer1 = new QTimer(this);
  Timer1->setObjectName("Timer1");
  connect(Timer1, &QTimer::timeout, this, &MainWindow::OpenCommandLine);
  if (!session_.CommandLine.empty()) Timer1->start(1);
}

void MainWindow::Connect() {
  connect(cmdUdskriv, &QPushButton::clicked, this,
          [this] { program_.Print(state_.Results, "Tessaril " + state_.ReportTitle); });
  connect(cmdSearch, &QPushButton::clicked, this, &MainWindow::PressSearch);
  connect(cmdExit, &QPushButton::clicked, this, &MainWindow::PressExit);
  connect(Picture1.cmdSeeResults, &QPushButton::clicked, this, &MainWindow::SeeResults);
  connect(Picture2.cmdSaveAs, &QPushButton::clicked, this, &MainWindow::SaveAs);
  Picture1.Option1->on_choose = [this](Function function) { Choose(function); };
  Picture1.Option1->on_move = [this] {
    if (!IsChosen(Function::kShowFile)) cmdSearch->show();  // which chooses it first
  };
  connect(Picture1.MarkedOnly, &QCheckBox::clicked, this, [this](bool ticked) {
    Picture1.MarkedOnly->setProperty(kTag, ticked ? "1" : "0");
    FollowMarkedOnly();
  });
  connect(Picture1.filList, &FileList::Clicked, this, &MainWindow::ClickFile);
  connect(Picture1.filList, &FileList::DoubleClicked, this, &MainWindow::DoubleClickFile);
  connect(Picture1.dirList, &FolderList::Changed, this, [this] {
    Picture1.filList->SetFolder(Picture1.dirList->OpenFolder());
    Picture1.drvList->ShowDriveOf(Picture1.dirList->OpenFolder());
    ShowRules();
  });
  connect(Picture1.dirList, &FolderList::Left, this, [this] {
    if (QApplication::focusWidget() != cmdSearch) Picture1.dirList->OpenHighlighted();
  });
  connect(Picture1.drvList, &DriveList::Picked, this, [this](const std::string& path) {
    if (!OpenFolder(path)) Picture1.drvList->ShowDriveOf(Picture1.dirList->OpenFolder());
  });
  connect(Picture1.cboSearchSpec, &FilterBox::Picked, this, &MainWindow::PickFilter);
  connect(Picture1.CGI, &QCheckBox::clicked, this, [this](bool ticked) {
    Picture1.CGIname->setVisible(ticked);
    Picture1.CGIlabel->setVisible(ticked);
  });
  connect(Picture1.CGIname, &QLineEdit::textChanged, this, [this](const QString& name) {
    Picture1.CGI->setText("Don't check links with \"" + AsCaption(name) + "\"");
  });
  connect(Picture1.ShowEach, &QCheckBox::clicked, this, [this](bool ticked) {
    if (ticked) return;
    Warn(this,
         "Warning!\r\nSwitching this function off may be dangerous,\r\n"
         "especially if used with the \"&xxxx;\" function!");
  });
  connect(Picture2.UdTxt, &QPlainTextEdit::textChanged, this, [this] {
    if (view_.IsFilling() || Picture2.UdTxt->isReadOnly() || !cmdSearch->isVisibleTo(this)) return;
    state_.Results = Picture2.UdTxt->Bytes();
  });
  connect(&frmReplace, &ReplaceDialog::ColourChosen, this, [this](const QString& old, const QString& chosen) {
    Picture1.SearchTekst->setText("#" + old);
    Picture1.SearchTekst->setProperty(kTag, "X");
    Picture1.ReplaceText->setText("#" + chosen);
  });
}

void MainWindow::SetCgiName(const QString& name) {
  static const QRegularExpression kBlanksAround("^ +| +$");
  for (const QString& text : {name, QString(name).remove(kBlanksAround)}) {
    Picture1.CGIname->setText(text);
    emit Picture1.CGIname->textChanged(text);  // counts as a change, also when the text is the same
  }
}

QString MainWindow::CgiName() const {
  return Picture1.CGIname->text();
}

void MainWindow::SetUpperCasePermitted(bool permitted) {
  Picture1.UCfilename->setChecked(permitted);
}

bool MainWindow::UpperCasePermitted() const {
  return Picture1.UCfilename->isChecked();
}

void MainWindow::SetShowFileCaption(const char* caption) {
  Picture1.Option1->Button(Function::kShowFile)->setText(caption);
}

bool MainWindow::OpenFolder(const std::string& folder) {
  return Picture1.dirList->Open(folder);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (window()->isMinimized()) return;
  Picture2.FitInto(program_.FrameSize());
  PlaceBtn();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  program_.Leave();
}

void MainWindow::PlaceBtn() {
  const bool options = Picture1.isVisibleTo(this);
  // Left edges in twips; on the results panel they count from the right.
  constexpr int kOnOptions[] = {5940, 4968, 3996};
  constexpr int kOnResults[] = {1200, 2200, 3200};
  const int top = Pixels(options ? kButtonPlace.top : 72);
  int i = 0;
  for (QPushButton* const button : {cmdExit, cmdSearch, cmdUdskriv}) {
    button->move(options ? Pixels(kOnOptions[i]) : width() - Pixels(kOnResults[i]), top);
    ++i;
  }
  Picture2.cmdSaveAs->move(width() - Pixels(4200), Pixels(72));
}

void MainWindow::PressExit() {
  if (cmdExit->text() == "&Cancel") return host_.Cancel();
  if (cmdExit->text() == "&Return") return program_.ReturnToEditor();
  if (AskOkCancel(this, "Leave Tessaril?")) program_.Leave();
}

void MainWindow::SeeResults() {
  if (Picture2.UdTxt->document()->isEmpty()) return;
  ShowResultsPanel();
  ShowToMainButton();
}

void MainWindow::SaveAs() {
  const std::string text = Picture2.UdTxt->Bytes();
  const QString folder = QFile::decodeName(session_.files.CurrentFolder().c_str());
  QFileDialog dialog(this, "Save As", folder);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters({text.starts_with("<HTML>") ? "*.htm" : "*.txt", "*"});
  if (dialog.exec() != QDialog::Accepted) return;
  const std::string path = QFile::encodeName(dialog.selectedFiles().value(0)).toStdString();
  if (const Status status = SaveFile(session_.files, path, text); !status.ok()) {
    Tell(this, "Not saved: " + status.reason());
  }
}

void MainWindow::Choose(Function function) {
  Picture1.Option1->Select(function);
  applied_ = function;
  ApplyFunction(function, Picture1);
  cmdSearch->setVisible(function != Function::kShowFile);
  frmReplace.ChooseFunction(function);
  FollowMarkedOnly();
  if (function == Function::kShowFile) ShowFile();
  ShowLabelsOfTexts(Picture1);
  ShowRules();
}

void MainWindow::FollowMarkedOnly() {
  const bool only_changes = Picture1.MarkedOnly->isChecked() || IsChosen(Function::kShowFile);
  Picture1.dirList->setToolTip(
      only_changes ? "Change directory."
                   : "Change directory or search highlighted directory and its subdirectories");
  if (Picture1.MarkedOnly->isChecked()) return;
  Picture1.filList->ClearSelection();
  Picture1.filList->Refresh();
}

void MainWindow::ShowFile() {
  const std::string& folder = Picture1.dirList->OpenFolder();
  (void)session_.files.EnterFolder(folder);
  session_.LastDir = folder;
  program_.SaveSettings();
  const std::string path = FileToShow();
  if (path.empty()) return Tell(this, "Select a file to show!");
  session_.CurrentFile = path;
  if (program_.FirstViewer() == Viewer::kEditor) return program_.ShowInEditor(session_.CurrentFile);
  if (program_.ShowInBrowser(session_.CurrentFile)) return;
  Tell(this, "Can't open the browser because Microsoft Internet Explorer 4+ is not installed!");
  program_.NoteMissingBrowser();
}

std::string MainWindow::FileToShow() const {
  const std::string name = Picture1.filList->Selected();
  return name.empty() ? name : JoinPath(Picture1.dirList->OpenFolder(), name);
}

void MainWindow::ClickFile() {
  if (!Picture1.MarkedOnly->isChecked()) {
    Picture1.MarkedOnly->setChecked(true);
    FollowMarkedOnly();
  }
  if (IsChosen(Function::kShowFile)) Choose(Function::kShowFile);
  Picture1.MarkedOnly->setProperty(kTag, "1");
}

void MainWindow::DoubleClickFile() {
  Picture1.Option1->Select(Function::kShowFile);
  ClickFile();
}

void MainWindow::PickFilter() {
  const std::string filter = Picture1.cboSearchSpec->Text();
  Picture1.filList->SetPattern(filter);
  const std::optional<Viewer> viewer = FilterBox::ViewerFor(filter);
  if (!viewer) return;
  program_.SetFirstViewer(*viewer);
  program_.SaveSettings();
}

// With the texts as the user typed them.
void MainWindow::ReturnFromResults() {
  Return();
  RestoreTexts();
}

void MainWindow::Return() {
  ReturnToOptions();
  Picture1.cboSearchSpec->setFocus();
  cmdUdskriv->hide();
}

void MainWindow::ReturnFromViewer() {
  Return();
  const QString ticked = Picture1.MarkedOnly->property(kTag).toString();
  if (ticked.isEmpty() || Picture1.MarkedOnly->isChecked() == (ticked == "1")) return;
  Picture1.MarkedOnly->setChecked(ticked == "1");
  FollowMarkedOnly();
}

void MainWindow::ReturnToOptions() {
  view_.ResetCount();
  state_.SearchActive = false;
  Picture2.hide();
  cmdUdskriv->setText("&Print");
  ShowSearchButton();
  SetRole(*cmdExit, "E&xit", "Terminate the programme");
  Picture1.show();
  program_.ShowMainNormal({Pixels(kNormalSize.width()), Pixels(kNormalSize.height())});
  PlaceBtn();
  std::string folder = session_.files.CurrentFolder();
  while (!OpenFolder(folder) && folder != "/") folder = FolderOf(folder);
}

void MainWindow::ShowResultsPanel() {
  program_.MaximizeMain();
  Picture2.FitInto(program_.FrameSize());
  Picture1.hide();
  Picture2.show();
  PlaceBtn();
}

bool MainWindow::HasResultLines() const {
  return Picture2.UdTxt->Bytes().find("\r\n") != std::string::npos;
}

void MainWindow::ShowResultsForEditor() {
  SetRole(*cmdExit, "&Return", "Return to the Editor");
  cmdSearch->hide();
  ShowResultsPanel();
}

void MainWindow::ShowToMainButton() {
  SetRole(*cmdSearch, "To &Main", "Back to the main screen");
  cmdSearch->show();
}

void MainWindow::ShowSearchButton() {
  SetRole(*cmdSearch, "&Search", "Click to start the search");
  cmdSearch->setVisible(!IsChosen(Function::kShowFile));
}

// The texts as the user typed them take the place of those that were searched for.
void MainWindow::RestoreTexts() {
  if (IsChosen(Function::kColours)) return;
  Picture1.SearchTekst->setText(QString::fromStdString(state_.SavedSearchText));
  Picture1.ReplaceText->setText(QString::fromStdString(state_.SavedReplaceText));
}

}  // namespace tessaril
