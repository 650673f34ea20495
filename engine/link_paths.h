#ifndef TESSARIL_ENGINE_LINK_PATHS_H_
#define TESSARIL_ENGINE_LINK_PATHS_H_

#include <string>
#include <string_view>

// From the text of a link to the path of a file.

namespace tessaril {

/// A link made absolute against the folder of its page. Each up-step ("../"), wherever it stands, drops what
/// the link has in front of it and takes one folder off the page's; the top folder stays. A link that begins
/// with a separator counts from the page's folder, too.
std::string ResolveLink(std::string_view link, std::string_view page_path);

/// The path under which the file of a link is registered; `link` is absolute or counts from `current_folder`,
/// where its leading up-steps begin. Doubled separators and "." steps are taken out.
std::string RegisteredPath(std::string_view link, std::string_view current_folder);

/// Makes a relative link absolute against `folder` by its text alone, where that leads to the same file: when
/// its up-steps all stand in front and stay at or below `root`, a folder above `folder`, and it has no other
/// special steps. False where it does not; `path` is then not to be used.
bool JoinByText(std::string_view link, std::string_view folder, std::string_view root, std::string& path);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_LINK_PATHS_H_
