#include "cli/person.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "cli/console_text.h"
#include "cli/external_editor.h"
#include "cli/interrupt.h"

namespace tessaril {
namespace {

constexpr char kNoKey = '\0';  // no more input, or the user pressed Ctrl-C

bool WantsColours() {
  const char* const no_colour = std::getenv("NO_COLOR");
  const char* const terminal = std::getenv("TERM");
  const bool dumb = terminal == nullptr || std::string_view(terminal) == "dumb";
  return isatty(STDERR_FILENO) != 0 && !dumb && (no_colour == nullptr || *no_colour == '\0');
}

// The terminal gives each key at once and does not show it, as long as this lives.
class SingleKeys {
 public:
  SingleKeys() : terminal_(tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!terminal_) return;
    termios single = before_;
    single.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    single.c_cc[VMIN] = 1;
    single.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &single);
  }
  ~SingleKeys() {
    if (terminal_) tcsetattr(STDIN_FILENO, TCSADRAIN, &before_);
  }
  SingleKeys(const SingleKeys&) = delete;
  SingleKeys& operator=(const SingleKeys&) = delete;

 private:
  termios before_{};
  bool terminal_;
};

bool WaitForKey(int milliseconds) {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return poll(&input, 1, milliseconds) > 0;
}

// The rest of what a function key, an arrow or the terminal itself sends behind ESC: not an answer to
// anything. Parameters and a last byte follow "[" and "O" (the Linux console puts a second "[" in front), a
// text up to BEL or ESC follows "]", "P", "X", "^" and "_", and one byte all else. Another ESC begins anew.
void SkipSequence() {
  constexpr int kMilliseconds = 50;  // the bytes of a sequence come together
  char byte = 0;
  const auto next = [&byte] { return WaitForKey(kMilliseconds) && read(STDIN_FILENO, &byte, 1) == 1; };
  const auto skip_while = [&](auto&& goes_on) {
    while (next() && goes_on(byte)) {
    }
  };
  do {
    if (!next()) return;
  } while (byte == '\x1b');
  if (byte == 'O' || byte == '[') {
    skip_while([](char c) { return c >= ' ' && c < '@'; });
    if (byte == '[') next();
  } else if (std::string_view("]PX^_").find(byte) != std::string_view::npos) {
    skip_while([](char c) { return c != '\a' && c != '\x1b'; });
    if (byte == '\x1b') next();
  }
}

// The next key, in lower case; line ends of an input that is no terminal do not count.
char ReadKey() {
  const SingleKeys single_keys;
  for (;;) {
    if (Interrupted()) return kNoKey;
    // Waits with a time-out, so that a Ctrl-C just before the waiting is not missed.
    constexpr int kMilliseconds = 200;
    if (!WaitForKey(kMilliseconds)) continue;
    char key = 0;
    const ssize_t got = read(STDIN_FILENO, &key, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return kNoKey;
    if (key == '\x1b') SkipSequence();
    if (key == '\n' || key == '\r' || key == '\x1b') continue;
    return key >= 'A' && key <= 'Z' ? static_cast<char>(key - 'A' + 'a') : key;
  }
}

// The part of the field that is new. A proposal's own selection is as long as the replacement and the break
// that was found together, and may reach too far for the eye.
Selection NewPart(const Proposal& proposal, const std::string& field) {
  const Selection found = proposal.SearchSelection;
  const std::size_t found_end = std::min(found.start + found.length, proposal.SearchText.size());
  const std::string tail = proposal.SearchText.substr(found_end);
  const bool same_tail =
      found.length > 0 && field.size() >= found.start + tail.size() && field.ends_with(tail);
  if (!same_tail) return proposal.ReplaceSelection;
  return {found.start, field.size() - found.start - tail.size()};
}

// Asks until one of `keys` is pressed.
char Choose(const std::string& choices, std::string_view keys) {
  std::cerr << choices << " " << std::flush;
  for (;;) {
    const char key = ReadKey();
    if (key != kNoKey && keys.find(key) == std::string_view::npos) continue;
    if (key != kNoKey) std::cerr << key;
    std::cerr << "\n" << std::flush;
    return key;
  }
}

}  // namespace

Person::Person(const FunctionRow& function) : function_(function), colours_(WantsColours()) {}

ProposalAnswer Person::Propose(const Proposal& proposal) {
  const bool editable = proposal.ReplaceText.has_value();
  std::string field = proposal.ReplaceText.value_or("");
  for (;;) {
    const bool edited = editable && field != *proposal.ReplaceText;
    Show(proposal, field, edited);
    // An edited link is written even when it is kept.
    const bool writes = edited && function_.function == Function::kLinks;
    const std::string keep = writes ? "[k]eep (writes it, too)" : "[k]eep";
    const char key = editable ? Choose("[r]eplace  " + keep + "  [e]dit  [q]uit:", "rkeq")
                              : Choose("[n]ext  [q]uit:", "nkq");
    switch (key) {
      case 'r':
        return {kReplace, field};
      case 'e':
        if (Status status = EditPiece(field, proposal.encoding); !status.ok()) {
          std::cerr << "Not edited: " << status.reason() << "\n";
        }
        break;
      case 'k':
      case 'n':
        return {kKeep, field};
      default:
        return {kStop, field};
    }
  }
}

bool Person::Ask(const Question& question) {
  std::cerr << Lines(question.text) << "\n";
  return Choose("[o]k  [c]ancel:", "oc") == 'o';
}

void Person::Show(const Proposal& proposal, const std::string& field, bool edited) const {
  std::cerr << "\n" << Bold("In file: " + OneLine(proposal.FileName)) << "\n";
  std::cerr << Bold(std::string(function_.Label1)) << "\n"
            << Marked(proposal.SearchText, proposal.SearchSelection, proposal.encoding, "\x1b[31;7m") << "\n";
  if (!proposal.Label4.empty()) std::cerr << OneLine(proposal.Label4) << "\n";
  if (!proposal.ReplaceText) return;
  const Selection selection = edited ? Selection{} : NewPart(proposal, field);
  std::cerr << Bold(std::string(function_.Label2) + (edited ? " [edited]" : "")) << "\n"
            << Marked(field, selection, proposal.encoding, "\x1b[32;7m") << "\n";
}

std::string Person::Bold(const std::string& text) const {
  return colours_ ? "\x1b[1m" + text + "\x1b[0m" : text;
}

std::string Person::Marked(const std::string& text, Selection selection, PageEncoding encoding,
                           const char* colour) const {
  const std::size_t start = std::min(selection.start, text.size());
  const std::size_t length = std::min(selection.length, text.size() - start);
  const auto piece = [&](std::size_t begin, std::size_t count) {
    return PageLines(std::string_view(text).substr(begin, count), encoding);
  };
  if (length == 0) return piece(0, text.size());
  return piece(0, start) + (colours_ ? colour : ">>>") + piece(start, length) +
         (colours_ ? "\x1b[0m" : "<<<") + piece(start + length, text.size() - start - length);
}

}  // namespace tessaril
