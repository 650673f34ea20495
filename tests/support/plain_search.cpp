#include "tests/support/plain_search.h"

#include <algorithm>
#include <vector>

#include "tests/support/plain_text.h"

namespace tessaril {
namespace {

// Letter case may be left out of account.
std::size_t Search(std::size_t from, const std::string& text, const std::string& what, bool exact) {
  return exact ? InStr(from, text, what) : InStr(from, Lower(text), Lower(what));
}

std::string Entry(const std::string& label, const std::string& context) {
  return "\r\n\r\n" + label + "\r\n..." + context + "...";
}

}  // namespace

std::optional<std::size_t> PlainPhrase(const std::string& S, const std::string& text_from_key,
                                       const std::string& line_end) {
  struct Cell {
    char c;
    std::size_t end;  // characters of the page up to and with this one
  };
  std::vector<Cell> cells;
  for (std::size_t i = 0; i < std::min(text_from_key.size(), S.size() + 100); ++i) {
    cells.push_back({text_from_key[i], i + 1});
  }
  const auto as_text = [&cells] {
    std::string text;
    for (const Cell& cell : cells) text += cell.c;
    return text;
  };
  for (std::size_t p = 0;;) {
    const std::string candidate = as_text();
    if (candidate.substr(0, S.size()) == S) return cells[S.size() - 1].end;
    const std::size_t line = InStr(p + 1, candidate, line_end);
    const std::size_t entity = InStr(1, S, "&nbsp;") != 0 ? 0 : InStr(p + 1, candidate, "&nbsp;");
    if (line == 0 && entity == 0) return std::nullopt;
    const bool is_line = line != 0 && (entity == 0 || line < entity);
    const std::size_t q = is_line ? line : entity;
    const std::size_t length = is_line ? line_end.size() : 6;
    const std::size_t end = cells[q - 1 + length - 1].end;
    cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(q - 1),
                cells.begin() + static_cast<std::ptrdiff_t>(q - 1 + length));
    cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(q - 1), Cell{' ', end});
    for (std::size_t s = 0;;) {
      const std::size_t f = InStr(s + 1, as_text(), "  ");
      if (f == 0) break;
      cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(f - 1));
      s = f;
    }
    p = q;
  }
}

void PlainSearch::Run(const std::string& path) {
  const bool multi_word = InStr(1, S, " ") != 0;
  const std::string line_end = InStr(1, text, "\r\n") != 0 ? "\r\n" : "\n";
  const std::size_t blank = InStr(2, S, " ");
  const std::string key = blank == 0 ? S : S.substr(0, blank - 1);
  for (std::size_t P = 0; !S.empty();) {
    P = Search(P + 1, text, key, ULcase);
    if (P == 0) return;
    std::size_t extra = 0;
    std::size_t first_break = 0;
    if (multi_word) {
      const std::optional<std::size_t> covered = PlainPhrase(S, Mid(text, P), line_end);
      if (!covered) continue;
      extra = *covered - S.size();
      const std::string slice = Mid(text, P, *covered);
      const std::size_t line = InStr(1, slice, line_end);
      const std::size_t entity = InStr(1, slice, "&nbsp;");
      first_break = line == 0 ? entity : entity == 0 ? line : std::min(line, entity);
    }
    const std::size_t before = P < 21 ? P - 1 : 20;
    const std::string context = Mid(text, P - before, S.size() + extra + 100 + before);
    const std::string rest = Mid(text, P + S.size() + extra);
    if (!ask) {
      report += Entry(replacing ? "*** Changed:" : "*** Found:", context);
      if (!replacing) continue;
      text = Mid(text, 1, P - 1) + R + rest;
      if (Search(2, R, key, ULcase) != 0) P += R.size() - 1;
      continue;
    }
    std::string shown = R;
    if (first_break != 0) {
      std::size_t at = InStr(first_break, R, " ");
      if (at == 0 && R.find_last_of(' ', first_break - 1) != std::string::npos) {
        at = R.find_last_of(' ', first_break - 1) + 1;
      }
      if (at != 0) shown.replace(at - 1, 1, line_end);
    }
    const std::string proposed = replacing ? Mid(text, P - before, before) + shown + rest.substr(0, 100) : "";
    std::string edited = proposed;
    const int answer = ask(context, edited);
    if (answer == 1) {
      report += Entry("*** Changed:", context);
      if (edited != proposed) report += "\r\n--* Manually changed TO:\r\n..." + edited + "...";
      text = Mid(text, 1, P - 1 - before) + edited + Mid(text, P + S.size() + extra + 100);
    } else {
      report += Entry(replacing ? "--- Kept:" : "*** Found:", context);
      if (answer == -1) {
        report += "\r\n\r\n*** Stopped in " + path + " ***";
        return;
      }
    }
  }
}

}  // namespace tessaril
