#ifndef TESSARIL_ENGINE_PATHS_H_
#define TESSARIL_ENGINE_PATHS_H_

#include <string>
#include <string_view>

namespace tessaril {

inline constexpr char kSeparator = '/';

/// The path of an entry of a folder; in the root the separator is not doubled.
std::string JoinPath(std::string_view folder, std::string_view name);

/// The folder part of an absolute path, without its last separator; the root for an entry of the root.
std::string_view FolderOf(std::string_view path);

/// The part behind the last separator.
std::string_view NameOf(std::string_view path);

/// `path` made absolute against `folder` by its text alone: "." and ".." steps and doubled separators are
/// taken out, a separator at the end is dropped, symbolic links are kept. ".." in the root stays there.
std::string AbsolutePath(std::string_view folder, std::string_view path);

/// A path as dialogs and messages show it: whole when shorter than 50 characters, else "...  " and its last
/// 47 characters.
std::string ShortenedPath(std::string_view path);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PATHS_H_
