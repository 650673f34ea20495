#include "cli/completion.h"

#include <string_view>

#include "cli/arguments.h"
#include "engine/functions.h"

namespace tessaril {
namespace {

constexpr std::string_view kScript =
    R"(# Completes the command lines of tsl. Made from the tables of the program.

# Names of files are left to readline, which takes them as they stand: compgen would expand what is typed, and run it.
_tsl() {
  local IFS=$' \t\n' word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= words= i
  COMPREPLY=()
  if [[ $before == = ]]; then before=${COMP_WORDS[COMP_CWORD-2]}; fi # bash takes --option=value apart
  if [[ $word == = ]]; then word=; fi
  for ((i = 1; i < COMP_CWORD; i++)); do
    if [[ ${COMP_WORDS[i]} == -- ]]; then return; fi
    if [[ -z $command ]]; then
      case ${COMP_WORDS[i]} in @COMMANDS@) command=${COMP_WORDS[i]} ;; esac
    fi
  done
  case $before in
    @FOLDERS@) compopt +o default -o dirnames; return ;;
    @FILES@) return ;;
@CHOICES@    @OTHERS@) compopt +o default; return ;;
  esac
  case $command in
    '') words='--help --version @WORDS@' ;;
)";

constexpr std::string_view kEnd = R"(  esac
  if [[ -n $command && $command != - && $word != -* ]]; then return; fi
  compopt +o default
  for i in $words; do
    if [[ $i == "$word"* ]]; then COMPREPLY+=("$i"); fi
  done
}
complete -o default -F _tsl tsl
)";

void Replace(std::string& script, std::string_view word, const std::string& by) {
  script.replace(script.find(word), word.size(), by);
}

void Append(std::string& list, std::string_view separator, std::string_view word) {
  list += (list.empty() ? "" : std::string(separator)) + std::string(word);
}

// The options that take one of a few values: these are what can be typed.
std::string CasesOfChoices() {
  std::string cases;
  for (const OptionRow& option : AllOptions()) {
    if (option.choices.empty()) continue;
    std::string words;
    for (const std::string_view choice : option.choices) Append(words, " ", choice);
    cases += "    " + std::string(option.name) + ") command=- words='" + words + "' ;;\n";
  }
  return cases;
}

// The options that take a value of this kind, as a pattern; any other kind when it is empty.
std::string OptionsWith(std::string_view value) {
  std::string names;
  for (const OptionRow& option : AllOptions()) {
    const bool is_other =
        option.value != "DIR" && option.value != "FILE" && !option.value.empty() && option.choices.empty();
    if (value.empty() ? is_other : option.value == value) Append(names, "|", option.name);
  }
  return names;
}

}  // namespace

std::string BashCompletion() {
  std::string script(kScript);
  std::string commands;
  std::string words;
  std::string cases;
  for (const FunctionRow& row : AllFunctions()) {
    if (row.command.empty()) continue;
    Append(commands, "|", row.command);
    Append(words, " ", row.command);
    std::string options;
    for (const OptionRow& option : AllOptions()) {
      if (Applies(option, row.function)) Append(options, " ", option.name);
    }
    cases += "    " + std::string(row.command) + ") words='" + options + " --help' ;;\n";
  }
  Replace(script, "@COMMANDS@", commands);
  Replace(script, "@FOLDERS@", OptionsWith("DIR"));
  Replace(script, "@FILES@", OptionsWith("FILE"));
  Replace(script, "@CHOICES@", CasesOfChoices());
  Replace(script, "@OTHERS@", OptionsWith(""));
  Replace(script, "@WORDS@", words);
  return script + cases + std::string(kEnd);
}

}  // namespace tessaril
