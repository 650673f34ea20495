#include "engine/html_page.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/paths.h"
#include "engine/report_pieces.h"

namespace tessaril {

Status HtmlPage::Read() {
  Status status = run_.files.Read(path_, run_.page_bytes, stamp_);
  if (status.ok()) text_.emplace(run_.page_bytes);
  return status;
}

bool HtmlPage::MakeWorkText() {
  const std::string_view text = text_->Tail(0);
  for (std::size_t pair = text.find(CrLf); pair != std::string_view::npos; pair = text.find(CrLf, pair + 2)) {
    if (!work_) work_.emplace(text);
    std::fill_n(work_->begin() + static_cast<std::ptrdiff_t>(pair), CrLf.size(), ' ');
    if (!run_.HandleInput()) return false;
  }
  return true;
}

Status HtmlPage::Replace(std::size_t begin, std::size_t end, std::string_view text) {
  ChangeText(begin, end, text);
  return WriteChanges();
}

void HtmlPage::ChangeText(std::size_t begin, std::size_t end, std::string_view text) {
  text_->Replace(begin, end, text);
  findings_.NoteChange(begin);
  if (work_) work_->replace(begin, end - begin, text);
}

Status HtmlPage::WriteChanges() {
  Status status = run_.files.ReplaceContent(path_, stamp_, text_->Pieces());
  run_.targets.NoteChange();
  return status;
}

void HtmlPage::BeginEntry(std::size_t bytes) {
  constexpr std::size_t kLabels = 300;  // bytes, more than all of them
  run_.state.MakeRoom(path_.size() + bytes + kLabels);
  if (IsFirstFinding()) AppendFileHeader(path_, run_.state.Results);
}

void HtmlPage::SetPath(std::string path) {
  path_ = std::move(path);
  file_name_.clear();
}

const std::string& HtmlPage::FileName() {
  if (file_name_.empty()) file_name_ = ShortenedPath(path_);
  return file_name_;
}

}  // namespace tessaril
