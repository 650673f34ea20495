#ifndef TESSARIL_ENGINE_COMMAND_LINE_H_
#define TESSARIL_ENGINE_COMMAND_LINE_H_

#include <string>
#include <string_view>
#include <vector>

#include "engine/files.h"

// The desktop program is started with the path of one file, or of a folder.

namespace tessaril {

/// The arguments as one text: joined by one blank, without blanks at both ends. A single one that names a
/// file as it stands is left so. Empty when there is nothing but blanks.
std::string CommandLineOf(const std::vector<std::string>& arguments, Files& files);

/// What a command line names. A path that is relative counts from the folder that the program was started in.
struct NamedPath {
  enum class Kind {
    kNothing,  // that could be opened
    kFolder,
    kFile
  } kind;
  std::string path;  // absolute; a folder's without separator at its end. Empty for nothing
};
NamedPath FindNamed(const std::string& command_line, Files& files);

/// What shows a file, by its extension.
enum class FileClass {
  kPage,     // both viewers
  kEditor,   // a text that is no page
  kBrowser,  // a picture or PDF
  kNeither
};

/// The extension is what follows the last "."; of a name without any it is the whole name. A to Z are
/// compared in lower case.
FileClass ClassOf(std::string_view name);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_COMMAND_LINE_H_
