// ErstatAlfa by the classic and by today's rules.
// Input: two bytes that choose, the answers, the page.
//
// What is watched besides: once everything is accepted as proposed, a second run proposes nothing new, and a
// browser shows the same text as before.

#include "engine/entity_check.h"

#include "engine/character_references.h"
#include "engine/page_encoding.h"
#include "engine/reference_texts.h"
#include "fuzz/input.h"
#include "fuzz/watching_host.h"
#include "tests/support/program_entities.h"

namespace tessaril {
namespace {

const std::string kPath = "/s/p.htm";

std::string Check(const std::string& page, AnsweringHost& host, MemoryFiles& files, const RunOptions& options,
                  RunState& state) {
  static ByteBuffer memory;
  files.contents[kPath] = page;
  RunContext run{files, host, options, state, ProgramEntities(), {}, std::move(memory)};
  Require(ErstatAlfa(kPath, run).ok(), "the page cannot be checked");
  memory = std::move(run.page_bytes);
  return files.contents[kPath];
}

// Everything accepted as proposed. `unasked`: written once, at the end.
std::string Accepted(const std::string& page, const RunOptions& options, bool unasked, RunState& state) {
  WatchingHost host("", options, state);
  host.takes_proposals = true;
  host.unasked = unasked;
  host.most = std::string::npos;
  return Check(page, host, host.files, options, state);
}

// The texts of a page, each as a browser shows it, a line each.
std::string SeenByBrowser(const std::string& page) {
  std::string seen;
  const PageEncoding encoding = DetectEncoding(page);
  std::size_t behind = 0;
  for (const auto& [begin, end, in_attribute] : FindReferenceTexts(page, true)) {
    std::string_view rest = std::string_view(page).substr(begin, end - begin);
    seen += page.substr(behind, begin - behind);
    behind = end;
    while (!rest.empty()) {
      const std::string_view plain = rest.substr(0, rest.find('&'));
      seen += encoding == PageEncoding::kUtf8 ? std::string(plain) : EightBitToUtf8(plain);
      rest.remove_prefix(plain.size());
      if (rest.empty()) break;
      const CharacterReference reference = ReadCharacterReference(rest, in_attribute);
      seen += reference.length == 0 ? "&" : reference.characters;
      rest.remove_prefix(std::max<std::size_t>(reference.length, 1));
    }
  }
  return seen + page.substr(behind);
}

void CheckAllAccepted(const std::string& page, const RunOptions& options) {
  RunState state;
  RunState same_state;
  const std::string changed = Accepted(page, options, true, state);
  RequireEqual(Accepted(page, options, false, same_state), changed, "the page, written after each answer");
  RequireEqual(same_state.Results, state.Results, "the report of the same");
  // A character without a name may become a number, and that a name. Then there is nothing left to be done.
  RunState again;
  RunState at_last;
  const std::string settled = Accepted(changed, options, true, again);
  RequireEqual(Accepted(settled, options, true, at_last), settled, "a page in which all is accepted already");
  if (options.site) RequireEqual(SeenByBrowser(changed), SeenByBrowser(page), "what a browser shows");
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  RunOptions options;
  options.function = Function::kEntities;
  options.MarkedOnly = true;
  if (input.Flag()) options.site = Site{"/s", {}};
  if (options.site) options.site->rules.ascii_entities = input.Flag();
  const std::string answers = input.Field();
  const std::string page = input.Rest();

  RunState state;
  WatchingHost host(answers, options, state);
  host.wants_findings = page.size() % 2 == 1;
  (void)Check(page, host, host.files, options, state);
  host.LookAtPage();

  RunState kept;
  MemoryFiles files;
  AnsweringHost nobody("");
  nobody.most = std::string::npos;
  RequireEqual(Check(page, nobody, files, options, kept), page, "a page in which all is kept");
  Require(files.writes.empty(), "a page in which all is kept is written");
  CheckAllAccepted(page, options);
  return 0;
}
