#include "engine/run_report.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "engine/ascii.h"
#include "engine/html_text.h"
#include "engine/paths.h"
#include "engine/site_run.h"

namespace tessaril {
namespace {

// The line that tells where was searched.
std::string FolderLine(const RunOptions& options) {
  const bool page = RowOf(options.function).HtmlOutput;
  const auto shown = [page](const std::string& path) { return page ? EscapedPath(path) : path; };
  std::string line = "In \"" + shown(options.dirList);
  if (options.MarkedOnly) {
    line += kSeparator + shown(options.filList) + "\"";
  } else {
    line += "\" and all subdirectories";
  }
  return line;
}

// A text as typed and, when it is searched for in another form, as that.
std::string TextAndForm(const std::string& typed, const std::string& searched, bool with_tags) {
  if (!with_tags || searched == typed) return typed;
  return typed + "\" as \"" + searched;
}

std::string Heading(const RunOptions& options, const SearchTexts& typed, const SearchTexts& searched) {
  const std::string search = TextAndForm(typed.search, searched.search, options.chkTags);
  switch (options.function) {
    case Function::kLinks:
      return "Internal link errors found:";
    case Function::kEntities:
      return "&xxxx; type tag problems found:";
    case Function::kSearch:
      return "Search text \"" + search + "\" found:";
    case Function::kReplace:
      return "Search text \"" + search + "\" found and changed to \"" +
             TextAndForm(typed.replace, searched.replace, options.chkTags) + "\" in:";
    case Function::kColours:
      return "Safe colour errors found:";
    case Function::kExternal:
    case Function::kShowFile:
      break;
  }
  return {};
}

std::string SectionHead(std::string_view title) {
  return "\r\n\r\n" + std::string(50, '=') + "\r\n" + std::string(title);
}

// The pages that no checked page links to: the entries of the register that are still marked "U".
std::string UnlinkedSection(const std::string& register_text) {
  std::string section = SectionHead("Unlinked files:");
  constexpr std::string_view kUnlinked = "\r\nU";
  for (std::size_t at = register_text.find(kUnlinked); at != std::string::npos;
       at = register_text.find(kUnlinked, at + 1)) {
    const std::size_t rest = at + kUnlinked.size();
    const std::size_t end = std::min(register_text.find('\r', rest), register_text.size());
    section += "\r\n    ";
    section.append(register_text, rest, end - rest);
  }
  return section;
}

// The targets that are missing, with the number of links that name each.
std::string MissingSection(const SiteRun& site) {
  const auto missing = site.Missing();
  if (missing.empty()) return {};
  std::string section = SectionHead("Missing targets:");
  const std::size_t width = std::to_string(missing.front().second).size();
  for (const auto& [target, links] : missing) {
    const std::string count = std::to_string(links);
    section += "\r\n     " + std::string(width - count.size(), ' ') + count + "  " + target;
  }
  return section;
}

// What a report of links ends with.
std::string EndOfLinks(const RunOptions& options, const RunState& state, const SiteRun* site) {
  const bool whole = !options.MarkedOnly;
  if (site == nullptr) return whole ? UnlinkedSection(state.UnlinkedList.text()) : "";
  std::string end = MissingSection(*site);
  if (!whole) return end;
  end += SectionHead("Unlinked files:");
  for (const std::string& path : site->Unlinked()) end += "\r\n     " + path;
  return end;
}

// Puts `before` and `after` around `text`. When memory is short, the end of the text makes room for them:
// what it holds was given up as too long already.
void Surround(std::string_view before, std::string_view after, std::string& text) {
  const std::size_t added = before.size() + after.size();
  try {
    text.reserve(text.size() + added);
  } catch (const std::bad_alloc&) {
    if (text.capacity() < added) throw;
    text.resize(std::min(text.size(), text.capacity() - added));
  }
  text.insert(0, before);
  text += after;
}

}  // namespace

std::string MakeHeader(const RunOptions& options, const SearchTexts& typed, const SearchTexts& searched) {
  const std::string line = FolderLine(options);
  if (RowOf(options.function).HtmlOutput) {
    return "<H1>External links</H1>\r\n<P>" + ToLower(line + "<HR width=\"100%\">") + "</P>";
  }
  return line + ":\r\n\r\n" + Heading(options, typed, searched);
}

void FinishReport(const std::string& header, const RunOptions& options, RunState& state,
                  const SiteRun* site) {
  constexpr std::size_t kLeastFindings = 40;  // no entry with its file's header is shorter
  if (state.Results.size() < kLeastFindings) state.Results = "\r\n*** None ***";
  std::string tail;
  if (state.StopRequested) tail += "\r\n\r\n   *** Stopped ***\r\nin file " + state.RunFile;
  tail += CrLf;
  if (options.function == Function::kLinks && !state.StopRequested) tail += EndOfLinks(options, state, site);
  state.ReportTitle = "Report";
  Surround(header, tail, state.Results);
}

void FinishPage(const std::string& header, RunState& state) {
  if (state.Results.empty()) state.Results = "<H3>No external links found</H3>";
  Surround("<HTML>\r\n" + header + "\r\n", "\r\n</HTML>", state.Results);
}

}  // namespace tessaril
