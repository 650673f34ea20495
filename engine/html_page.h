#ifndef TESSARIL_ENGINE_HTML_PAGE_H_
#define TESSARIL_ENGINE_HTML_PAGE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engine/page_findings.h"
#include "engine/page_text.h"
#include "engine/run.h"

namespace tessaril {

/// A page while one of the checks of HTML has it in hand: `PageText`, the text as it stands in the file, and
/// `WorkText`, the same with two blanks in the place of each CR LF, in which links are looked for. A position
/// is the same place in both.
class HtmlPage {
 public:
  /// `path` is kept up to date when the check renames the page.
  HtmlPage(std::string& path, RunContext& run) : path_(path), run_(run), findings_(run.host) {}

  Status Read();

  /// Makes `WorkText`, while the user's input is handled; false when the user stops the run meanwhile.
  bool MakeWorkText();

  const std::string& path() const { return path_; }
  const FileStamp& stamp() const { return stamp_; }
  PageText& text() { return *text_; }

  /// Valid until the next call of Replace.
  std::string_view work_text() { return work_ ? *work_ : text_->Tail(0); }

  bool text_is_work_text() const { return !work_; }

  /// Puts `text` in the place of a part of both texts and writes the page. When that fails, both texts stay
  /// changed, and nothing more should be done with the page.
  Status Replace(std::size_t begin, std::size_t end, std::string_view text);

  /// The same without writing the page, which WriteChanges does.
  void ChangeText(std::size_t begin, std::size_t end, std::string_view text);
  Status WriteChanges();

  /// The page has another name now.
  void SetPath(std::string path);

  /// Before an entry of the text report of `bytes`, the path and its labels not counted: makes sure that it
  /// finds memory, and appends the lines above the page's findings when it is the first.
  void BeginEntry(std::size_t bytes);

  /// Line and column of a place.
  PagePlace PlaceOf(std::size_t offset) { return findings_.PlaceOf(*text_, offset); }

  /// Tells the host of a finding for machines, as PageFindings has it.
  void NoteFinding(FindingKind kind, std::size_t begin, std::size_t end, std::string_view message,
                   std::optional<std::string> proposal = std::nullopt) {
    findings_.Note(kind, path_, *text_, begin, end, message, std::move(proposal));
  }

  /// True at the first call: the page's heading is to be written into the report.
  bool IsFirstFinding() { return !std::exchange(has_findings_, true); }

  /// The page's path as the confirmation dialog shows it.
  const std::string& FileName();

 private:
  std::string& path_;
  RunContext& run_;
  FileStamp stamp_;
  std::optional<PageText> text_;
  std::optional<std::string> work_;  // only where it differs from the text
  PageFindings findings_;
  std::string file_name_;
  bool has_findings_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_HTML_PAGE_H_
