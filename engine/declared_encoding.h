#ifndef TESSARIL_ENGINE_DECLARED_ENCODING_H_
#define TESSARIL_ENGINE_DECLARED_ENCODING_H_

#include <string_view>

namespace tessaril {

/// Whether a page tells browsers that it is UTF-8, in the order in which they look: a byte order mark, the
/// first `meta` element with a charset, an XML declaration; the latter two within its first 1024 bytes.
bool DeclaresUtf8(std::string_view page);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_DECLARED_ENCODING_H_
