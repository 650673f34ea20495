#include <gtest/gtest.h>

#include <random>

#include "engine/text_search.h"
#include "tests/support/memory_files.h"
#include "tests/support/plain_search.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Random = std::mt19937;

std::string RandomText(Random& random, std::initializer_list<const char*> words, std::size_t most) {
  std::string text;
  for (std::size_t count = random() % (most + 1); count > 0; --count)
    text += words.begin()[random() % words.size()];
  return text;
}

// The engine's result for the same input, confirmation answered by `ask`.
struct Outcome {
  std::string page;
  std::string report;
};

class PlainHost : public ScriptHost {
 public:
  explicit PlainHost(const PlainSearch& plain) : plain_(plain) {}
  ProposalAnswer Propose(const Proposal& proposal) override {
    std::string field = proposal.ReplaceText.value_or("");
    const int answer = plain_.ask(proposal.SearchText, field);
    return {answer, field};
  }

 private:
  const PlainSearch& plain_;
};

Outcome RunEngine(const PlainSearch& plain, const std::string& page) {
  MemoryFiles files;
  files.contents["/p.htm"] = page;
  PlainHost host(plain);
  RunOptions options;
  options.function = plain.replacing ? Function::kReplace : Function::kSearch;
  options.ULcase = plain.ULcase;
  options.ShowEach = plain.ask != nullptr;
  options.MarkedOnly = true;
  RunState state;
  static ByteBuffer memory;
  const Entities entities;
  RunContext run{files, host, options, state, entities, {}, std::move(memory)};
  EXPECT_TRUE(Erstat(plain.S, plain.R, "/p.htm", run).ok());
  memory = std::move(run.page_bytes);
  return {files.contents["/p.htm"], state.Results};
}

// Small texts of few words, so that keys, breaks, runs of blanks and overlaps meet in every way.
TEST(TextSearchRandom, GivesWhatThePlainRulesGive) {
  Random random(20261124);
  int hits = 0;
  for (int round = 0; round < 30000; ++round) {
    PlainSearch plain;
    plain.S = RandomText(random, {"a", "b", "A", "ab", " ", " b", "&nbsp;", "\r\n", "c"}, 4);
    plain.R = RandomText(random, {"a", "ab", " ", "x", "x y", "\r\n"}, 3);
    plain.ULcase = random() % 2 == 0;
    plain.replacing = random() % 2 == 0;
    const std::string page = RandomText(
        random, {"a", "b", "A", "B", " ", "  ", "&nbsp;", "\r\n", "\r\n ", "ab", "a b", "\n", "\r", "c"}, 60);
    Random answers(static_cast<unsigned>(random()));
    Random same_answers = answers;
    const auto ask_with = [](Random& source) {
      return [&source, asked = 0](const std::string&, std::string& proposed) mutable {
        constexpr int kMost = 40;  // an edit may push its own hit ahead of the search for ever
        const auto choice = source() % 12;
        if (choice == 0 || ++asked > kMost) return -1;
        if (choice < 4 && !proposed.empty())
          proposed.replace(std::min<std::size_t>(proposed.size(), 2), 1, "a b");
        return choice < 8 && !proposed.empty() ? 1 : 0;
      };
    };
    const bool confirm = random() % 2 == 0;
    plain.text = page;
    if (confirm) plain.ask = ask_with(answers);
    PlainSearch for_engine = plain;
    if (confirm) for_engine.ask = ask_with(same_answers);
    plain.Run("/p.htm");
    const Outcome outcome = RunEngine(for_engine, page);
    ASSERT_EQ(outcome.page, plain.text)
        << "S '" << plain.S << "' R '" << plain.R << "' page '" << page << "'";
    ASSERT_EQ(outcome.report, plain.report)
        << "S '" << plain.S << "' R '" << plain.R << "' page '" << page << "'";
    hits += plain.report.empty() ? 0 : 1;
  }
  EXPECT_GT(hits, 5000);
}

}  // namespace
}  // namespace tessaril
