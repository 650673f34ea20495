#include "cli/undo_command.h"

#include <unistd.h>

#include <iostream>

#include "cli/console_text.h"
#include "cli/interrupt.h"
#include "cli/output.h"
#include "engine/disk_files.h"
#include "settings/user_folder.h"
#include "undo/undo_plan.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

std::string FilesText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " file" : " files");
}

std::string RunText(const UndoableRun& run) {
  return std::to_string(run.number) + "  " + DateOf(run.journal) + "  " + OneLine(run.journal.what);
}

int List(const UndoStore& store) {
  std::vector<UndoableRun> runs;
  if (Status status = store.List(runs); !status.ok()) return Refuse(store.folder() + ": " + status.reason());
  std::string text;
  for (const UndoableRun& run : runs) {
    if (!run.reading.ok()) {
      text += std::to_string(run.number) + "  " + run.reading.reason() + "\n";
      continue;
    }
    text +=
        RunText(run) + "  (" + FilesText(CountFiles(run.journal)) + (run.goes_on ? ", goes on" : "") + ")\n";
  }
  const int written = WriteToUser(text);
  return written != kExitGood || !runs.empty() ? written : kExitFindings;
}

std::string LeftText(const std::vector<FileLeft>& files) {
  std::string text;
  for (const FileLeft& file : files) text += "  " + OneLine(file.path) + ": " + OneLine(file.reason) + "\n";
  return text;
}

std::string PlanText(const UndoPlan& plan) {
  std::string text = "Run " + RunText(plan.run()) + "\n";
  if (plan.restored().empty()) text += "Nothing to restore.\n";
  if (!plan.restored().empty()) text += "To be restored:\n";
  for (const std::string& path : plan.restored()) text += "  " + OneLine(path) + "\n";
  if (!plan.left_alone().empty()) text += "Changed since, left alone:\n" + LeftText(plan.left_alone());
  if (!plan.unread().empty()) text += "Could not be read, left alone:\n" + LeftText(plan.unread());
  return text;
}

// The answer is a line that begins with y; the end of the input is none.
bool AskWhetherToRestore() {
  std::cerr << "Restore? [y/N] " << std::flush;
  char answer = '\n';
  for (char key = 0; read(STDIN_FILENO, &key, 1) == 1 && key != '\n';) {
    if (answer == '\n') answer = key;
  }
  return !Interrupted() && (answer == 'y' || answer == 'Y');
}

int Perform(const UndoPlan& plan, Files& files) {
  const UndoEnd end = plan.Perform(files, Interrupted);
  for (const FileLeft& file : end.failed) Refuse(file.path + ": " + file.reason);
  const int written = WriteToUser(FilesText(end.restored.size()) + " restored.\n");
  if (written != kExitGood || !end.failed.empty()) return kExitFailure;
  if (end.stopped) return kExitStopped;
  return end.left_alone.empty() ? kExitGood : kExitFindings;
}

// The number of the last run, where none was named; 0 when there is none.
Status ChooseRun(const UndoStore& store, const UndoWish& wish, unsigned& number) {
  number = wish.run.value_or(0);
  if (wish.run) return {};
  std::vector<UndoableRun> runs;
  if (Status status = store.List(runs); !status.ok()) {
    return Status::Failure(store.folder() + ": " + status.reason());
  }
  if (!runs.empty()) number = runs.front().number;
  return {};
}

int Undo(const UndoStore& store, const UndoWish& wish) {
  unsigned number = 0;
  if (Status status = ChooseRun(store, wish, number); !status.ok()) return Refuse(status.reason());
  if (number == 0) {
    std::cerr << "tsl: There is no run to undo.\n";
    return kExitFindings;
  }
  DiskFiles files;
  UndoPlan plan;
  if (Status status = plan.Make(store, number, files); !status.ok()) {
    return Refuse("run " + std::to_string(number) + ": " + status.reason());
  }
  if (const int written = WriteToUser(PlanText(plan)); written != kExitGood) return written;
  if (plan.restored().empty()) return plan.unread().empty() ? kExitFindings : kExitFailure;
  if (!wish.unasked && !AskWhetherToRestore()) return kExitStopped;
  if (!wish.keeps_undo) return Perform(plan, files);
  UndoableFiles undoable(files, store, plan.Description(), EndForWantOfUndo);
  if (Status status = undoable.Begin(); !status.ok()) return Refuse(NoUndo(status));
  return Perform(plan, undoable);
}

}  // namespace

int UndoCommand(const UndoWish& wish) {
  const UndoStore store(UndoFolder(UserFolder()));
  if (wish.list) return List(store);
  NoteInterrupts();
  return Undo(store, wish);
}

std::string NoUndo(const Status& status) {
  return "no undo can be kept: " + status.reason() + " (--no-undo goes on without)";
}

bool EndForWantOfUndo(const std::string& reason) {
  Refuse(NoUndo(Status::Failure(reason)));
  Interrupt();
  return false;
}

}  // namespace tessaril
