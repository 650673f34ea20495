#ifndef TESSARIL_FUZZ_WATCHING_HOST_H_
#define TESSARIL_FUZZ_WATCHING_HOST_H_

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/run.h"
#include "fuzz/input.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {

/// A user whose answers are bytes of the input: keep, replace, stop, with edits and without. Who is asked the
/// same by somebody else answers the same.
class AnsweringHost : public ScriptHost {
 public:
  explicit AnsweringHost(std::string bytes) : bytes_(std::move(bytes)), answers_(bytes_) {}
  AnsweringHost(const AnsweringHost&) = delete;
  AnsweringHost& operator=(const AnsweringHost&) = delete;

  std::size_t most =
      40;  // questions until stop: an edit may push its own finding ahead of the check for ever

  ProposalAnswer Propose(const Proposal& proposal) override {
    ScriptHost::Propose(proposal);
    std::string field = proposal.ReplaceText.value_or("");
    if (proposals.size() > most) return {kStop, field};
    if (answers_.empty()) return {takes_proposals ? kReplace : kKeep, field};
    const std::size_t choice = answers_.Below(16);
    if (!proposal.ReplaceText) return {choice == 0 ? kStop : kKeep, field};
    if (choice >= 9) Edit(field);
    if (choice == 0 || choice == 15) return {kStop, field};
    return {choice < 3 || choice > 12 ? kKeep : kReplace, field};
  }
  bool Ask(const Question& question) override {
    ScriptHost::Ask(question);
    return question.when == Question::When::kBeforeWalk || answers_.Flag();
  }

 private:
  void Edit(std::string& field) {
    constexpr char kEditEnd = '\x1F';
    const std::size_t at = answers_.Byte();
    const std::size_t count = answers_.Byte();
    field.replace(std::min(at, field.size()), count, answers_.Field(kEditEnd));
  }

  std::string bytes_;
  Input answers_;
};

/// The same, watching the run: its report only grows, each page is changed as all accepted answers say, and
/// no page without one. `Files` is what the run must be given; `LookAtPage` is for after the last page.
class WatchingHost : public AnsweringHost {
 public:
  WatchingHost(std::string bytes, const RunOptions& options, const RunState& state)
      : AnsweringHost(std::move(bytes)), options_(options), state_(state), files(*this) {}

  class Files : public MemoryFiles {
   public:
    explicit Files(WatchingHost& host) : host_(host) {}
    Status ReplaceContent(const std::string& path, FileStamp& stamp,
                          std::span<const std::string_view> pieces) override {
      std::string content;
      for (const std::string_view piece : pieces) content += piece;
      host_.TakeWrite(path, content);
      return MemoryFiles::ReplaceContent(path, stamp, pieces);
    }
    Status Rename(const std::string& folder, const std::string& from, const std::string& to) override {
      Require(host_.may_rename_, "a file is renamed that nobody was asked for");
      host_.may_rename_ = false;
      return MemoryFiles::Rename(folder, from, to);
    }

   private:
    WatchingHost& host_;
  };

  ProposalAnswer Propose(const Proposal& proposal) override {
    LookAtReport();
    if (proposal.ReplaceText) LookAtField(proposal, *proposal.ReplaceText);
    const std::string in_dialog = Shown(proposal);
    LookAtShown(in_dialog);
    ProposalAnswer answer = AnsweringHost::Propose(proposal);
    TakeAnswer(in_dialog, answer);
    // The header of a page is taken back by a stop in it.
    if (answer.ReplaceAnswer == kStop) report_ends_ = true;
    return answer;
  }
  bool Ask(const Question& question) override {
    LookAtReport();
    return may_rename_ = AnsweringHost::Ask(question);
  }
  void LookAtPage() const {
    const auto page = files.contents.find(path_);
    if (!accepted_ || page_.empty() || page == files.contents.end()) return;
    Require(page_.contains(page->second), "accepted changes are not written: " + path_);
  }
  void CountFile(const std::string& path) override {
    LookAtReport();
    LookAtPage();
    path_ = path;
    accepted_ = false;
    const auto page = files.contents.find(path);
    page_ = {page == files.contents.end() ? "" : page->second};
    is_utf8_ = DetectEncoding(*page_.begin()) == PageEncoding::kUtf8 && IsUtf8(*page_.begin());
    AnsweringHost::CountFile(path);
  }
  void NoteFinding(const FindingRecord& finding) override {
    LookAtReport();
    if (finding.encoding == PageEncoding::kUtf8 && is_utf8_)
      Require(IsUtf8(finding.found), "half a character is found");
    if (finding.place.line > 0) found_ = finding.found;
    AnsweringHost::NoteFinding(finding);
  }
  void HandleInput() override {
    LookAtReport();
    AnsweringHost::HandleInput();
  }
  void EndWalk() override { report_ends_ = true; }

 private:
  bool JudgesLinksByToday() const { return options_.site && options_.function == Function::kLinks; }

  // Checks of links and colours show the page in the editable field, today's with the proposal in its place.
  std::string Shown(const Proposal& proposal) const {
    const Function function = options_.function;
    if (function != Function::kLinks && function != Function::kColours) return proposal.SearchText;
    std::string in_dialog = *proposal.ReplaceText;
    if (JudgesLinksByToday())
      in_dialog.replace(proposal.ReplaceSelection.start, proposal.ReplaceSelection.length, found_);
    return in_dialog;
  }

  void LookAtReport() {
    if (report_ends_) return;
    Require(state_.Results.starts_with(report_), "the report does not only grow");
    report_ = state_.Results;
  }

  void LookAtField(const Proposal& proposal, const std::string& field) const {
    const auto [start, length] = proposal.ReplaceSelection;
    if (!JudgesLinksByToday()) return;
    Require(start + length <= field.size(), "the selection is outside the field");
  }

  // Where in a text what was in_dialog may stand. Of colours a tag is in_dialog in upper case.
  std::vector<std::size_t> Places(const std::string& text, const std::string& in_dialog) const {
    const bool folds = options_.function == Function::kColours;
    const std::string in = folds ? ToUpper(text) : text;
    const std::string what = folds ? ToUpper(in_dialog) : in_dialog;
    std::vector<std::size_t> places;
    for (std::size_t at = in.find(what); at != std::string::npos; at = in.find(what, at + 1))
      places.push_back(at);
    return places;
  }

  void LookAtShown(const std::string& in_dialog) const {
    if (is_utf8_) Require(IsUtf8(in_dialog), "half a character is in_dialog");
    for (const std::string& text : page_) {
      if (!Places(text, in_dialog).empty()) return;
    }
    Require(page_.empty(), "what is in_dialog is not in the page: " + Readable(in_dialog));
  }

  // `page_` holds what the page may be now: what was in_dialog may stand in it more than once.
  void TakeAnswer(const std::string& in_dialog, const ProposalAnswer& answer) {
    const bool edited_link = options_.function == Function::kLinks && !options_.site &&
                             answer.ReplaceAnswer == kKeep && answer.ReplaceText != in_dialog;
    if (answer.ReplaceAnswer != kReplace && !edited_link) return;
    if (options_.function == Function::kSearch) return;
    const bool shows_page =
        options_.function == Function::kReplace || options_.function == Function::kEntities;
    if (!shows_page && answer.ReplaceText == in_dialog) return;
    is_utf8_ = is_utf8_ && IsUtf8(answer.ReplaceText);
    constexpr std::size_t kMost = 100;
    std::set<std::string> changed;
    for (const std::string& text : page_) {
      for (const std::size_t at : Places(text, in_dialog)) {
        changed.insert(std::string(text).replace(at, in_dialog.size(), answer.ReplaceText));
        if (changed.size() > kMost) break;
      }
    }
    page_ = std::move(changed);
    if (page_.size() > kMost) page_.clear();  // unknown from here on
    accepted_ = true;
  }

  void TakeWrite(const std::string& path, const std::string& content) {
    const bool asks_nobody = options_.function == Function::kReplace && !options_.ShowEach;
    if (asks_nobody) return;
    Require(accepted_, "a page is written that nobody accepted a change of: " + path);
    Require(page_.empty() || page_.contains(content),
            "bytes outside the edits are changed\n  written:  " + Readable(content) +
                "\n  expected: " + (page_.empty() ? "" : Readable(*page_.begin())));
    page_ = {content};
    accepted_ = false;
  }

  const RunOptions& options_;
  const RunState& state_;
  std::set<std::string> page_;  // what the page in hand may hold; empty when that is not known
  std::string path_;            // of that page
  std::string report_;
  std::string found_;
  bool report_ends_ = false;
  bool accepted_ = false;
  bool may_rename_ = false;
  bool is_utf8_ = false;

 public:
  Files files;
};

}  // namespace tessaril

#endif  // TESSARIL_FUZZ_WATCHING_HOST_H_
