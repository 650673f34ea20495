#include "ui/frame/viewers.h"

#include <iostream>
#include <utility>

#include "engine/paths.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/undoable_save.h"

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
  if (!MakeBrowser()) return false;
  const std::string started = StartBrowser();
  if (path != started && !path.empty()) browser_->Show(path);
  area_.ShowMaximized(*browser_);
  browser_->FocusPage();
  return true;
}

bool Viewers::MakeBrowser() {
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
  return true;
}

// When the window is first shown it is given a first page, whatever page is wanted. Returns which.
std::string Viewers::StartBrowser() {
  if (browser_is_started_) return {};
  browser_is_started_ = true;
  area_.ShowMaximized(*browser_);
  const std::string started = StartAddress();
  if (!started.empty()) browser_->Start(started);
  return started;
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
  connect(editor_, &EditorWindow::HelpWanted, this, &Viewers::HelpWanted);
  connect(editor_, &EditorWindow::AboutBoxWanted, this, &Viewers::AboutBoxWanted);
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

// Whether there is a browser is found out first, as nothing is to be written in vain.
void Viewers::EditorToBrowser() {
  if (!MakeBrowser()) {
    Tell(editor_, "Can't open the browser because Microsoft Internet Explorer 4+ is not installed!");
    return program_.NoteMissingBrowser();
  }
  if (session_.EditorTextChanged && !WriteUnsavedPage()) return;
  (void)ShowInBrowser(session_.CurrentFile);
  main_.ShowSearch();
}

// The page may be the very file that is edited. Then it is the user's, and stays.
bool Viewers::WriteUnsavedPage() {
  const std::string page = unsaved_page_.PathFor(session_.CurrentFile);
  if (unsaved_page_.IsForeign(page) && !AskOkCancel(editor_, page + "\r\nexists already. Overwrite it?")) {
    return false;
  }
  const bool is_edited = editor_->IsOwnFile(page);
  if (is_edited && !editor_->MayOverwriteOwnFile()) return false;
  const std::string text = editor_->Text();
  const Status status =
      is_edited ? SaveUndoably(session_, editor_, page, text) : unsaved_page_.Write(page, text);
  if (!status.ok()) {
    Tell(editor_, "Not saved: " + status.reason());
    return false;
  }
  session_.SavedCurrentFile = std::exchange(session_.CurrentFile, page);
  ShowUnsaved(true);
  return true;
}

void Viewers::EndUnsavedPage() {
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
