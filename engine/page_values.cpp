#include "engine/page_values.h"

#include "engine/ascii.h"

namespace tessaril {

PageEncoding PageValues::encoding() {
  if (!encoding_) {
    const bool says_utf8 = declared() == DeclaredEncoding::kUtf8;
    encoding_ = says_utf8 ? PageEncoding::kUtf8 : DetectEncoding(page_);
  }
  return *encoding_;
}

DeclaredEncoding PageValues::declared() {
  if (!declared_) declared_ = DeclaredEncodingOf(page_);
  return *declared_;
}

void PageValues::LookAtPage() {
  (void)encoding();
  (void)declared();
}

bool PageValues::CanRead(std::string_view value) {
  return IsAscii(value) || declared() != DeclaredEncoding::kOther;
}

std::string_view PageValues::Read(std::string_view value, Spelling spelling, std::string& memory) {
  if (IsAscii(value) || encoding() == PageEncoding::kUtf8) return ResolveSpelling(value, spelling, memory);
  const std::string characters = EightBitToUtf8(value);
  std::string resolved;
  memory = ResolveSpelling(characters, spelling, resolved);
  return memory;
}

}  // namespace tessaril
