#include "engine/folder_walk.h"

#include <cerrno>
#include <new>
#include <stdexcept>
#include <utility>

#include "engine/folder_names.h"
#include "engine/paths.h"
#include "engine/site_run.h"

namespace tessaril {

namespace {

// By today's rules the links of style sheets are looked at as well and, where the filter is the usual one,
// those of pages that it does not list.
std::string FilterOf(const RunContext& run) {
  const std::string& filter = run.options.cboSearchSpec;
  if (!run.site) return filter;
  return filter + (filter == RunOptions().cboSearchSpec ? ";*.css;*.shtml;*.shtm;*.xhtml;*.xht" : ";*.css");
}

}  // namespace

FolderWalk::FolderWalk(RunContext& run, Worker worker) : run_(run), worker_(worker), filter_(FilterOf(run)) {
  if (run.options.site) ignored_ = SitePatterns(run.options.site->rules.ignore_files);
}

bool FolderWalk::WalkFolder(const std::string& NewPath) {
  try {
    run_.host.ShowActivity("Searching!");
    if (run_.options.MarkedOnly) {
      ProcessMarkedFile();
      return false;
    }
    run_.state.SearchActive = true;
    Listing listing;
    if (!List(NewPath, listing)) return false;
    const std::vector<std::string> subfolders = TakeFolderNames(listing.entries);
    if (!subfolders.empty()) {
      if (WalkSubfolders(NewPath, subfolders)) return true;
      if (StopRequested()) return false;
      if (!run_.files.FolderIsUnchanged(NewPath, listing.stamp) && !List(NewPath, listing)) return false;
    }
    return ProcessFiles(NewPath, TakeFileNames(listing.entries, filter_));
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  run_.host.TellFailure(run_.state.RunFile, Status::System(ENOMEM).reason());
  if (run_.options.MarkedOnly) return false;
  run_.host.Tell("Output text too long.\r\nAbandoning search...");
  return true;
}

void FolderWalk::ProcessMarkedFile() {
  const std::string& folder = run_.options.dirList;
  (void)run_.files.EnterFolder(folder);
  run_.state.RunFile = folder + kSeparator + run_.options.filList;
  ProcessFile();
}

bool FolderWalk::WalkSubfolders(const std::string& folder, const std::vector<std::string>& names) {
  for (std::size_t count = names.size(); count >= 1 && !StopRequested() && run_.state.SearchActive; --count) {
    if (WalkFolder(JoinPath(folder, names[count - 1]))) return true;
  }
  return false;
}

bool FolderWalk::ProcessFiles(const std::string& folder, const std::vector<std::string>& names) {
  if (names.empty()) return false;
  run_.state.FolderPrefix = JoinPath(folder, "");
  (void)run_.files.EnterFolder(folder);  // when it fails, the files are still tried by their paths
  bool abandoned = false;
  for (const std::string& name : names) {
    run_.state.RunFile = run_.targets.PresentPath(run_.state.FolderPrefix + name);
    if (IsIgnored(run_.state.RunFile)) continue;
    abandoned = !run_.HandleInput() || !run_.state.SearchActive;
    if (abandoned || !ProcessFile()) break;
  }
  if (Status status = run_.files.FlushFolder(); !status.ok()) run_.host.TellFailure(folder, status.reason());
  return abandoned;
}

// Whether the rules of the site say that a file is not checked.
bool FolderWalk::IsIgnored(const std::string& path) const {
  if (ignored_.empty()) return false;
  const std::string& root = run_.options.site->root;
  return ignored_.Match(std::string_view(path).substr(JoinPath(root, "").size()));
}

// False when the walk is to end behind this file.
bool FolderWalk::ProcessFile() {
  if (Status status = worker_(run_); !status.ok()) {
    run_.host.TellFailure(run_.state.RunFile, status.reason());
  }
  return !StopRequested();
}

// Whether the walk is to end, by the user's wish in a dialog or by Cancel.
bool FolderWalk::StopRequested() {
  if (run_.host.CancelRequested()) run_.state.Cancel();
  return run_.state.StopRequested;
}

bool FolderWalk::List(const std::string& folder, Listing& listing) {
  const Status status = run_.files.ListFolder(folder, listing.entries, listing.stamp);
  if (status.ok()) return true;
  run_.host.TellFailure(folder, status.reason());
  if (run_.site) run_.site->NoteTold(folder);
  return false;
}

}  // namespace tessaril
