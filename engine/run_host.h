#ifndef TESSARIL_ENGINE_RUN_HOST_H_
#define TESSARIL_ENGINE_RUN_HOST_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/finding_kinds.h"
#include "engine/page_encoding.h"

namespace tessaril {

/// A range of a shown text, in bytes. It may reach behind the text's end; a field then stops at its end.
struct Selection {
  std::size_t start = 0;
  std::size_t length = 0;
  bool operator==(const Selection&) const = default;
};

/// One finding as the confirmation dialog shows it. All texts are bytes of the page, but for `FileName`.
struct Proposal {
  std::string FileName;  // the page's path, shortened
  std::string SearchText;
  Selection SearchSelection;
  std::optional<std::string> ReplaceText;  // nothing when the dialog shows no editable field
  Selection ReplaceSelection;
  std::string Label4;                  // the hint
  PageEncoding encoding;               // what the bytes mean, for who lets them be edited as characters
  std::string_view line_end = "\r\n";  // of the page, which Enter types
};

/// What the dialog's buttons mean; the values are those of the shared field `ReplaceAnswer`.
enum ReplaceAnswer : int { kStop = -1, kKeep = 0, kReplace = 1 };

struct ProposalAnswer {
  int ReplaceAnswer = kKeep;  // any value other than the three: nothing is to be done
  std::string ReplaceText;    // the editable field as the answer left it; empty when there is none
};

/// A message box with OK and Cancel.
struct Question {
  enum class When { kBeforeWalk, kDuringWalk };
  std::string text;
  When when;
};

/// Search and replace text, valid UTF-8.
struct SearchTexts {
  std::string search;
  std::string replace;
};

/// The outside world of a run: the main window, the terminal of `tsl`, a script of the tests. A worker cannot
/// tell which. Any call may throw to end the run at once; then nothing more is written.
class RunHost {
 public:
  virtual ~RunHost() = default;

  /// The checks are passed and the run begins.
  virtual void BeginRun() {}

  /// The texts as they are searched for, as far as they have been converted.
  virtual void TakeTexts(const SearchTexts&) {}

  /// The state is reset and the files are about to be searched; false when they are not to be, which ends the
  /// run without a report.
  virtual bool BeginWalk() { return true; }

  /// All files have been searched, or as many as the user wanted. The report is made now.
  virtual void EndWalk() {}

  /// Shows a finding and waits for the answer.
  virtual ProposalAnswer Propose(const Proposal& proposal) = 0;

  /// Whether proposals are answered without anybody being asked. A page need not be written after each answer
  /// then.
  virtual bool AnswersUnasked() const = 0;

  /// True for OK, false for Cancel.
  virtual bool Ask(const Question& question) = 0;

  /// A message box with OK only.
  virtual void Tell(const std::string& text) = 0;

  /// The same with an exclamation icon.
  virtual void Warn(const std::string& text) = 0;

  /// A file or folder that could not be read or written, and why. The run goes on.
  virtual void TellFailure(const std::string& path, const std::string& reason) = 0;

  /// Whether NoteFinding is of use to anybody; it is not called else.
  virtual bool WantsFindings() const { return false; }

  /// A finding, as soon as it is made: before it is put to the user, if it is at all.
  virtual void NoteFinding(const FindingRecord&) {}

  /// One more file is being searched.
  virtual void CountFile(const std::string& path) = 0;

  /// A short line in the place of the report, such as "Searching!".
  virtual void ShowActivity(std::string_view text) = 0;

  /// The findings so far, or at the end the report, with its title.
  virtual void ShowReport(const std::string& report, const std::string& title) = 0;

  /// The finished HTML page of a function that makes one.
  virtual void ShowPage(const std::string& page) = 0;

  /// Lets pending input of the user be handled.
  virtual void HandleInput() = 0;

  /// Whether Cancel has been pressed in this run.
  virtual bool CancelRequested() const = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_RUN_HOST_H_
