#ifndef TESSARIL_UI_DIALOGS_SITE_FIELDS_H_
#define TESSARIL_UI_DIALOGS_SITE_FIELDS_H_

#include <QString>
#include <string>
#include <vector>

#include "engine/site_rules.h"
#include "engine/status.h"

// Between the lists of a site's rules and the fields in which they are edited, one entry a line.

namespace tessaril {

QString AsLines(const std::vector<std::string>& entries);

/// The lines of a field without the blanks around them; empty ones are left out. UTF-8.
std::vector<std::string> EntriesOf(const QString& lines);

/// Whether the names of index files are names. The reason, for the user, says which is none.
Status CheckIndexNames(const std::vector<std::string>& names);

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_SITE_FIELDS_H_
