// What the main window does to undo a run.

#include <QProgressDialog>
#include <algorithm>
#include <cerrno>
#include <new>

#include "ui/main/main_window.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/undoable_save.h"
#include "undo/undo_plan.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

constexpr std::size_t kFilesTold = 10;

std::string FilesText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " file" : " files");
}

// The window parts lines at their ends, and a path or text may hold some.
std::string OneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

// The first `most` files, a line each, and how many more there are.
std::string Lines(const std::vector<std::string>& files, std::size_t most) {
  std::string text;
  for (std::size_t i = 0; i < files.size() && i < most; ++i) text += OneLine(files[i]) + "\r\n";
  if (files.size() > most) text += "and " + std::to_string(files.size() - most) + " more\r\n";
  return text;
}

std::string Lines(const std::vector<FileLeft>& files, std::size_t most) {
  std::vector<std::string> lines;
  for (const FileLeft& file : files) lines.push_back(file.path + ": " + file.reason);
  return Lines(lines, most);
}

// With so many files of each kind.
std::string PlanText(const UndoPlan& plan, std::size_t most) {
  const Journal& journal = plan.run().journal;
  std::string text = DateOf(journal) + "\r\n" + OneLine(journal.what) + "\r\n\r\n";
  if (plan.restored().empty()) {
    text += "Nothing to restore.\r\n";
  } else {
    text += FilesText(plan.restored().size()) + " to be restored:\r\n" + Lines(plan.restored(), most);
  }
  if (!plan.left_alone().empty()) {
    text += "\r\nChanged since, left alone:\r\n" + Lines(plan.left_alone(), most);
  }
  if (!plan.unread().empty()) {
    text += "\r\nCould not be read, left alone:\r\n" + Lines(plan.unread(), most);
  }
  text.resize(text.size() - 2);
  return text;
}

std::string EndText(const UndoEnd& end) {
  std::string text = FilesText(end.restored.size()) + " restored.";
  if (end.stopped) text += "\r\nThe others were not: you cancelled.";
  if (!end.failed.empty()) text += "\r\n\r\nCould not be restored:\r\n" + Lines(end.failed, kFilesTold);
  return text;
}

}  // namespace

void MainWindow::UndoLastRun() {
  try {
    AskAndUndo();
  } catch (const std::bad_alloc&) {
    Tell(this, "Can't undo: " + Status::System(ENOMEM).reason());
  }
}

void MainWindow::AskAndUndo() {
  std::vector<UndoableRun> runs;
  if (const Status listed = session_.undo.List(runs); !listed.ok()) {
    return Tell(this, session_.undo.folder() + ": " + listed.reason());
  }
  if (runs.empty()) return Tell(this, "There is no run to undo.");
  DiskFiles files;
  UndoPlan plan;
  if (const Status made = plan.Make(session_.undo, runs.front().number, files); !made.ok()) {
    return Tell(this, "Can't undo run " + std::to_string(runs.front().number) + ": " + made.reason());
  }
  if (plan.restored().empty()) return Tell(this, PlanText(plan, kFilesTold));
  std::string text = PlanText(plan, kFilesTold);
  std::string all =
      PlanText(plan, std::max({plan.restored().size(), plan.left_alone().size(), plan.unread().size()}));
  if (all == text) all.clear();
  if (AskOkCancel(this, "Undo this run?\r\n" + text, all)) Undo(plan, files);
}

void MainWindow::Undo(const UndoPlan& plan, Files& files) {
  bool refused = false;
  UndoableFiles undoable(files, session_.undo, plan.Description(), [&](const std::string& reason) {
    refused = !AskOkCancel(this, NoUndoQuestion(reason));
    return !refused;
  });
  QProgressDialog progress("Restoring ...", "Cancel", 0, static_cast<int>(plan.restored().size()), this);
  progress.setWindowModality(Qt::ApplicationModal);
  int changes = 0;
  const UndoEnd end = plan.Perform(undoable, [&] {
    progress.setValue(std::min(changes++, progress.maximum() - 1));  // at the maximum it would go
    return refused || progress.wasCanceled();
  });
  progress.reset();
  Picture1.filList->Refresh();
  ShowRules();
  Tell(this, EndText(end));
}

}  // namespace tessaril
