#ifndef TESSARIL_FORMATS_MACHINE_TEXT_H_
#define TESSARIL_FORMATS_MACHINE_TEXT_H_

#include <string>
#include <string_view>

#include "engine/finding_kinds.h"
#include "engine/page_encoding.h"

// Bytes of pages and paths as the texts that the formats are made of. All results are valid UTF-8; a byte
// that does not belong to a character of UTF-8 is taken for one of Windows-1252.

namespace tessaril {

/// A piece of a page of that encoding.
std::string PageUtf8(std::string_view bytes, PageEncoding encoding);

/// A path, or a message that may name one.
std::string PathUtf8(std::string_view bytes);

/// `path` from `folder` on when it lies below, else as it is. Both are absolute, bytes; an
/// empty `folder` holds nothing.
std::string_view PathFrom(std::string_view folder, std::string_view path);

/// What a person reads of a finding: the message and, unless its end names it, what was found.
std::string Sentence(const FindingRecord& finding);

/// The same and, on a line of its own, what is proposed.
std::string SentenceAndProposal(const FindingRecord& finding);

/// The place behind the last byte of what was found. The finding must have a place.
PagePlace EndOf(const FindingRecord& finding);

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_MACHINE_TEXT_H_
