// Erstat, with and without confirmation, held against the plain reading where the page is 8-bit.
// Input: three bytes that choose, the text, its replacement, the answers, the page.

#include "engine/text_search.h"

#include "engine/page_encoding.h"
#include "fuzz/input.h"
#include "fuzz/watching_host.h"
#include "tests/support/plain_search.h"

namespace tessaril {
namespace {

// Asked as the engine asks its host.
int Ask(AnsweringHost& host, const std::string& context, bool replacing, std::string& proposed) {
  Proposal proposal;
  proposal.SearchText = context;
  if (replacing) proposal.ReplaceText = proposed;
  const ProposalAnswer answer = host.Propose(proposal);
  proposed = answer.ReplaceText;
  return answer.ReplaceAnswer;
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  RunOptions options;
  options.function = input.Flag() ? Function::kReplace : Function::kSearch;
  options.ShowEach = input.Flag();
  options.ULcase = input.Flag();
  options.MarkedOnly = true;
  const std::string sought = EnteredText(input.Field());
  const std::string replacement = EnteredText(input.Field());
  const std::string answers = input.Field();
  const std::string page = input.Rest();
  const bool replacing = options.function == Function::kReplace;

  static const Entities entities;
  static ByteBuffer memory;
  RunState state;
  WatchingHost host(answers, options, state);
  host.wants_findings = page.size() % 2 == 1;
  host.files.contents["/p.htm"] = page;
  RunContext run{host.files, host, options, state, entities, {}, std::move(memory)};
  Require(Erstat(sought, replacement, "/p.htm", run).ok(), "the page cannot be searched");
  memory = std::move(run.page_bytes);
  host.LookAtPage();
  const std::string& changed = host.files.contents["/p.htm"];
  if (!replacing) {
    Require(host.files.writes.empty(), "a search writes");
    RequireEqual(changed, page, "the page");
  }

  const bool is_utf8 = DetectEncoding(page) == PageEncoding::kUtf8;
  const std::optional<std::string> plainly_sought = SoughtBytes(sought, DetectEncoding(page));
  if (!plainly_sought) {
    RequireEqual(changed, page, "a page that cannot hold the text");
    return 0;
  }
  // In UTF-8 what is shown around a hit is another matter, and how far a phrase may reach.
  if (is_utf8 && (options.ShowEach || sought.find(' ') != std::string::npos)) return 0;
  PlainSearch plain;
  plain.S = *plainly_sought;
  plain.R = WrittenBytes(replacement, DetectEncoding(page));
  plain.ULcase = options.ULcase;
  plain.replacing = replacing;
  plain.text = page;
  AnsweringHost plain_host(answers);
  if (options.ShowEach)
    plain.ask = [&](const std::string& context, std::string& proposed) {
      return Ask(plain_host, context, replacing, proposed);
    };
  plain.Run("/p.htm");
  RequireEqual(changed, plain.text, "the page");
  if (!is_utf8) RequireEqual(state.Results, plain.report, "the report");
  return 0;
}
