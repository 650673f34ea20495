#ifndef TESSARIL_TESTS_SUPPORT_PLAIN_HTML_CHECK_H_
#define TESSARIL_TESTS_SUPPORT_PLAIN_HTML_CHECK_H_

#include <string>

#include "engine/run.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {

/// Position of the chain of tokens a, b, c and d, the last two of which may be empty; 0 when there is none.
std::size_t PlainFindChain(const std::string& a, const std::string& b, const std::string& c,
                           const std::string& d, const std::string& text);

/// The rules of link, external link and colour checks read plainly: positions from 1, every text upper-cased
/// whole where a rule says so, every file opened anew, no thought of speed. 8-bit pages only.
struct PlainHtmlCheck {
  MemoryFiles& files;
  ScriptHost& host;
  const RunOptions& options;
  std::string Results = {};
  std::string UnlinkedList = {};
  bool StopRequested = false;

  void CheckHTML(std::string& page_path);

 private:
  struct Page;
  void ScanLinks(Page& page);
  void VerifyLink(Page& page, const std::string& value, const std::string& scheme);
  void Register(const std::string& local_path);
  void ReportLinkError(Page& page, const std::string& error);
  void CheckColours(Page& page);
  void BeginPage(Page& page, const std::string& heading);
  std::string Open(const std::string& path, std::string& content);
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PLAIN_HTML_CHECK_H_
