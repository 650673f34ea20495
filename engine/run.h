#ifndef TESSARIL_ENGINE_RUN_H_
#define TESSARIL_ENGINE_RUN_H_

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "engine/byte_buffer.h"
#include "engine/entities.h"
#include "engine/file_register.h"
#include "engine/files.h"
#include "engine/functions.h"
#include "engine/link_targets.h"
#include "engine/run_host.h"
#include "engine/site_rules.h"

namespace tessaril {

class SiteRun;

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
  std::optional<Site>
      site;  // the site that `dirList` belongs to, judged by today's rules; none: by classic ones
  bool AcceptCertain = false;  // a proposal that can only be right is accepted without anybody seeing it

  bool JudgesByToday() const { return site.has_value(); }
};

/// What a run leaves behind, and keeps while it goes on. Lives as long as its owner, from run to run.
struct RunState {
  std::string Results;        // findings; in the end the whole report
  FileRegister UnlinkedList;  // the files checked and linked
  std::string RunFile;        // the file being searched
  std::string FolderPrefix;   // the folder being searched, with a separator at its end
  std::string ReportTitle;
  std::string SavedSearchText;  // the texts as the user typed them
  std::string SavedReplaceText;
  std::size_t RoomForEnd = 0;  // bytes that the finished report needs besides the findings
  bool SearchActive = false;
  bool StopRequested = false;
  bool RenameOffered = false;              // a finding that leaves nothing in the report
  std::array<std::string, 3> ColourParts;  // red, green and blue piece of the colour last tested

  /// Makes sure that `bytes` more of findings and the rest of the report find memory, so that nothing is done
  /// that the report could not tell. Throws std::bad_alloc or std::length_error.
  void MakeRoom(std::size_t bytes);

  /// What Cancel does.
  void Cancel() {
    SearchActive = false;
    StopRequested = true;
  }

 private:
  std::size_t asked_for_ = 0;  // bytes of `Results` that the system was asked for ahead of their use
};

/// All that a worker needs, handed down by reference.
struct RunContext {
  Files& files;
  RunHost& host;
  const RunOptions& options;
  RunState& state;
  const Entities& entities;
  SearchTexts texts;                // as they are searched for
  ByteBuffer page_bytes;            // memory for the page in hand
  LinkTargets targets{files};       // what was learned of linked files
  std::shared_ptr<SiteRun> site{};  // the same by today's rules; null where classic ones hold

  /// Lets the user's input be handled; false when the run is to stop.
  bool HandleInput() {
    host.HandleInput();
    if (host.CancelRequested()) state.Cancel();
    return !state.StopRequested;
  }
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_RUN_H_
