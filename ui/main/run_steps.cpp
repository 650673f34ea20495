// The run, as far as the main window takes part in it.

#include <QApplication>
#include <new>
#include <stdexcept>

#include "engine/search_run.h"
#include "ui/main/main_window.h"
#include "ui/shared/controls.h"
#include "ui/shared/texts.h"
#include "ui/shared/undoable_save.h"
#include "undo/undoable_files.h"

namespace tessaril {

void MainWindow::PressSearch() {
  if (running_) return;
  if (cmdSearch->text() == "To &Main") return ReturnFromResults();
  if (const Function selected = Picture1.Option1->Selected(); selected != applied_) Choose(selected);
  if (IsChosen(Function::kShowFile)) return;
  EnterAnew();
  options_ = TakeOptions();
  const bool opens_folder = Picture1.dirList->Highlighted() != Picture1.dirList->OpenFolder();  // and no more
  if (!opens_folder && !TakeSite(options_)) return;
  host_.Reset();
  folder_only_opened_ = false;
  running_ = true;
  const RunEnd end = Run();
  running_ = false;
  if (!host_.IsLeaving()) EndRun(end);
  emit RunEnded();
}

// The walk itself knows what to do without memory; here it is the finished report that finds none.
RunEnd MainWindow::Run() {
  UndoableFiles files(session_.files, session_.undo, DescribeRun(options_),
                      [this](const std::string& reason) { return GoOnWithoutUndo(reason); });
  try {
    return SearchRun(files, host_, session_.entities, options_, state_);
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  if (cmdExit->text() == "&Cancel") EndWalk();
  host_.Tell("Output text too long.\r\nAbandoning search...");
  return {};
}

// A run is not to go on and fail at each file.
bool MainWindow::GoOnWithoutUndo(const std::string& reason) {
  const bool goes_on = host_.Ask({NoUndoQuestion(reason), Question::When::kDuringWalk});
  if (!goes_on) host_.Cancel();
  return goes_on;
}

RunOptions MainWindow::TakeOptions() const {
  const OptionsPanel& p = Picture1;
  RunOptions options;
  options.function = p.Option1->Selected();
  options.dirList = p.dirList->OpenFolder();
  options.filList = p.filList->Selected();
  options.cboSearchSpec = p.cboSearchSpec->Text();
  options.MarkedOnly = p.MarkedOnly->isChecked();
  options.ShowEach = p.ShowEach->isChecked();
  options.chkTags = p.chkTags->isChecked();
  options.ULcase = p.ULcase->isChecked();
  options.UCfilename = p.UCfilename->isChecked();
  options.CGI = p.CGI->isChecked();
  options.CGIname = Entered(p.CGIname->text());
  options.SearchTekst = Entered(p.SearchTekst->text());
  options.ReplaceText = Entered(p.ReplaceText->text());
  return options;
}

void MainWindow::BeginRun() {
  cmdSearch->setToolTip("Back to the main screen");
  cmdSearch->hide();
}

void MainWindow::TakeTexts(const SearchTexts& texts) {
  Picture1.SearchTekst->setText(QString::fromStdString(texts.search));
  if (IsChosen(Function::kReplace)) Picture1.ReplaceText->setText(QString::fromStdString(texts.replace));
}

bool MainWindow::BeginWalk() {
  if (host_.IsLeaving()) return false;
  Picture2.MakeEditable();
  FolderList& folders = *Picture1.dirList;
  if (folders.Highlighted() != folders.OpenFolder()) {
    folders.OpenHighlighted();
    ShowSearchButton();
    folder_only_opened_ = true;
    return false;
  }
  session_.LastDir = folders.OpenFolder();
  frmReplace.SetUp(RowOf(options_.function), options_.JudgesByToday() ? Rules::kToday : Rules::kClassic);
  ShowResultsPanel();
  Picture2.UdTxt->setFocus();
  SetRole(*cmdExit, "&Cancel", "Stop the search");
  Picture1.filList->SetPattern(options_.cboSearchSpec);
  view_.BeginSearch();
  return true;
}

void MainWindow::EndWalk() {
  view_.EndSearch();
  if (host_.IsLeaving()) return;
  if (state_.StopRequested) OpenFolder(session_.files.CurrentFolder());
  Picture1.filList->SetFolder(Picture1.dirList->OpenFolder());
  ShowToMainButton();
  cmdSearch->setFocus();
  SetRole(*cmdExit, "E&xit", "Terminate the programme");
  cmdUdskriv->show();
  if (!RowOf(options_.function).HtmlOutput) Picture1.cmdSeeResults->show();
}

// The page of external links. Where it cannot be shown as a page, its text is shown, to be saved.
void MainWindow::ShowPage(const std::string& page) {
  const Status written = program_.WriteTemporaryPage(page, session_.CurrentFile);
  if (written.ok() && program_.ShowInBrowser(session_.CurrentFile)) return;
  host_.Tell(written.ok()
                 ? "Can't display the results in the browser because Microsoft Internet Explorer 4+ is "
                   "not installed.\r\nDisplays HTML code to be saved as a .htm file to be opened with "
                   "your normal browser."
                 : "Not saved: " + written.reason());
  if (host_.IsLeaving()) return;
  if (written.ok()) program_.NoteMissingBrowser();
  view_.ShowReport(page, "");
  Picture1.cmdSeeResults->show();
}

void MainWindow::EndRun(const RunEnd& end) {
  const bool has_report = end.started && !RowOf(options_.function).HtmlOutput;
  if (has_report) {
    cmdSearch->show();
    cmdSearch->setFocus();
  }
  const bool has_texts = options_.function == Function::kSearch || options_.function == Function::kReplace;
  if (has_report || (folder_only_opened_ && has_texts)) RestoreTexts();
  if (const std::string failures = host_.FailureText(); !failures.empty()) host_.Tell(failures);
}

}  // namespace tessaril
