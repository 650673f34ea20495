#include "cli/run_command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "cli/answers_file.h"
#include "cli/arguments.h"
#include "cli/console_text.h"
#include "cli/interrupt.h"
#include "cli/machine_report.h"
#include "cli/output.h"
#include "cli/person.h"
#include "cli/places.h"
#include "cli/site_path.h"
#include "cli/terminal_host.h"
#include "cli/transcript.h"
#include "cli/undo_command.h"
#include "engine/disk_files.h"
#include "engine/paths.h"
#include "engine/search_run.h"
#include "engine/start_places.h"
#include "settings/user_folder.h"
#include "site/site_choice.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

Status MakeAnswerer(const Arguments& arguments, std::unique_ptr<Answerer>& answerer) {
  switch (arguments.mode) {
    case Mode::kReportOnly:
    case Mode::kYes:
      answerer = std::make_unique<Unattended>(arguments.mode == Mode::kYes);
      return {};
    case Mode::kAsk:
      answerer = std::make_unique<Person>(RowOf(arguments.options.function));
      return {};
    case Mode::kAnswers:
      break;
  }
  std::string content;
  if (Status status = ReadFrom(arguments.answers, content); !status.ok()) return status;
  answerer = std::make_unique<AnswersFile>(arguments.answers, content);
  return {};
}

Status WriteReport(const std::string& path, const std::string& report) {
  if (path.empty()) return WriteToStandardOutput(report);
  FileHandle file;
  if (Status status = CreateFile(path, file); !status.ok()) return status;
  if (Status status = WriteAll(file.get(), report); !status.ok()) return status;
  return file.Close() ? Status() : Status::System(errno);
}

int ExitStatusOf(const RunEnd& end, const RunState& state, Function function) {
  if (!end.started || state.StopRequested) return kExitStopped;
  const bool found_is_good =
      function == Function::kSearch || function == Function::kReplace || function == Function::kExternal;
  return end.found == found_is_good ? kExitGood : kExitFindings;
}

int Run(const Arguments& arguments, Files& files, const Entities& entities, Answerer& answerer,
        Transcript& transcript) {
  const bool unattended = arguments.mode == Mode::kReportOnly || arguments.mode == Mode::kYes;
  MachineReport machine_report(arguments);
  TerminalHost host(answerer, transcript, machine_report, unattended);
  RunState state;
  const RunEnd end = SearchRun(files, host, entities, arguments.options, state);
  bool failed = host.failures() > 0;
  const int exit_status = ExitStatusOf(end, state, arguments.options.function);
  if (end.started) {
    const Status status = machine_report.wanted() ? machine_report.End(failed ? kExitFailure : exit_status)
                                                  : WriteReport(arguments.report, state.Results);
    if (!status.ok()) {
      Refuse(machine_report.name() + ": " + status.reason());
      failed = true;
    }
  }
  if (!transcript.status().ok()) {
    Refuse(arguments.transcript + ": " + transcript.status().reason());
    failed = true;
  }
  return failed ? kExitFailure : exit_status;
}

bool IsSameFile(const std::string& a, const std::string& b) {
  struct stat first {};
  struct stat second {};
  if (stat(a.c_str(), &first) != 0 || stat(b.c_str(), &second) != 0) {
    std::error_code ignored;
    const auto place = [&ignored](const std::string& path) {
      return std::filesystem::weakly_canonical(path, ignored);
    };
    return !a.empty() && !b.empty() && !place(a).empty() && place(a) == place(b);
  }
  return S_ISREG(first.st_mode) && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

// Refuses to write over what is read or written under another name.
Status CheckApart(const Arguments& arguments) {
  const std::string page =
      arguments.options.MarkedOnly ? JoinPath(arguments.options.dirList, arguments.options.filList) : "";
  const auto [table, doubtful] = Entities::DataFiles(arguments.data);
  const std::string site_file = SiteFileOfRun(arguments.options.dirList, arguments.rules);
  const std::string* const read[] = {&page, &arguments.answers, &table, &doubtful, &site_file};
  const std::string* const written[] = {&arguments.report, &arguments.transcript};
  bool clash = IsSameFile(arguments.report, arguments.transcript);
  for (const std::string* const input : read) {
    for (const std::string* const output : written) clash = clash || IsSameFile(*input, *output);
  }
  return clash
             ? Status::Failure(
                   "report, transcript, answers, entity data, site file and the page must be different files")
             : Status();
}

// The folder of the entity data: the one that was named, or else the program's.
Status ChooseData(std::string& data) {
  if (data.empty()) return FindProgramFolder(data);
  const std::string given = data;
  Status status = MakeAbsolute(given, data);
  return status.ok() ? Status() : Status::Failure(given + ": " + status.reason());
}

Status LoadEntities(const std::string& folder, Files& files, Entities& entities) {
  std::vector<std::string> notices;
  Status status = entities.Load(files, folder, notices);
  for (const std::string& notice : notices) std::cerr << "tsl: " << OneLine(notice) << "\n";
  return status;
}

// Whether the run may change files.
bool MayChange(const Arguments& arguments) {
  const CommandRow* const command = FindCommand(RowOf(arguments.options.function).command);
  const auto no_undo = std::ranges::find(AllOptions(), std::string_view("--no-undo"), &OptionRow::name);
  return arguments.mode != Mode::kReportOnly && Applies(*no_undo, *command);
}

// Everything that can be found wrong before the run is, and nothing is touched until then.
int Start(Arguments& arguments) {
  if (Status status = ChoosePlace(arguments.path, arguments.options); !status.ok()) {
    return Refuse(arguments.path + ": " + status.reason());
  }
  DiskFiles files;
  if (Status status = ChooseSite(arguments.rules, files, arguments.options); !status.ok()) {
    return Refuse(status.reason());
  }
  if (Status status = ChooseData(arguments.data); !status.ok()) return Refuse(status.reason());
  Entities entities;
  if (Status status = LoadEntities(arguments.data, files, entities); !status.ok()) {
    std::cerr << "tsl: " << Lines(status.reason()) << "\n";
    return kExitFailure;
  }
  std::unique_ptr<Answerer> answerer;
  if (Status status = MakeAnswerer(arguments, answerer); !status.ok()) {
    return Refuse(arguments.answers + ": " + status.reason());
  }
  if (Status status = CheckApart(arguments); !status.ok()) return Refuse(status.reason());
  if (!arguments.report.empty()) {
    if (Status status = CheckWritable(arguments.report); !status.ok()) {
      return Refuse(arguments.report + ": " + status.reason());
    }
  }
  const UndoStore store(UndoFolder(UserFolder()));
  UndoableFiles undoable(files, store, DescribeRun(arguments.options), EndForWantOfUndo);
  NoteInterrupts();
  const bool keeps_undo = arguments.keeps_undo && MayChange(arguments);
  if (keeps_undo) {
    if (Status status = undoable.Begin(); !status.ok()) return Refuse(NoUndo(status));
  }
  Transcript transcript;
  if (!arguments.transcript.empty()) {
    if (Status status = transcript.Open(arguments.transcript); !status.ok()) {
      return Refuse(arguments.transcript + ": " + status.reason());
    }
  }
  try {
    Files& run_files = keeps_undo ? static_cast<Files&>(undoable) : files;
    return Run(arguments, run_files, entities, *answerer, transcript);
  } catch (const AnswersError& error) {
    return Refuse(error.what());
  }
}

int StartSiteFile(const SiteFileWish& wish) {
  std::string path;
  if (Status status = MakeSiteFile(wish.path, path); !status.ok()) return Refuse(status.reason());
  return WriteToUser(path + "\n");
}

}  // namespace

int RunCommand(int argc, const char* const* argv) {
  ReserveStandardStreams();
  try {
    Understood parsed = ParseArguments(argc, argv);
    if (auto* const arguments = std::get_if<Arguments>(&parsed)) return Start(*arguments);
    if (const auto* const wish = std::get_if<SiteFileWish>(&parsed)) return StartSiteFile(*wish);
    if (const auto* const wish = std::get_if<UndoWish>(&parsed)) return UndoCommand(*wish);
    const Farewell& farewell = std::get<Farewell>(parsed);
    if (farewell.exit_status != 0) {
      std::cerr << farewell.text;
      return farewell.exit_status;
    }
    return WriteToUser(farewell.text);
  } catch (const std::bad_alloc&) {
    return Refuse(Status::System(ENOMEM).reason());
  }
}

}  // namespace tessaril
