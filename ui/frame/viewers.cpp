#include "ui/frame/viewers.h"

#include <iostream>
#include <utility>

#include "engine/paths.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

constexpr char kCannotEdit[] = "Can't open this file in a text editor!";

}  // namespace

Viewers::Viewers(Session& session, Program& program, MainWindow& main, ChildArea& area, std::string page,
                 MakeBrowserControl make_browser)
    : session_(session),
      program_(program),
      main_(main),
      area_(area),
      page_(std::move(page)),
      make_browser_(std::move(make_browser)),
      unsaved_page_(session.files) {}

bool Viewers::ShowInBrowser(const std::string& path) {
  std::string started;
  if (!LoadBrowser(started)) return false;
  if (path != started && !path.empty()) browser_->Show(path);
  area_.ShowMaximized(*browser_);
  browser_->FocusPage();
  return true;
}

// The window is made, shown and given its first page, which is in `started` then, when it is first needed,
// whatever page is wanted.
bool Viewers::LoadBrowser(std::string& started) {
  if (browser_ != nullptr) return true;
  if (browser_is_missing_) return false;
  std::string reason;
  std::unique_ptr<BrowserWindow> browser = BrowserWindow::Create(session_, make_browser_, reason);
  browser_is_missing_ = browser == nullptr;
  if (browser_is_missing_) {
    std::cerr << "tessaril: no browser: " << reason << "\n";
    return false;
  }
  browser_ = browser.release();
  area_.Add(browser_);
  connect(browser_, &BrowserWindow::ToMain, &main_, &MainWindow::ReturnFromViewer);
  connect(browser_, &BrowserWindow::EditHtml, this, &Viewers::BrowserToEditor);
  browser_->OfferMain(!unsaved_is_shown_);
  area_.ShowMaximized(*browser_);
  started = StartAddress();
  if (!started.empty()) browser_->Start(started);
  return true;
}

// What the browser window shows first: nothing, when there is no such file.
std::string Viewers::StartAddress() const {
  const std::string path = main_.IsToShowFile() ? main_.FileToShow() : page_;
  FileStamp stamp;
  return session_.files.Examine(path, stamp).ok() ? path : std::string();
}

void Viewers::LoadEditor() {
  if (editor_ != nullptr) return;
  editor_ = new EditorWindow(session_);
  area_.Add(editor_);
  connect(editor_, &EditorWindow::MainWanted, this, &Viewers::EditorToMain);
  connect(editor_, &EditorWindow::ResultsWanted, this, &Viewers::EditorToResults);
  connect(editor_, &EditorWindow::BrowserWanted, this, &Viewers::EditorToBrowser);
  connect(editor_, &EditorWindow::PrintingWanted, this,
          [this](const std::string& text, const std::string& title) { program_.Print(text, title); });
  connect(editor_, &EditorWindow::PrinterFontWanted, this, &Viewers::PrinterFontWanted);
  connect(editor_, &EditorWindow::ExitWanted, this, &Viewers::ExitWanted);
  connect(editor_, &EditorWindow::NewBegun, this, [this] { ShowUnsaved(false); });
  connect(editor_, &EditorWindow::Saved, this, [this] {
    ShowUnsaved(false);
    main_.RefreshFiles();
  });
  emit EditorMade(editor_, editor_->Menus());
}

void Viewers::ShowEditor() {
  area_.ShowMaximized(*editor_);
  editor_->FocusText();
}

void Viewers::ShowInEditor(const std::string& path) {
  LoadEditor();
  editor_->Prepare();
  const bool has_results = main_.OffersResults();
  editor_->OfferResults(has_results);
  if (has_results) main_.ShowPrintButton();
  ShowEditor();
  if (!editor_->Load(path)) Tell(editor_, kCannotEdit);
}

void Viewers::ReturnToEditor() {
  editor_->ForgetLine();
  ShowEditor();
}

void Viewers::EditorToMain() {
  if (session_.EditorTextChanged) {
    if (!AskOkCancel(editor_, "Leave the editor WITHOUT saving the changes?")) return;
    ShowUnsaved(false);
  }
  session_.EditorTextChanged = false;
  main_.ReturnFromViewer();
}

void Viewers::EditorToResults() {
  if (!main_.HasResultLines()) return Tell(editor_, "No search results to display!");
  main_.ShowResultsForEditor();
}

void Viewers::EditorToBrowser() {
  const bool unsaved_was_shown = unsaved_is_shown_;
  const bool writes = session_.EditorTextChanged;
  if (writes && !WriteUnsavedPage()) return;
  if (ShowInBrowser(session_.CurrentFile)) return main_.ShowSearch();
  if (writes) EndUnsavedPage();
  ShowUnsaved(unsaved_was_shown);
  Tell(editor_, "Can't open the browser because Microsoft Internet Explorer 4+ is not installed!");
  program_.NoteMissingBrowser();
}

bool Viewers::WriteUnsavedPage() {
  const std::string page = unsaved_page_.PathFor(session_.CurrentFile);
  if (unsaved_page_.IsForeign(page) && !AskOkCancel(editor_, page + "\r\nexists already. Overwrite it?")) {
    return false;
  }
  if (const Status status = unsaved_page_.Write(page, editor_->Text()); !status.ok()) {
    Tell(editor_, "Not saved: " + status.reason());
    return false;
  }
  session_.SavedCurrentFile = std::exchange(session_.CurrentFile, page);
  ShowUnsaved(true);
  return true;
}

// The page goes; but not when it is the very file that is edited, which the user let be overwritten.
void Viewers::EndUnsavedPage() {
  if (session_.CurrentFile == session_.SavedCurrentFile) unsaved_page_.Keep(session_.CurrentFile);
  unsaved_page_.Delete(session_.CurrentFile);
  session_.CurrentFile = session_.SavedCurrentFile;
}

// Then the editor is the only way back from the browser.
void Viewers::ShowUnsaved(bool unsaved) {
  unsaved_is_shown_ = unsaved;
  if (browser_ != nullptr) browser_->OfferMain(!unsaved);
}

void Viewers::BrowserToEditor() {
  LoadEditor();
  editor_->Prepare();
  ShowEditor();
  if (unsaved_is_shown_) return EndUnsavedPage();
  const bool has_results = main_.HasResultLines();
  editor_->OfferResults(has_results);
  if (has_results) main_.ShowPrintButton();
  if (editor_->Load(FileToEdit())) return unsaved_page_.DeleteAll();
  area_.ShowMaximized(*browser_);
  browser_->FocusPage();
  Tell(browser_, kCannotEdit);
}

std::string Viewers::FileToEdit() const {
  if (main_.IsToListLinks()) return page_;
  return main_.IsToShowFile() ? browser_->ShownFile() : main_.FileToShow();
}

}  // namespace tessaril
