#ifndef TESSARIL_ENGINE_NAMED_REFERENCES_H_
#define TESSARIL_ENGINE_NAMED_REFERENCES_H_

#include <string_view>

namespace tessaril {

/// All names of characters that browsers know, as one text of entries in the byte order of their names. An
/// entry is the name (letters and digits of ASCII), a mark, its characters in UTF-8 (one or two, never a
/// blank) and a blank. The mark is "," for a name that is also known without a ";" behind it, else ";".
std::string_view NamedReferences();

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_NAMED_REFERENCES_H_
