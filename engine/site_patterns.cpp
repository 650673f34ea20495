#include "engine/site_patterns.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

// Goes through pattern and path once for each "*" or "**" at most: a mismatch gives the last "*" one
// character more, where it must not take any, the last "**". "**/" also stands for nothing.
class Matching {
 public:
  Matching(std::string_view pattern, std::string_view path) : pattern_(pattern), path_(path) {}

  bool Run() {
    while (pos_ < path_.size() || at_ < pattern_.size()) {
      if (!Step() && !GiveStarMore() && !GiveStarsMore()) return false;
    }
    return true;
  }

 private:
  // False at a mismatch.
  bool Step() {
    if (pattern_.substr(at_, 2) == "**") {
      const bool begins_name = at_ == 0 || pattern_[at_ - 1] == '/';
      at_ += begins_name && pattern_.substr(at_, 3) == "**/" ? 3 : 2;
      stars_ = at_;
      stars_pos_ = pos_;
      star_ = first_star_pos_ = kNone;
      return true;
    }
    if (at_ < pattern_.size() && pattern_[at_] == '*') {
      star_ = ++at_;
      star_pos_ = pos_;
      first_star_pos_ = std::min(first_star_pos_, pos_);
      return true;
    }
    if (pos_ >= path_.size() || at_ >= pattern_.size()) return false;
    const bool any = pattern_[at_] == '?' && path_[pos_] != '/';
    if (!any && pattern_[at_] != path_[pos_]) return false;
    pos_ += any ? CharacterAt(pos_) : 1;
    ++at_;
    return true;
  }

  // Its length; 1 for a byte that begins none.
  std::size_t CharacterAt(std::size_t pos) const {
    return std::max<std::size_t>(SequenceLength(path_.substr(pos)), 1);
  }

  bool GiveStarMore() {
    if (star_ == kNone || star_pos_ >= path_.size() || path_[star_pos_] == '/') return false;
    star_pos_ += CharacterAt(star_pos_);
    pos_ = star_pos_;
    at_ = star_;
    return true;
  }

  bool GiveStarsMore() {
    if (stars_ == kNone || stars_pos_ >= path_.size()) return false;
    std::size_t next = stars_pos_ + CharacterAt(stars_pos_);
    if (first_star_pos_ != kNone) {
      // What follows the first "*" fits nowhere in the name in which that began.
      const std::size_t slash = path_.find('/', first_star_pos_);
      if (slash == kNone) return false;
      if (path_.substr(0, first_star_pos_).find('/', stars_pos_) == kNone) next = slash + 1;
    }
    // Behind "**/" a name begins.
    if (pattern_[stars_ - 1] == '/' && path_[next - 1] != '/') {
      const std::size_t slash = path_.find('/', next);
      if (slash == kNone) return false;
      next = slash + 1;
    }
    stars_pos_ = pos_ = next;
    at_ = stars_;
    star_ = first_star_pos_ = kNone;
    return true;
  }

  std::string_view pattern_;
  std::string_view path_;
  std::size_t at_ = 0;
  std::size_t pos_ = 0;
  std::size_t star_ = kNone;  // behind the last "*" of a name, and what it has taken up to
  std::size_t star_pos_ = 0;
  std::size_t stars_ = kNone;  // the same for the last "**",
  std::size_t stars_pos_ = 0;
  std::size_t first_star_pos_ = kNone;  // and where the first "*" behind it began
};

bool Matches(std::string_view pattern, std::string_view path) {
  return Matching(pattern, path).Run();
}

}  // namespace

SitePatterns::SitePatterns(const std::vector<std::string>& patterns) {
  for (std::string text : patterns) {
    const bool names_only = text.find('/') == std::string::npos && text.find("**") == std::string::npos;
    if (text.starts_with('/')) text.erase(0, 1);
    if (text.ends_with('/')) text += "**";
    if (!text.empty()) patterns_.push_back({std::move(text), names_only});
  }
}

bool SitePatterns::Match(std::string_view path) const {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  return std::any_of(patterns_.begin(), patterns_.end(), [&](const Pattern& pattern) {
    return Matches(pattern.text, pattern.names_only ? name : path);
  });
}

bool SitePatterns::MatchText(std::string_view text) const {
  if (text.starts_with('/')) text.remove_prefix(1);
  return std::any_of(patterns_.begin(), patterns_.end(),
                     [text](const Pattern& pattern) { return Matches(pattern.text, text); });
}

}  // namespace tessaril
