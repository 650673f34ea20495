#ifndef TESSARIL_ENGINE_WEB_ADDRESS_H_
#define TESSARIL_ENGINE_WEB_ADDRESS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Links taken apart by the rules of the URL standard, as far as files of a site are concerned.

namespace tessaril {

/// A link, split. The views are of the link.
struct WebAddress {
  enum class Kind {
    kSite,      // leads to a file of the site
    kFile,      // has the scheme "file:"
    kElsewhere  // has another scheme or names a host
  };
  Kind kind = Kind::kSite;
  std::string_view path;      // percent-encoded; may be empty
  std::string_view fragment;  // percent-encoded, without its "#"
  bool is_simple = false;  // the path holds nothing that has to be decoded or resolved but "../" at its start
};

/// Splits a link whose character references are resolved. Blanks at its ends do not count; line ends and tabs
/// inside it do not either: where there are some, `memory` takes the link without them.
WebAddress SplitAddress(std::string_view link, std::string& memory);

/// The same for a link in which every byte stands for itself and none is dropped; nothing for one with
/// blanks,
/// "&", backslashes, control codes or bytes above 127. The common case, in one pass.
std::optional<WebAddress> SplitPlainAddress(std::string_view link);

/// The bytes that "%20" and its like stand for; a "%" without two digits stands for itself.
std::string PercentDecoded(std::string_view text);

/// A path of the site, taken apart.
struct SitePath {
  std::vector<std::string> names;  // from the site's root on, decoded
  bool leaves_site = false;        // it climbed above the root, where it then stayed
  bool names_folder = false;       // it ends in "/", "." or ".."
};

/// `path`, percent-encoded, seen from a page in the folder `folder` of the site: "/x" begins at the root, "."
/// and ".." are resolved. A backslash is a separator, as browsers take it. An empty path is the folder.
SitePath ResolveSitePath(std::string_view path, const std::vector<std::string>& folder);

/// A file's name or an anchor as a link of a page or style sheet writes it: all that could mean something
/// else there, and what is beyond ASCII, is percent-encoded.
std::string EncodedName(std::string_view name);

/// Appends a byte as "%2C".
void AppendPercentEncoded(char byte, std::string& out);

/// Names as a path from the site's root on, without "/" at its start.
std::string JoinedNames(std::span<const std::string> names);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_WEB_ADDRESS_H_
