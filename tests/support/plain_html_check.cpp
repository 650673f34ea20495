#include "tests/support/plain_html_check.h"

#include <algorithm>

#include "engine/paths.h"
#include "tests/support/plain_text.h"

namespace tessaril {
namespace {

const std::string kLine = "\r\n";
const std::string kRule(80, '-');
const std::string kExternal[] = {"HTTP:", "FTP:", "GOPHER:", "HTTPS:", "SHTTP:", "TELNET:", "WAIS:", "NNTP:"};

std::size_t FindFirstOf(std::size_t start, const std::string& text, const std::string& set) {
  const std::size_t at = text.find_first_of(set, start - 1);
  return at == std::string::npos ? 0 : at + 1;
}

std::string Cut(const std::string& folder) {
  const std::size_t at = folder.rfind('/');
  return at == std::string::npos ? folder : folder.substr(0, at);
}

std::string ReplaceAll(std::string text, const std::string& what, const std::string& with) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what)) {
    text.replace(at, what.size(), with);
  }
  return text;
}

}  // namespace

std::size_t PlainFindChain(const std::string& a, const std::string& b, const std::string& c,
                           const std::string& d, const std::string& text) {
  for (std::size_t p = 0;;) {
    const std::size_t pa = InStr(p + 1, text, a);
    if (pa == 0) return 0;
    const std::size_t pb = InStr(pa + 1, text, b);
    p = pa;
    if (pb == 0 || pb > pa + a.size() + 4) continue;
    if (c.empty()) return pa;
    p = pb;
    const std::size_t pc = InStr(pb + 1, text, c);
    if (pc == 0 || pc > pb + b.size() + 4) continue;
    p = pc;
    const std::size_t pd = InStr(pc + 1, text, d);
    if (pd > pc + c.size() + 4) continue;
    if (pd != 0) return pa;
  }
}

struct PlainHtmlCheck::Page {
  std::string& path;
  std::string PageText;
  std::string WorkText;
  bool heading = false;
  bool ended = false;
  std::size_t position = 0;
  std::size_t start = 0;
  std::size_t end = 0;
};

// Reads a file; what went wrong comes back.
std::string PlainHtmlCheck::Open(const std::string& path, std::string& content) {
  FileStamp stamp;
  if (const Status status = files.Examine(path, stamp); !status.ok()) return status.reason();
  ByteBuffer bytes;
  const Status status = files.Read(path, bytes, stamp);
  content = bytes.view();
  return status.reason();
}

void PlainHtmlCheck::CheckHTML(std::string& page_path) {
  Page page{page_path, "", ""};
  if (!Open(page_path, page.PageText).empty()) return;
  if (InStr(1, UnlinkedList, page_path) == 0) UnlinkedList += kLine + "U " + page_path;
  page.WorkText = page.PageText;
  for (std::size_t at = InStr(1, page.WorkText, kLine); at != 0; at = InStr(at, page.WorkText, kLine)) {
    page.WorkText.replace(at - 1, 2, "  ");
  }
  if (options.function == Function::kColours) {
    CheckColours(page);
  } else {
    ScanLinks(page);
  }
}

void PlainHtmlCheck::ScanLinks(Page& page) {
  while (!StopRequested && !page.ended) {
    const std::string search = Mid(page.WorkText, page.position + 1);
    std::size_t match = 0;
    std::string separator;
    const auto look = [&](const std::string& keyword, const std::string& its_separator,
                          const std::string& text) {
      const std::size_t at = PlainFindChain(keyword, its_separator, "", "", text);
      if (at == 0 || (match != 0 && match < at + page.position)) return;
      match = at + page.position;
      separator = its_separator;
    };
    for (const char* keyword : {"HREF", "SRC", "URL"}) look(keyword, "=", Upper(search));
    look("window.open", "(", Lower(search));
    for (const char* keyword : {".location", "background"}) look(keyword, "=", Lower(search));
    if (match == 0) return;
    const std::size_t p = InStr(match, page.WorkText, separator);
    const std::string ch = Mid(page.WorkText, p + 1, 1);
    if (ch.empty() || std::string(" '\"\r\n").find(ch) == std::string::npos) {
      page.start = p + 1;
      page.end = FindFirstOf(page.start, page.WorkText, " \r\n>");
    } else {
      const std::size_t quote = FindFirstOf(p + 1, page.WorkText.substr(0, p + 10), "'\"");
      if (quote == 0) {
        page.position = p + 10;
        continue;
      }
      page.start = quote + 1;
      page.end = FindFirstOf(page.start + 1, page.WorkText, Mid(page.WorkText, quote, 1));
    }
    if (page.end == 0) return;
    std::string value = Mid(page.WorkText, page.start, page.end - page.start);
    page.position = page.start;
    if (value.empty() || value.back() == ';') continue;
    value = value.substr(0, value.find('?'));
    std::string scheme = Upper(Mid(page.WorkText, page.start, 7));
    scheme = scheme.substr(0, std::min(scheme.find(':'), scheme.size() - 1) + 1);
    if (options.function == Function::kLinks) {
      VerifyLink(page, value, scheme);
    } else if (std::find(std::begin(kExternal), std::end(kExternal), scheme) != std::end(kExternal)) {
      BeginPage(page, "<H3>" + page.path + "</H3>" + kLine);
      for (const auto& [character, entity] :
           {std::pair("<", "&lt;"), std::pair(">", "&gt;"), std::pair("\"", "&quot;")}) {
        value = ReplaceAll(value, character, entity);
      }
      Results += "<A HREF = \"" + value + "\"> " + value + "</A><BR>" + kLine;
    }
  }
}

void PlainHtmlCheck::VerifyLink(Page& page, const std::string& value, const std::string& scheme) {
  const std::string no_anchor = "No corresponding anchor: ";
  if (scheme[0] == '#') {
    const std::size_t anchor =
        PlainFindChain("<A", "NAME", "=", Upper(value.substr(1)), Upper(page.WorkText));
    if (anchor == 0 && value != "#") ReportLinkError(page, no_anchor);
    return;
  }
  if (scheme == "MAILTO:") return;
  if (scheme == "FILE:") return ReportLinkError(page, "Link to internal file!");
  if (std::find(std::begin(kExternal), std::end(kExternal), scheme) != std::end(kExternal)) return;
  if (options.CGI && value.find(Lower(options.CGIname)) != std::string::npos) return;
  std::string path = value.substr(0, value.find('#'));
  const std::string anchor = value.size() > path.size() ? Lower(value.substr(path.size() + 1)) : "";
  if (!options.UCfilename) {
    if (path != Lower(path)) {
      ReportLinkError(
          page, "Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!");
      if (page.ended) return;
    }
    std::string folder = Cut(page.path);
    for (std::size_t up = path.find("../"); up != std::string::npos; up = path.find("../")) {
      path.erase(0, up + 3);
      folder = Cut(folder);
    }
    path = folder + "/" + path;
    std::vector<FolderEntry> entries;
    FileStamp stamp;
    (void)files.ListFolder(Cut(path), entries, stamp);
    const std::string name = path.substr(path.rfind('/') + 1);
    std::string stored;
    for (const FolderEntry& entry : entries) {
      if (entry.kind != EntryKind::kFile || Lower(entry.name) != Lower(name) || stored == name) continue;
      if (stored.empty() || entry.name == name || entry.name < stored) stored = entry.name;
    }
    const std::string lower = Lower(stored);
    if (stored != lower &&
        host.Ask({stored +
                      ":\r\nFound UPPERcase characters in a linked file's filename! \r\n\r\nReplace this "
                      "filename with the proper lowercase name:\r\n" +
                      lower,
                  Question::When::kDuringWalk})) {
      if (!files.Rename(Cut(path), stored, lower).ok()) {
        page.ended = true;
        return;
      }
      const std::string old_path = AbsolutePath("/", Cut(path) + "/" + stored);
      if (old_path == page.path) page.path = Cut(page.path) + "/" + lower;
    }
  }
  std::string content;
  const std::string opened = path.empty() || path[0] == '/' ? path : files.CurrentFolder() + "/" + path;
  const std::string failure = Open(opened, content);
  if (!failure.empty()) return ReportLinkError(page, failure + ": " + path);
  if (!anchor.empty() && PlainFindChain("<A", "NAME", "=", Upper(anchor), Upper(content)) == 0) {
    ReportLinkError(page, no_anchor);
    if (page.ended) return;
  }
  Register(path);
}

void PlainHtmlCheck::Register(const std::string& local_path) {
  std::string path = ReplaceAll(ReplaceAll(local_path, "//", "/"), "/./", "/");
  if (path[0] != '/') {
    while (path.starts_with("./")) path.erase(0, 2);
    std::string folder = files.CurrentFolder();
    for (; path.starts_with("../"); path.erase(0, 3)) folder = Cut(folder);
    path = folder + "/" + path;
  }
  const std::size_t at = InStr(1, UnlinkedList, path);
  if (at == 0) {
    UnlinkedList += kLine + "R " + path;
  } else if (Mid(UnlinkedList, at - 4, 2) == kLine) {
    UnlinkedList[at - 3] = 'R';
  }
}

void PlainHtmlCheck::BeginPage(Page& page, const std::string& heading) {
  if (!page.heading) Results += heading;
  page.heading = true;
}

void PlainHtmlCheck::ReportLinkError(Page& page, const std::string& error) {
  const std::size_t length = page.end - page.start;
  const std::size_t e = page.start > 22 ? page.start - 21 : 1;
  const std::string excerpt = Mid(page.PageText, e, length + 101);
  BeginPage(page, kLine + kLine + kRule + kLine + page.path + kLine + kRule);
  Results += kLine + kLine + "*** Error:     " + error + kLine + "...in link:" + kLine + kLine +
             (excerpt[0] == '\n' ? excerpt.substr(1) : excerpt);
  if (!options.ShowEach) return;
  Proposal proposal;
  proposal.FileName = page.path;
  proposal.SearchText = error;
  proposal.ReplaceText = excerpt;
  proposal.ReplaceSelection.start = std::min(page.start - e, excerpt.size());
  proposal.ReplaceSelection.length = std::min(length, excerpt.size() - proposal.ReplaceSelection.start);
  const ProposalAnswer answer = host.Propose(proposal);
  if (answer.ReplaceText != excerpt && answer.ReplaceAnswer >= 0) {
    Results += kLine + kLine + "*** Was changed TO:" + kLine + "..." + answer.ReplaceText + "...";
    for (std::string* text : {&page.PageText, &page.WorkText}) {
      text->replace(std::min(e - 1, text->size()), excerpt.size(), answer.ReplaceText);
    }
    page.position = e + 1;
    files.contents[page.path] = page.PageText;
  }
  if (answer.ReplaceAnswer == -1) StopRequested = page.ended = true;
}

void PlainHtmlCheck::CheckColours(Page& page) {
  const auto HexErr = [](const std::string& t, std::size_t a) {
    const std::string safe = "00 33 66 99 CC FF";
    bool hf = false;
    for (const std::size_t offset : {1U, 3U, 5U}) {
      const std::string piece = Mid(Upper(t), a + offset, 2);
      hf = hf || piece.size() != 2 || piece.find(' ') != std::string::npos ||
           safe.find(piece) == std::string::npos;
    }
    return hf;
  };
  const auto propose = [this, &page](const std::string& text, std::size_t start, ProposalAnswer& answer) {
    BeginPage(page, kLine + kLine + kRule + kLine + page.path + kLine + kRule);
    Proposal proposal;
    proposal.FileName = page.path;
    proposal.SearchText = text;
    proposal.ReplaceText = text;
    proposal.SearchSelection = proposal.ReplaceSelection = {start, 7};
    answer = host.Propose(proposal);
  };
  const auto changed_entry = [](const std::string& old_text, const std::string& text) {
    return kLine + kLine + old_text + kLine + "*** Was changed TO:" + kLine + "..." + text + "...";
  };
  const std::size_t body_start = InStr(1, Upper(page.PageText), "<BODY");
  const std::size_t body_end = body_start == 0 ? 0 : InStr(body_start, page.PageText, ">");
  if (body_end == 0) return;
  std::string tag = Upper(Mid(page.PageText, body_start, body_end - body_start + 1));
  ProposalAnswer answer;
  for (std::size_t p = InStr(1, tag, "#"); p != 0; p = InStr(p + 1, tag, "#")) {
    if (!HexErr(tag, p)) continue;
    propose(tag, p - 1, answer);
    if (answer.ReplaceText != tag && answer.ReplaceAnswer == 1) {
      Results += changed_entry(tag, answer.ReplaceText);
      page.PageText.replace(body_start - 1, tag.size(), answer.ReplaceText);
      tag = answer.ReplaceText;
      files.contents[page.path] = page.PageText;
    } else if (answer.ReplaceText == tag) {
      Results += kLine + kLine + tag;
    }
    if (answer.ReplaceAnswer == -1) {
      StopRequested = true;
      return;
    }
  }
  for (std::size_t position = body_start + tag.size(); !StopRequested;) {
    const std::size_t r = PlainFindChain("COLOR", "=", "#", "", Upper(Mid(page.PageText, position + 1)));
    if (r == 0) return;
    position = InStr(position + r, page.PageText, "#");
    if (!HexErr(Mid(page.PageText, position, 10), 1)) continue;
    const std::size_t e = position > 21 ? position - 21 : 1;
    const std::string excerpt = Mid(page.PageText, e, 100);
    BeginPage(page, kLine + kLine + kRule + kLine + page.path + kLine + kRule);
    Results += kLine + kLine + "*** Error:";
    propose(excerpt, position - e, answer);
    if (answer.ReplaceText != excerpt && answer.ReplaceAnswer == 1) {
      Results += changed_entry(excerpt, answer.ReplaceText);
      page.PageText.replace(e - 1, excerpt.size(), answer.ReplaceText);
      files.contents[page.path] = page.PageText;
    } else {
      Results += kLine + kLine + excerpt;
    }
    if (answer.ReplaceAnswer == -1) StopRequested = true;
  }
}

}  // namespace tessaril
