#include "engine/folder_walk.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "engine/ascii.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

// Sorted by the names in lower case, and where these are equal by the names themselves.
void SortByName(std::vector<std::string>& names) {
  std::vector<std::pair<std::string, std::string>> keyed;
  keyed.reserve(names.size());
  for (std::string& name : names) {
    std::string key = ToLower(name);
    keyed.emplace_back(std::move(key), std::move(name));
  }
  std::sort(keyed.begin(), keyed.end());
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = std::move(keyed[i].second);
}

}  // namespace

bool FolderWalk::WalkFolder(const std::string& NewPath) {
  try {
    run_.host.ShowActivity("Searching!");
    if (run_.options.MarkedOnly) {
      ProcessMarkedFile();
      return false;
    }
    run_.state.SearchActive = true;
    std::vector<FolderEntry> entries;
    if (!List(NewPath, entries)) return false;
    const std::vector<std::string> subfolders = Names(entries, EntryKind::kFolder);
    if (!subfolders.empty()) {
      if (WalkSubfolders(NewPath, subfolders)) return true;
      if (run_.state.StopRequested) return false;
      if (!List(NewPath, entries)) return false;
    }
    return ProcessFiles(NewPath, Names(entries, EntryKind::kFile));
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
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
  for (std::size_t count = names.size(); count >= 1 && run_.state.SearchActive; --count) {
    if (WalkFolder(JoinPath(folder, names[count - 1]))) return true;
    if (run_.state.StopRequested) return false;
  }
  return false;
}

bool FolderWalk::ProcessFiles(const std::string& folder, const std::vector<std::string>& names) {
  if (names.empty()) return false;
  run_.state.FolderPrefix = JoinPath(folder, "");
  (void)run_.files.EnterFolder(folder);  // when it fails, the files are still tried by their paths
  bool abandoned = false;
  for (const std::string& name : names) {
    run_.state.RunFile = run_.state.FolderPrefix + name;
    if (run_.host.HandleInput()) run_.state.Cancel();
    abandoned = !run_.state.SearchActive;
    if (abandoned || !ProcessFile()) break;
  }
  if (Status status = run_.files.FlushFolder(); !status.ok()) run_.host.TellFailure(folder, status.reason());
  return abandoned;
}

// False when the walk is to end behind this file.
bool FolderWalk::ProcessFile() {
  if (Status status = worker_(run_); !status.ok()) {
    run_.host.TellFailure(run_.state.RunFile, status.reason());
  }
  return !run_.state.StopRequested;
}

bool FolderWalk::List(const std::string& folder, std::vector<FolderEntry>& entries) {
  const Status status = run_.files.ListFolder(folder, entries);
  if (!status.ok()) run_.host.TellFailure(folder, status.reason());
  return status.ok();
}

std::vector<std::string> FolderWalk::Names(const std::vector<FolderEntry>& entries, EntryKind kind) const {
  std::vector<std::string> names;
  for (const FolderEntry& entry : entries) {
    if (entry.kind != kind || entry.name.starts_with('.')) continue;
    if (kind == EntryKind::kFile && !filter_.Lists(entry.name)) continue;
    names.push_back(entry.name);
  }
  SortByName(names);
  return names;
}

}  // namespace tessaril
