#ifndef TESSARIL_ENGINE_FOLDER_WALK_H_
#define TESSARIL_ENGINE_FOLDER_WALK_H_

#include <string>
#include <vector>

#include "engine/file_filter.h"
#include "engine/files.h"
#include "engine/run.h"
#include "engine/site_patterns.h"

namespace tessaril {

/// Visits the files of a run: the marked one, or all that the filter lists in a folder and below, subfolders
/// first and of these the last name first, then the folder's own files from the first name on. Names are
/// sorted without regard to the case of A to Z, ties by byte; names that begin with a dot are passed over.
/// By today's rules, style sheets are visited as well when links are checked and, by the usual filter, pages
/// of all kinds; files that the site's rules ignore never are. Before each file the user's input is let
/// through, which is where Cancel takes effect.
class FolderWalk {
 public:
  FolderWalk(RunContext& run, Worker worker);

  /// Walks the folder `NewPath`; true when the walk was abandoned, on Cancel or because memory for the report
  /// ran out.
  bool WalkFolder(const std::string& NewPath);

 private:
  void ProcessMarkedFile();
  bool WalkSubfolders(const std::string& folder, const std::vector<std::string>& names);
  bool ProcessFiles(const std::string& folder, const std::vector<std::string>& names);
  bool IsIgnored(const std::string& path) const;
  bool ProcessFile();
  bool StopRequested();
  struct Listing {
    std::vector<FolderEntry> entries;
    FileStamp stamp;
  };
  bool List(const std::string& folder, Listing& listing);

  RunContext& run_;
  Worker worker_;
  FileFilter filter_;
  SitePatterns ignored_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FOLDER_WALK_H_
