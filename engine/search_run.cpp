#include "engine/search_run.h"

#include <string>

#include "engine/file_filter.h"
#include "engine/folder_walk.h"
#include "engine/run_report.h"

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

void Reset(RunState& state) {
  state.UnlinkedList.clear();
  state.StopRequested = false;
  state.Results.clear();
}

}  // namespace

RunEnd SearchRun(Files& files, RunHost& host, const RunOptions& options, RunState& state) {
  if (!Check(host, options)) return {};
  if (options.function == Function::kSearch || options.function == Function::kReplace) {
    state.SavedSearchText = options.SearchTekst;
    state.SavedReplaceText = options.ReplaceText;
  }
  const std::string header = MakeHeader(options, {state.SavedSearchText, state.SavedReplaceText},
                                        {options.SearchTekst, options.ReplaceText});
  Reset(state);
  constexpr std::size_t kRoomForStopLines = 8192;  // the path of a file is the long part of them
  state.RoomForEnd = header.size() + kRoomForStopLines;
  const FunctionRow& function = RowOf(options.function);
  RunContext run{files, host, options, state, {}};
  FolderWalk(run, function.worker).WalkFolder(options.dirList);
  if (Status status = files.FlushFolder(); !status.ok()) {
    host.TellFailure(files.CurrentFolder(), status.reason());
  }
  const bool found = !state.Results.empty();
  if (function.HtmlOutput) {
    FinishPage(header, state);
    host.ShowPage(state.Results);
  } else {
    FinishReport(header, options, state);
    host.ShowReport(state.Results, state.ReportTitle);
  }
  return {true, found};
}

}  // namespace tessaril
