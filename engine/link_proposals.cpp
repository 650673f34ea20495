#include "engine/link_proposals.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/near_names.h"
#include "engine/web_address.h"

namespace tessaril {
namespace {

// A path from a folder to a file, in the manner of the path that it replaces.
std::string PathTo(const std::vector<std::string>& names, bool from_root,
                   const std::vector<std::string>& folder) {
  std::size_t common = 0;
  std::string path = from_root ? "/" : "";
  if (!from_root) {
    while (common < folder.size() && common + 1 < names.size() && folder[common] == names[common]) ++common;
    for (std::size_t i = common; i < folder.size(); ++i) path += "../";
    // What looks like a scheme is none behind a "./".
    if (path.empty() && names[common].find(':') != std::string::npos) path = "./";
  }
  for (std::size_t i = common; i < names.size(); ++i) {
    path += EncodedName(names[i]);
    if (i + 1 < names.size()) path += '/';
  }
  return path;
}

// A name as it is written, percent-encoded in part, in the letter case of `name`, which else is the same.
std::string InCaseOf(std::string_view written, const std::string& name) {
  std::string right;
  for (const char c : name) {
    const bool is_encoded = written.starts_with('%') && PercentDecoded(written.substr(0, 3)).size() == 1;
    const std::string_view unit = written.substr(0, is_encoded ? 3 : 1);
    if (PercentDecoded(unit) == std::string(1, c)) {
      right += unit;
    } else {
      right += c;
    }
    written.remove_prefix(unit.size());
  }
  return right;
}

// The names of `path` from its end on, as far as it says them, in the letter case of `names`.
std::string InCaseOf(std::string_view path, const std::vector<std::string>& names) {
  std::string right;
  std::size_t next = names.size();
  while (!path.empty()) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    const std::string_view written = path.substr(begin);
    const std::string name = PercentDecoded(written);
    const bool is_step = name.empty() || name == ".";
    if (name == ".." || (!is_step && (next == 0 || ToLower(names[next - 1]) != ToLower(name)))) break;
    right = (is_step ? std::string(written) : InCaseOf(written, names[--next])) + right;
    path = path.substr(0, begin);
    if (begin > 0) {
      right = path.back() + right;
      path.remove_suffix(1);
    }
  }
  return std::string(path) + right;
}

// Whether a file may be what a link to `name` means: both are pages, or have the same extension.
bool IsOfSameKind(const SiteEntry& file, std::string_view name) {
  if (!file.is_file() || file.is_hidden()) return false;
  const auto extension = [](std::string_view of) {
    const std::size_t dot = of.rfind('.');
    return ToLower(of.substr(std::min(dot, of.size())));
  };
  const PageForm form = FormOfName(name);
  return extension(file.name) == extension(name) ||
         (form != PageForm::kNone && FormOfName(file.name) == form);
}

// A link with its spelling resolved, as a page or style sheet writes it, in quotes or without.
std::string Spelled(std::string_view text, Spelling spelling) {
  std::string spelled;
  for (const char c : text) {
    if (c == '&' && spelling != Spelling::kCss) {
      spelled += "&amp;";
    } else if (c == '\\' && spelling != Spelling::kAttribute) {
      spelled += "\\\\";
    } else if (std::string_view(" \"'()<>").find(c) != std::string_view::npos) {
      spelled += EncodedName(std::string_view(&c, 1));
    } else {
      spelled += c;
    }
  }
  return spelled;
}

}  // namespace

std::optional<LinkProposal> LinkProposals::For(const JudgedLink& judged, std::string_view value,
                                               std::string_view text, Spelling spelling,
                                               const LinkBase& base) {
  if (!judged.fault || judged.target == nullptr) return std::nullopt;
  std::string memory;
  const WebAddress address = SplitAddress(text, memory);
  std::optional<std::string> path(address.path);
  std::string_view rest = text.substr(std::min(text.find_first_of("?#"), text.size()));
  std::string with_anchor;
  if (judged.fault == FindingKind::kMissingAnchor) {
    const std::optional<std::string> anchor = NearAnchor(*judged.target->file, judged.fragment);
    if (!anchor) return std::nullopt;
    with_anchor = std::string(rest.substr(0, rest.find('#') + 1)) + EncodedName(*anchor);
    rest = with_anchor;
  } else {
    path = PathFor(judged, address.path, base);
  }
  if (!path) return std::nullopt;
  LinkProposal proposal;
  // What is written without references and escapes stays as it is but for the part that changes.
  const std::string whole = *path + std::string(rest);
  proposal.value = value == text ? whole : Spelled(whole, spelling);
  proposal.is_certain = judged.fault == FindingKind::kLetterCase && !judged.target->is_ambiguous;
  return proposal;
}

std::optional<std::string> LinkProposals::PathFor(const JudgedLink& judged, std::string_view path,
                                                  const LinkBase& base) {
  const SiteTarget& target = *judged.target;
  if (judged.fault == FindingKind::kMissingFile) return OtherFile(target, path, base);
  if (target.file == nullptr) return std::nullopt;
  std::vector<std::string> names = SiteTree::NamesOf(*target.file);
  if (judged.fault == FindingKind::kLeavesSite) return PathTo(names, false, base.names);
  if (judged.fault != FindingKind::kLetterCase) return std::nullopt;
  names.resize(std::min(names.size(), target.names.size()));  // a folder that stands for its index file
  std::string right = InCaseOf(path, names);
  // Folders that the path does not name are spelled by where the page lies.
  if (ResolveSitePath(right, base.names).names != names)
    right = PathTo(names, path.starts_with('/'), base.names);
  return right;
}

std::optional<std::string> LinkProposals::OtherFile(const SiteTarget& target, std::string_view path,
                                                    const LinkBase& base) {
  if (target.names.empty() || target.names_folder) return std::nullopt;
  const auto [known, is_new] = other_files_.try_emplace(JoinedNames(target.names), nullptr);
  if (is_new) {
    SiteTree& tree = index_.tree();
    const auto same = tree.FilesNamed(target.names.back());
    if (same.size() == 1) {
      known->second = same.front();
    } else if (same.empty()) {
      const std::span<const std::string> folder_names(target.names.data(), target.names.size() - 1);
      NearestName nearest(target.names.back(), work_);
      SiteEntry* const folder = tree.Find(folder_names);
      if (folder != nullptr) {
        for (const SiteEntry* const entry : tree.EntriesOf(*folder)) {
          if (nearest.IsSpent()) break;
          if (IsOfSameKind(*entry, target.names.back())) nearest.Offer(entry->name);
        }
      }
      if (const std::optional<std::string> name = nearest.Found()) known->second = tree.Child(*folder, *name);
    }
  }
  if (known->second == nullptr) return std::nullopt;
  return PathTo(SiteTree::NamesOf(*known->second), path.starts_with('/'), base.names);
}

std::optional<std::string> LinkProposals::NearAnchor(SiteEntry& file, const std::string& fragment) {
  const auto [known, is_new] =
      near_anchors_.try_emplace(index_.tree().SitePathOf(file) + "#" + fragment, std::nullopt);
  if (is_new) {
    const AnchorSet& anchors = index_.PageOf(file).anchors;
    NearestName nearest(fragment, work_);
    for (std::size_t i = 0; i < anchors.size() && !nearest.IsSpent(); ++i) nearest.Offer(anchors[i]);
    known->second = nearest.Found();
  }
  return known->second;
}

}  // namespace tessaril
