#include "cli/help.h"

#include <algorithm>
#include <utility>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "engine/version.h"
#include "site/site_file.h"

namespace tessaril {
namespace {

constexpr std::string_view kPurpose = "finds and mends what creeps into a web site on a disk";
constexpr std::string_view kPathMeaning =
    "PATH is a folder, searched with all folders below it, or one file; of init, the folder of a site. No "
    "file is ever changed without --yes, --ask or --answers; undo asks at the terminal. What is changed can "
    "be undone, unless --no-undo is given. A text that begins with \"-\" follows \"--\".";

constexpr std::string_view kUndoFolder = "$XDG_DATA_HOME/tessaril/undo, else ~/.local/share/tessaril/undo";
constexpr std::string_view kUndoFolderMeaning =
    "What the last 20 runs changed, in at most 500 MB (the last one whatever its size), with one folder a "
    "run. A run of which nothing can be kept there changes nothing.";

constexpr std::string_view kSiteFileMeaning =
    "In the folder that is searched or the nearest above it: by which rules the links and entities of the "
    "site are checked, and what else its author says of it. tsl init makes it, with an explanation of each "
    "key.";

// Options that need no command.
constexpr std::pair<std::string_view, std::string_view> kAlways[] = {
    {"--help", "show this text; behind a command, what goes with it"}, {"--version", "show the version"}};

// What the man page says of the reports for machines.
constexpr std::pair<std::string_view, std::string_view> kFormats[] = {
    {"json",
     "JSON Lines, one object a finding, written while the run goes on: file (absolute path), line, column, "
     "kind, message, found and proposal, in this order. line and column are null where the finding is of "
     "a whole file, proposal is null where there is none."},
    {"sarif",
     "SARIF 2.1.0, for code scanning and editors. Files below the folder that tsl was started in are named "
     "from there. A proposal is a fix."},
    {"junit",
     "JUnit XML, for test servers: a failed test for each finding, a passed one for each file without "
     "findings, an error for each file that could not be read or written."},
    {"github",
     "Workflow commands of GitHub, which show the findings beside the lines of a change. Start tsl in the "
     "folder of the repository."},
};
constexpr std::string_view kFormatsMeaning =
    "With --format the report is one for machines: every finding with its file, line, column, kind, message, "
    "the text found and, where there is one, the proposal. Lines and columns count from 1, columns count "
    "characters, and both are those of the page as it stands when the finding is made. A kind keeps its name "
    "from version to version. All is UTF-8: bytes of pages and file names that are not are read as "
    "Windows-1252. Exit statuses are those of the text report.";

std::string Padded(std::string_view text, std::size_t width) {
  std::string padded(text);
  padded.resize(std::max(width, padded.size()), ' ');
  return padded;
}

std::string Wrapped(std::string_view text, std::size_t width) {
  std::string result;
  while (text.size() > width) {
    const std::size_t blank = text.rfind(' ', width);
    result += std::string(text.substr(0, blank)) + "\n";
    text.remove_prefix(blank + 1);
  }
  return result + std::string(text) + "\n";
}

std::string CommandLine(const CommandRow& row) {
  return std::string(row.name) + " " + std::string(row.positionals);
}

std::string OptionWithValue(const OptionRow& option) {
  return std::string(option.name) + (option.value.empty() ? "" : " ") + std::string(option.value);
}

std::string OnlyFor(const OptionRow& option) {
  std::string names;
  for (const std::string_view command : option.only) {
    names += (names.empty() ? "" : ", ") + std::string(command);
  }
  return names;
}

// A backslash before what roff would take for its own.
std::string Roff(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '-' || c == '\\') escaped += '\\';
    if (c == '\'' || (c == '.' && escaped.empty())) escaped += "\\&";
    escaped += c;
  }
  return escaped;
}

}  // namespace

const std::vector<Example>& Examples() {
  static const std::vector<Example> examples = {
      {"tsl search 'opening hours' site", "list where the words stand, also across line ends and &nbsp;"},
      {"tsl replace --case 2025 2026 site", "show what would be replaced and change nothing"},
      {"tsl replace --case --yes 2025 2026 site", "replace it in all pages"},
      {"tsl replace --ask color colour site", "ask for each place"},
      {"tsl entities --ask site", "ask for each character and entity that should be written &name;"},
      {"tsl links --report links.txt site", "check all local links; 0 when all are in order"},
      {"tsl init site",
       "make site/tessaril.toml: from now on the site is checked as a visitor's browser reads it"},
      {"tsl links --format sarif --report links.sarif site", "the same for code scanning and editors"},
      {"tsl undo", "show what the last run changed, ask, and restore it"},
      {"tsl external --report links.htm site", "make a page of all links to other servers"},
      {"tsl search --filter '*.css;*.js' -- -moz- site",
       "search other files, for a text that begins with \"-\""},
  };
  return examples;
}

const std::vector<ExitStatus>& ExitStatuses() {
  static const std::vector<ExitStatus> statuses = {
      {"0",
       "search, replace, external: something was found; init: the file was made; undo: all was restored; "
       "others: "
       "no findings"},
      {"1",
       "search, replace, external: nothing was found; undo: files were left alone, or there was nothing to "
       "undo; "
       "others: findings"},
      {"2", "a wrong command line, or a file that could not be read or written"},
      {"3", "the run was stopped"},
  };
  return statuses;
}

std::string VersionText() {
  return std::string("tsl ") + Version() + "\n";
}

std::string HelpText(std::string_view command) {
  const CommandRow* const known = FindCommand(command);
  constexpr std::size_t kColumn = 32;
  std::string text = "tsl " + std::string(kPurpose) + "\n\nUsage:\n";
  for (const CommandRow& row : AllCommands()) {
    if (known != nullptr && &row != known) continue;
    text += "  tsl " + Padded(CommandLine(row), kColumn - 6) + std::string(row.summary) + "\n";
  }
  text += "\n" + Wrapped(kPathMeaning, 90) + "\nOptions:\n";
  for (const OptionRow& option : AllOptions()) {
    if (known != nullptr && !Applies(option, *known)) continue;
    const std::string written = "  " + OptionWithValue(option);
    text += written.size() < kColumn ? Padded(written, kColumn) : written + "\n" + std::string(kColumn, ' ');
    text += option.help;
    text += known != nullptr || option.only.empty() ? "\n" : " [" + OnlyFor(option) + "]\n";
  }
  for (const auto& [name, meaning] : kAlways) {
    text += "  " + Padded(name, kColumn - 2) + std::string(meaning) + "\n";
  }
  text += "\nExamples:\n";
  for (const Example& example : Examples()) {
    text += "  " + std::string(example.command) + "\n      " + std::string(example.meaning) + "\n";
  }
  text += "\nExit status, the first that fits of 2, 3, 1, 0:\n";
  for (const ExitStatus& row : ExitStatuses()) {
    text += "  " + std::string(row.status) + "  " + std::string(row.meaning) + "\n";
  }
  return text;
}

std::string ManPage() {
  std::string page = std::string(".TH TSL 1 \"\" \"Tessaril ") + Version() + "\"\n.SH NAME\ntsl \\- " +
                     Roff(kPurpose) + "\n.SH SYNOPSIS\n";
  for (const CommandRow& row : AllCommands()) {
    page +=
        ".B tsl " + Roff(CommandLine(row)) + (row.name != kInitCommand ? "\n[options]\n.br\n" : "\n.br\n");
  }
  page += ".SH DESCRIPTION\n" + Roff(kPathMeaning) + "\n.SH COMMANDS\n";
  for (const CommandRow& row : AllCommands()) {
    page += ".TP\n.B " + Roff(row.name) + "\n" + Roff(row.summary) + "\n";
  }
  page += ".SH OPTIONS\n";
  for (const OptionRow& option : AllOptions()) {
    page += ".TP\n.B " + Roff(OptionWithValue(option)) + "\n" + Roff(option.help);
    page += option.only.empty() ? "\n" : " [" + OnlyFor(option) + "]\n";
  }
  for (const auto& [name, meaning] : kAlways) {
    page += ".TP\n.B " + Roff(name) + "\n" + Roff(meaning) + "\n";
  }
  page += ".SH REPORTS FOR MACHINES\n" + Roff(kFormatsMeaning) + "\n";
  for (const auto& [name, meaning] : kFormats) {
    page += ".TP\n.B " + Roff(name) + "\n" + Roff(meaning) + "\n";
  }
  page += ".SH EXIT STATUS\nThe first that fits of 2, 3, 1, 0.\n";
  for (const ExitStatus& row : ExitStatuses()) {
    page += ".TP\n.B " + Roff(row.status) + "\n" + Roff(row.meaning) + "\n";
  }
  page += ".SH FILES\n.TP\n.I " + Roff(kSiteFileName) + "\n" + Roff(kSiteFileMeaning) + "\n.TP\n.I " +
          Roff(kUndoFolder) + "\n" + Roff(kUndoFolderMeaning) + "\n.SH EXAMPLES\n";
  for (const Example& example : Examples()) {
    page += ".TP\n.B " + Roff(example.command) + "\n" + Roff(example.meaning) + "\n";
  }
  return page + ".SH SEE ALSO\n.BR tessaril (1),\nwhich does the same in a window.\n";
}

}  // namespace tessaril
