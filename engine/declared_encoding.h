#ifndef TESSARIL_ENGINE_DECLARED_ENCODING_H_
#define TESSARIL_ENGINE_DECLARED_ENCODING_H_

#include <string_view>

namespace tessaril {

/// What a page tells browsers of its encoding.
enum class DeclaredEncoding {
  kNone,      // nothing
  kUtf8,      // UTF-8
  kEightBit,  // Windows-1252, or what browsers take for it
  kOther      // one whose characters are not known here, such as EUC-KR
};

/// Found in the order in which browsers look: a byte order mark, the first `meta` element with a charset, an
/// XML declaration; the latter two within the first 1024 bytes.
DeclaredEncoding DeclaredEncodingOf(std::string_view page);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_DECLARED_ENCODING_H_
