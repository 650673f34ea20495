#ifndef TESSARIL_SITE_SITE_FILE_H_
#define TESSARIL_SITE_SITE_FILE_H_

#include <optional>
#include <string>
#include <string_view>

#include "engine/files.h"
#include "engine/site_rules.h"
#include "engine/status.h"

// The site file: what an author says of a site, in its root folder, as TOML (UTF-8). Paths are absolute.

namespace tessaril {

/// The rules that the text of a site file states; a key that it leaves out has its default. On failure the
/// reason begins "line 3, column 5: " (both count from 1, columns count characters) and says what is
/// expected, and `rules` are as they were: nothing holds of a file that is not understood as a whole.
Status ReadSiteRules(std::string_view text, SiteRules& rules);

/// The text of a new site file: every key with the value in `rules` and a comment that explains it.
std::string NewSiteText(const SiteRules& rules);

/// `text`, a valid site file, changed to state `rules`: values that differ are put in the place of the old
/// ones, keys that are missing and not to have their default are added at the end; all else, comments above
/// all, stays byte for byte. A text that is not valid comes back as it is.
std::string ChangedSiteText(std::string_view text, const SiteRules& rules);

/// The path of the site file that holds for `folder`: in it or in the nearest folder above that has one, by
/// the path as it is written, symbolic links not resolved. Empty when there is none.
std::string FindSiteFile(const std::string& folder);

/// The site that `folder` belongs to; none without a site file. On failure the reason names the file, and
/// line and column where it is not valid ("/www/tessaril.toml: line 3, column 5: ..."), and there is no site.
Status LoadSite(Files& files, const std::string& folder, std::optional<Site>& site);

/// Makes a new site file in the folder `root`. Fails when there is one ("File exists"). The file is there as
/// a whole or not at all.
Status CreateSiteFile(const std::string& root, const SiteRules& rules);

/// Makes the site file of `root` state `rules`, creating it when there is none. Fails when the present one is
/// not valid, or when no file can state the rules (an empty text in a list, or one that is not UTF-8), and
/// leaves it as it is then. A file that states them already is not written.
Status SaveSiteRules(Files& files, const std::string& root, const SiteRules& rules);

/// Removes the site file of `root`. Fails when there is none.
Status RemoveSiteFile(const std::string& root);

}  // namespace tessaril

#endif  // TESSARIL_SITE_SITE_FILE_H_
