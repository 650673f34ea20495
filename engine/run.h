#ifndef TESSARIL_ENGINE_RUN_H_
#define TESSARIL_ENGINE_RUN_H_

#include <cstddef>
#include <string>

#include "engine/byte_buffer.h"
#include "engine/entities.h"
#include "engine/files.h"
#include "engine/functions.h"
#include "engine/run_host.h"

namespace tessaril {

/// What the user chose. The window fills it from its controls (whose names the fields bear) and may change it
/// while a run goes on, `tsl` from its arguments; the engine reads each field when it needs it. Texts are
/// valid UTF-8, paths are the file system's bytes.
struct RunOptions {
  Function function = Function::kSearch;
  std::string dirList;  // the open folder, absolute, without a separator at its end (the root is one)
  std::string filList;  // name of the marked file; empty when none is selected
  std::string cboSearchSpec = "*.htm*;shtm*";
  bool MarkedOnly = false;  // only the marked file is searched
  bool ShowEach = true;     // each finding is put to the user
  bool chkTags = true;      // characters of the texts that have a name are searched for as entities
  bool ULcase = false;      // letter case matters
  bool UCfilename = false;
  bool CGI = true;
  std::string CGIname = "CGI-bin";
  std::string SearchTekst;
  std::string ReplaceText;
};

/// What a run leaves behind, and keeps while it goes on. Lives as long as its owner, from run to run.
struct RunState {
  std::string Results;       // findings; in the end the whole report
  std::string UnlinkedList;  // entries: a line end, "U " (checked) or "R " (linked), a path
  std::string RunFile;       // the file being searched
  std::string FolderPrefix;  // the folder being searched, with a separator at its end
  std::string ReportTitle;
  std::string SavedSearchText;  // the texts as the user typed them
  std::string SavedReplaceText;
  std::size_t RoomForEnd = 0;  // bytes that the finished report needs besides the findings
  bool SearchActive = false;
  bool StopRequested = false;

  /// What Cancel does.
  void Cancel() {
    SearchActive = false;
    StopRequested = true;
  }
};

/// Search and replace text, valid UTF-8.
struct SearchTexts {
  std::string search;
  std::string replace;
};

/// All that a worker needs, handed down by reference.
struct RunContext {
  Files& files;
  RunHost& host;
  const RunOptions& options;
  RunState& state;
  const Entities& entities;
  SearchTexts texts;      // as they are searched for
  ByteBuffer page_bytes;  // memory for the page in hand
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_RUN_H_
