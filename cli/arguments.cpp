#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <map>
#include <optional>

#include "cli/console_text.h"
#include "cli/help.h"
#include "engine/page_encoding.h"

namespace tessaril {
namespace {

// Where the parser puts what it finds.
struct Found {
  std::map<std::string_view, std::string> values;
  std::map<std::string_view, bool> switches;
  std::string text;
  std::string new_text;
  std::string path;
  std::optional<std::string> run;

  void ReplaceWords(const std::string& old_word, const std::string& new_word) {
    const auto replace = [&](std::string& word) {
      if (word == old_word) word = new_word;
    };
    for (std::string* const word : {&text, &new_text, &path}) replace(*word);
    if (run) replace(*run);
    for (auto& [name, value] : values) replace(value);
  }

  bool Has(std::string_view name) const { return switches.at(name); }
};

// What holds where the command line says nothing.
Found Defaults() {
  Found found;
  for (const OptionRow& option : AllOptions()) {
    if (option.value.empty()) {
      found.switches[option.name] = false;
    } else {
      found.values[option.name].clear();
    }
  }
  const RunOptions defaults;
  found.values["--filter"] = defaults.cboSearchSpec;
  found.values["--cgi-name"] = defaults.CGIname;
  return found;
}

// The parser would take a "++" for itself; with a byte behind it that no argument can hold it does not.
const std::string kPlus = "++";
const std::string kProtectedPlus = kPlus + std::string(1, '\0');

// The words in the order that the parser asks for, the last one first.
std::vector<std::string> Protected(std::vector<std::string> words) {
  std::replace(words.begin(), words.end(), kPlus, kProtectedPlus);
  std::reverse(words.begin(), words.end());
  return words;
}

std::string NotEmpty(const std::string& value) {
  return value.empty() ? "must not be empty" : "";
}

constexpr std::string_view kClassic = "classic";

// For an option whose value is one of some words, which have "|" between them.
std::string OneOf(std::string_view words, const std::string& value) {
  const auto framed = [](std::string_view text) { return "|" + std::string(text) + "|"; };
  const bool is_word =
      value.find('|') == std::string::npos && framed(words).find(framed(value)) != std::string::npos;
  return is_word ? "" : "must be one of " + std::string(words);
}

CLI::App* AddCommand(CLI::App& app, const CommandRow& row, Found& found) {
  CLI::App* const command = app.add_subcommand(std::string(row.name), std::string(row.summary));
  command->set_help_flag();
  if (row.function == Function::kSearch || row.function == Function::kReplace) {
    command->add_option("TEXT", found.text)->required();
  }
  if (row.function == Function::kReplace) command->add_option("NEWTEXT", found.new_text)->required();
  if (row.name == kUndoCommand) {
    command->add_option("RUN", found.run);
  } else {
    command->add_option("PATH", found.path)->required();
  }
  for (const OptionRow& option : AllOptions()) {
    if (!Applies(option, row)) continue;
    const std::string name(option.name);
    if (option.value.empty()) {
      command->add_flag(name, found.switches[option.name]);
    } else {
      CLI::Option* const added = command->add_option(name, found.values[option.name]);
      added->type_name(std::string(option.value));
      if (option.name != "--cgi-name") added->check(NotEmpty, "");
      if (!option.IsChoice()) continue;
      added->check([words = option.value](const std::string& value) { return OneOf(words, value); }, "");
    }
  }
  return command;
}

Farewell Refuse(const std::string& reason) {
  return {"tsl: " + reason + "\nTry 'tsl --help'.\n", 2};
}

// Help and version, wherever they stand among the options, and a wrong command.
std::optional<Farewell> AnsweredAtOnce(const std::vector<std::string>& words) {
  const auto end = std::find(words.begin(), words.end(), "--");
  const auto has = [&](const char* option) { return std::find(words.begin(), end, option) != end; };
  if (has("--help")) return Farewell{HelpText(words[0]), 0};
  if (has("--version")) return Farewell{VersionText(), 0};
  if (words.empty()) return Refuse("a command is missing");
  if (FindCommand(words[0]) == nullptr) return Refuse("unknown command: " + OneLine(words[0]));
  return std::nullopt;
}

// The mode and what it means for `ShowEach`; nothing when more than one is named.
bool ChooseMode(const Found& found, Arguments& arguments) {
  const bool yes = found.Has("--yes");
  const bool ask = found.Has("--ask");
  const bool answers = !found.values.at("--answers").empty();
  if (int{yes} + int{ask} + int{answers} > 1) return false;
  arguments.mode = yes ? Mode::kYes : ask ? Mode::kAsk : answers ? Mode::kAnswers : Mode::kReportOnly;
  const Function function = arguments.options.function;
  const bool proposes = function == Function::kReplace || function == Function::kEntities;
  arguments.options.ShowEach = ask || answers || (!yes && proposes);
  arguments.options.AcceptCertain = yes && function == Function::kLinks;
  return true;
}

Understood Understand(const Found& found, Function function) {
  Arguments arguments;
  RunOptions& options = arguments.options;
  options.function = function;
  options.SearchTekst = EnteredText(found.text);
  options.ReplaceText = EnteredText(found.new_text);
  options.cboSearchSpec = EnteredText(found.values.at("--filter"));
  options.ULcase = found.Has("--case");
  options.chkTags = !found.Has("--no-tags");
  options.UCfilename = found.Has("--allow-uppercase");
  options.CGI = !found.Has("--check-cgi");
  options.CGIname = EnteredText(found.values.at("--cgi-name"));
  arguments.path = found.path;
  arguments.answers = found.values.at("--answers");
  arguments.format = FormatNamed(found.values.at("--format"));
  arguments.report = found.values.at("--report");
  arguments.transcript = found.values.at("--transcript");
  arguments.data = found.values.at("--data");
  if (const std::string& rules = found.values.at("--rules"); !rules.empty()) {
    arguments.rules = rules == kClassic ? Rules::kClassic : Rules::kToday;
  }
  arguments.keeps_undo = !found.Has("--no-undo");
  if (!ChooseMode(found, arguments)) return Refuse("only one of --yes, --ask and --answers may be given");
  return arguments;
}

Understood UnderstandUndo(const Found& found) {
  UndoWish wish;
  wish.list = found.Has("--list");
  wish.unasked = found.Has("--yes");
  wish.keeps_undo = !found.Has("--no-undo");
  if (!found.run) return wish;
  const char* const end = found.run->data() + found.run->size();
  unsigned number = 0;
  const auto [stop, error] = std::from_chars(found.run->data(), end, number);
  if (error != std::errc() || stop != end || number == 0) {
    return Refuse("RUN must be a number that 'tsl undo --list' shows: " + OneLine(*found.run));
  }
  wish.run = number;
  return wish;
}

}  // namespace

const std::vector<OptionRow>& AllOptions() {
  static const std::vector<OptionRow> options = {
      {"--filter", "PATTERNS", "files to visit, patterns parted by \";\" (default \"*.htm*;shtm*\")", {}},
      {"--case", "", "UPPER and lower case letters differ", {"search", "replace"}},
      {"--no-tags",
       "",
       "take the texts as they are; characters are not turned into &name; entities",
       {"search", "replace"}},
      {"--allow-uppercase", "", "upper-case letters in file names are no fault", {"links"}},
      {"--cgi-name", "NAME", "links that hold NAME are not checked (default \"CGI-bin\")", {"links"}},
      {"--check-cgi", "", "check these links, too", {"links"}},
      {"--rules",
       "classic|today",
       "check by these rules whatever the site file says; without one, PATH or its folder is the root",
       {"links", "entities"}},
      {"--yes",
       "",
       "accept every proposal (of links by today's rules only letter case); files are changed",
       {}},
      {"--yes", "", "restore without asking", {kUndoCommand}},
      {"--ask", "", "ask at the terminal for each proposal", {}},
      {"--answers", "FILE", "take the answers from FILE, one a line", {}},
      {"--no-undo",
       "",
       "keep nothing to undo these changes with",
       {"links", "entities", "replace", "colours", kUndoCommand}},
      {"--list", "", "list the runs that can be undone, the newest first", {kUndoCommand}},
      {"--format",
       "text|json|sarif|junit|github",
       "a report for people, or one for machines (default text)",
       {}},
      {"--report", "FILE", "write the report to FILE instead of standard output", {}},
      {"--transcript", "FILE", "write each question and its answer to FILE, as JSON Lines", {}},
      {"--data",
       "DIR",
       "folder of alphatg1.dat and alphatg2.dat, the entity data (default: the program's)",
       {}},
  };
  return options;
}

bool Applies(const OptionRow& option, const CommandRow& command) {
  if (option.only.empty()) return command.function.has_value();
  return std::ranges::find(option.only, command.name) != option.only.end();
}

Understood ParseArguments(int argc, const char* const* argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (const std::optional<Farewell> farewell = AnsweredAtOnce(words)) return *farewell;
  CLI::App app;
  app.set_help_flag();
  app.require_subcommand(1);
  Found found = Defaults();
  std::map<const CLI::App*, const CommandRow*> commands;
  for (const CommandRow& row : AllCommands()) commands[AddCommand(app, row, found)] = &row;
  try {
    app.parse(Protected(words));
  } catch (const CLI::ParseError& error) {
    return Refuse(OneLine(error.what()));
  }
  found.ReplaceWords(kProtectedPlus, kPlus);
  const CommandRow& command = *commands.at(app.get_subcommands().front());
  if (command.name == kUndoCommand) return UnderstandUndo(found);
  if (!command.function) return SiteFileWish{found.path};
  return Understand(found, *command.function);
}

}  // namespace tessaril
