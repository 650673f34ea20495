#include "site/list_edit.h"

#include <algorithm>
#include <utility>

namespace tessaril {
namespace {

constexpr std::string_view kBlanks = " \t";

// Elements of the old list and of the new one that stand between others that stay.
struct Gap {
  std::size_t old_begin;
  std::size_t old_end;
  std::size_t new_begin;
  std::size_t new_end;
};

// What is left between the elements when as many as can be stay: the longest common subsequence of what
// stands between the elements that both begin with and those that both end with.
std::vector<Gap> Gaps(const std::vector<TomlValue>& olds, const std::vector<std::string>& news) {
  const std::size_t shorter = std::min(olds.size(), news.size());
  std::size_t begin = 0;
  while (begin < shorter && olds[begin].text == news[begin]) ++begin;
  std::size_t behind = 0;
  while (behind < shorter - begin && olds[olds.size() - 1 - behind].text == news[news.size() - 1 - behind])
    ++behind;
  const std::size_t old_end = olds.size() - behind;
  const std::size_t new_end = news.size() - behind;
  // longest[i][j]: for the elements from old begin + i and new begin + j on.
  std::vector<std::vector<std::size_t>> longest(old_end - begin + 1,
                                                std::vector<std::size_t>(new_end - begin + 1));
  for (std::size_t i = old_end - begin; i-- > 0;) {
    for (std::size_t j = new_end - begin; j-- > 0;) {
      longest[i][j] = olds[begin + i].text == news[begin + j]
                          ? longest[i + 1][j + 1] + 1
                          : std::max(longest[i + 1][j], longest[i][j + 1]);
    }
  }
  std::vector<Gap> gaps;
  Gap gap{begin, 0, begin, 0};
  const auto close = [&](std::size_t i, std::size_t j) {
    gap.old_end = i;
    gap.new_end = j;
    if (gap.old_begin < i || gap.new_begin < j) gaps.push_back(gap);
    gap = {i + 1, 0, j + 1, 0};
  };
  std::size_t i = begin;
  std::size_t j = begin;
  while (i < old_end && j < new_end) {
    if (olds[i].text == news[j]) {
      close(i++, j++);
    } else if (longest[i - begin + 1][j - begin] >= longest[i - begin][j - begin + 1]) {
      ++i;
    } else {
      ++j;
    }
  }
  close(old_end, new_end);
  return gaps;
}

class ListEditor {
 public:
  ListEditor(std::string_view text, const TomlValue& list)
      : text_(text),
        list_(list),
        olds_(list.elements),
        line_end_(text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n") {}

  std::vector<TextEdit> EditsFor(const std::vector<std::string>& news) {
    for (const Gap& gap : Gaps(olds_, news)) {
      std::size_t i = gap.old_begin;
      std::size_t j = gap.new_begin;
      for (; i < gap.old_end && j < gap.new_end; ++i, ++j) {
        edits_.push_back({olds_[i].begin, olds_[i].end, TomlQuoted(news[j])});
      }
      const std::vector<std::string> added(news.begin() + static_cast<std::ptrdiff_t>(j),
                                           news.begin() + static_cast<std::ptrdiff_t>(gap.new_end));
      if (!added.empty()) Insert(i, added);
      if (i < gap.old_end) Remove(i, gap.old_end);
    }
    return std::move(edits_);
  }

 private:
  std::size_t Skip(std::size_t at, std::string_view characters) const {
    return std::min(text_.find_first_not_of(characters, at), text_.size());
  }

  // Behind blanks, line ends and comments: the next comma, or the end of the list.
  std::size_t Mark(std::size_t at) const {
    while (text_[at] != ',' && text_[at] != ']') at = text_[at] == '#' ? text_.find('\n', at) : at + 1;
    return at;
  }

  // What stands before an element that is the first thing on its line; nothing where it is not.
  bool BeginsLine(const TomlValue& element, std::string_view& indent) const {
    const std::size_t line = text_.rfind('\n', element.begin) + 1;  // the list may begin on the first line
    indent = text_.substr(line, element.begin - line);
    return line > list_.begin && indent.find_first_not_of(kBlanks) == std::string_view::npos;
  }

  bool EndsLine(std::size_t at) const {
    at = Skip(at, kBlanks);
    return text_[at] == '\n' || text_[at] == '\r' || text_[at] == '#';
  }

  void Insert(std::size_t before, const std::vector<std::string>& added) {
    if (before == olds_.size() && before > 0) return Append(added);
    std::string pieces;
    std::string_view indent;
    if (before == olds_.size()) {
      for (const std::string& text : added) pieces += (pieces.empty() ? "" : ", ") + TomlQuoted(text);
      edits_.push_back({list_.begin + 1, list_.begin + 1, pieces});
      return;
    }
    const std::size_t place = olds_[before].begin;
    const std::string parting = BeginsLine(olds_[before], indent) ? line_end_ + std::string(indent) : " ";
    for (const std::string& text : added) pieces += TomlQuoted(text) + "," + parting;
    edits_.push_back({place, place, pieces});
  }

  // Behind the last element, with a comma behind all where there was one; on lines of their own where that
  // has one.
  void Append(const std::vector<std::string>& added) {
    const TomlValue& last = olds_.back();
    const std::size_t mark = Mark(last.end);
    const bool has_comma = text_[mark] == ',';
    std::size_t place = has_comma ? mark + 1 : last.end;
    std::string_view indent;
    std::string before = " ";
    std::string behind;
    if (!has_comma) edits_.push_back({last.end, last.end, ","});
    if (BeginsLine(last, indent) && EndsLine(place)) {
      before = indent;
      behind = line_end_;
      place = text_.find('\n', place) + 1;
    }
    std::string pieces;
    for (const std::string& text : added) {
      const bool needs_comma = has_comma || &text != &added.back();
      pieces.append(before).append(TomlQuoted(text)).append(needs_comma ? "," : "").append(behind);
    }
    edits_.push_back({place, place, pieces});
  }

  void Remove(std::size_t first, std::size_t end) {
    const bool leaves_comma = end == olds_.size() && first > 0 && text_[Mark(olds_.back().end)] != ',';
    if (leaves_comma) {
      const std::size_t comma = Mark(olds_[first - 1].end);
      const std::size_t behind = Skip(comma + 1, kBlanks);
      edits_.push_back({comma, EndsLine(comma + 1) ? comma + 1 : behind, ""});
    }
    for (; first < end; ++first) RemoveOne(olds_[first]);
  }

  // With its comma, and with its line when nothing else is on it.
  void RemoveOne(const TomlValue& element) {
    std::size_t begin = element.begin;
    std::size_t end = element.end;
    const std::size_t mark = Mark(end);
    const bool comma_follows = Skip(end, kBlanks) == mark && text_[mark] == ',';
    if (comma_follows) end = mark + 1;
    std::string_view indent;
    if (EndsLine(end)) {
      const std::size_t rest = Skip(end, kBlanks);
      if (BeginsLine(element, indent)) {
        const bool is_alone = text_[rest] != '#';
        if (is_alone) begin -= indent.size();
        end = is_alone ? text_.find('\n', rest) + 1 : rest;
      }
    } else if (comma_follows) {
      end = Skip(end, kBlanks);
    }
    edits_.push_back({begin, end, ""});
    if (!comma_follows && text_[mark] == ',') edits_.push_back({mark, mark + 1, ""});
  }

  std::string_view text_;
  const TomlValue& list_;
  const std::vector<TomlValue>& olds_;
  std::string line_end_;
  std::vector<TextEdit> edits_;
};

}  // namespace

std::vector<TextEdit> EditsOfList(std::string_view text, const TomlValue& list,
                                  const std::vector<std::string>& texts) {
  return ListEditor(text, list).EditsFor(texts);
}

std::string Edited(std::string_view text, std::vector<TextEdit> edits) {
  std::ranges::stable_sort(edits, {}, &TextEdit::begin);
  std::string edited;
  std::size_t at = 0;
  for (const TextEdit& edit : edits) {
    edited.append(text.substr(at, edit.begin - at)).append(edit.by);
    at = edit.end;
  }
  return edited.append(text.substr(at));
}

}  // namespace tessaril
