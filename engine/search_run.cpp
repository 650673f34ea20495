#include "engine/search_run.h"

#include <cerrno>
#include <new>
#include <string>

#include "engine/ascii.h"
#include "engine/file_filter.h"
#include "engine/folder_walk.h"
#include "engine/run_report.h"
#include "engine/site_check.h"
#include "engine/site_run.h"

namespace tessaril {
namespace {

// True when the run may start.
bool Check(RunHost& host, const RunOptions& options) {
  const auto go_on = [&host](const std::string& text) {
    return host.Ask({text, Question::When::kBeforeWalk});
  };
  if (!LooksLikeHtmlFilter(options.cboSearchSpec) &&
      !go_on(options.cboSearchSpec + " files are not HTML files! Continue?")) {
    return false;
  }
  if (options.function == Function::kEntities && !options.ShowEach &&
      !go_on("Performing this function without manual control may cause unwanted results!\r\n"
             "Do you really want to continue?")) {
    return false;
  }
  if (options.MarkedOnly && options.filList.empty()) {
    host.Tell("No file marked!");
    return false;
  }
  return true;
}

// A text that still holds characters above 127 is searched for all the same.
void WarnOfIllegal(RunHost& host, const std::string& text, const char* which) {
  if (IsAscii(text)) return;
  host.Warn(std::string("Warning!\r\nThere is an illegal HTML character in the ") + which +
            " string.\r\nThe results may consequently be unreliable!");
}

// Keeps the texts of a text function as the user typed them, and gives them as they are searched for.
SearchTexts KeepAndConvertTexts(RunHost& host, const Entities& entities, const RunOptions& options,
                                RunState& state) {
  SearchTexts texts{options.SearchTekst, options.ReplaceText};
  const bool replacing = options.function == Function::kReplace;
  if (options.function != Function::kSearch && !replacing) return texts;
  state.SavedSearchText = texts.search;
  state.SavedReplaceText = texts.replace;
  if (!options.chkTags) return texts;
  texts.search = entities.EncodeEntities(texts.search);
  host.TakeTexts(texts);
  WarnOfIllegal(host, texts.search, "Search");
  if (!replacing) return texts;
  texts.replace = entities.EncodeEntities(texts.replace);
  host.TakeTexts(texts);
  WarnOfIllegal(host, texts.replace, "Replace");
  return texts;
}

// By today's rules, what is not visited may lead to a file, too.
void LookForUnlinked(RunContext& run) {
  if (!run.site || run.options.MarkedOnly || run.state.StopRequested) return;
  try {
    run.site->LookForUnlinked(run.options.dirList);
  } catch (const std::bad_alloc&) {
    run.host.TellFailure(run.options.dirList, Status::System(ENOMEM).reason());
  }
}

// What links lead into and could not be listed, whether the walk came there or not.
void TellUnlisted(RunContext& run) {
  if (!run.site) return;
  for (const auto& [folder, status] : run.site->Untold()) run.host.TellFailure(folder, status.reason());
}

void Reset(RunState& state) {
  state.UnlinkedList = {};
  state.RenameOffered = false;
  state.StopRequested = false;
  state.Results.clear();
}

}  // namespace

RunEnd SearchRun(Files& files, RunHost& host, const Entities& entities, const RunOptions& options,
                 RunState& state) {
  if (!Check(host, options)) return {};
  host.BeginRun();
  const SearchTexts searched = KeepAndConvertTexts(host, entities, options, state);
  const std::string header = MakeHeader(options, {state.SavedSearchText, state.SavedReplaceText}, searched);
  Reset(state);
  if (!host.BeginWalk()) return {};
  constexpr std::size_t kRoomForStopLines = 8192;  // the path of a file is the long part of them
  state.RoomForEnd = header.size() + kRoomForStopLines;
  const FunctionRow& function = RowOf(options.function);
  RunContext run{files, host, options, state, entities, searched, {}};
  if (options.JudgesByToday() && options.function == Function::kLinks) {
    run.site =
        std::make_shared<SiteRun>(files, options, !PutsToUser(run), [&run] { return run.HandleInput(); });
  }
  FolderWalk(run, function.worker).WalkFolder(options.dirList);
  LookForUnlinked(run);
  TellUnlisted(run);
  if (Status status = files.FlushFolder(); !status.ok()) {
    host.TellFailure(files.CurrentFolder(), status.reason());
  }
  host.EndWalk();
  const bool found = !state.Results.empty() || state.RenameOffered;
  if (function.HtmlOutput) {
    FinishPage(header, state);
    host.ShowPage(state.Results);
  } else {
    FinishReport(header, options, state, run.site.get());
    host.ShowReport(state.Results, state.ReportTitle);
  }
  return {true, found};
}

}  // namespace tessaril
