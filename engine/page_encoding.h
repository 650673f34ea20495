#ifndef TESSARIL_ENGINE_PAGE_ENCODING_H_
#define TESSARIL_ENGINE_PAGE_ENCODING_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What the bytes of a page mean, and the way from the characters that a user enters to those bytes.

namespace tessaril {

enum class PageEncoding {
  kEightBit,  // a byte is a character of Windows-1252; its five unused codes stand for themselves
  kUtf8       // a character is its whole sequence, and no rule takes half of one
};

/// UTF-8 when all of `bytes` is valid UTF-8 with at least one sequence of several bytes, or when it is plain
/// ASCII and says charset=utf-8 within its first 1024 bytes. 8-bit otherwise.
PageEncoding DetectEncoding(std::string_view bytes);

/// The characters of `text`: sequences when all of it is valid UTF-8, else bytes.
std::size_t CountCharacters(std::string_view text);

/// The last `count` characters of `text`, or all of it when it has fewer.
std::string_view LastCharacters(std::string_view text, std::size_t count);

/// `bytes` of an 8-bit text as UTF-8.
std::string EightBitToUtf8(std::string_view bytes);

/// A text from outside the program (command line, settings): UTF-8 as it stands, anything else taken as
/// Windows-1252. The result is valid UTF-8.
std::string EnteredText(std::string_view bytes);

/// A search text, valid UTF-8, in the bytes of a page; nothing when the page's code lacks one of its
/// characters, so that the text cannot occur there.
std::optional<std::string> SoughtBytes(std::string_view text, PageEncoding encoding);

/// A replacement or an edit, valid UTF-8, in the bytes of a page. A character that the page's code lacks
/// becomes its decimal reference ("&#269;").
std::string WrittenBytes(std::string_view text, PageEncoding encoding);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_ENCODING_H_
