#ifndef TESSARIL_ENGINE_PAGE_VALUES_H_
#define TESSARIL_ENGINE_PAGE_VALUES_H_

#include <optional>
#include <string>
#include <string_view>

#include "engine/declared_encoding.h"
#include "engine/page_encoding.h"
#include "engine/page_links.h"

namespace tessaril {

/// The texts of the links and anchors of a page: spelling resolved, in UTF-8. What the bytes of the page mean
/// is found out when it first matters.
class PageValues {
 public:
  explicit PageValues(std::string_view page) : page_(page) {}
  PageValues(PageEncoding encoding, DeclaredEncoding declared) : encoding_(encoding), declared_(declared) {}

  /// Whether it is known what a value stands for: not beyond ASCII on a page in an encoding that is not known
  /// here.
  bool CanRead(std::string_view value);

  /// `memory` is used where the text is not what stands in the page.
  std::string_view Read(std::string_view value, Spelling spelling, std::string& memory);

  /// By what it says, and by what its bytes are when it says nothing.
  PageEncoding encoding();

  /// Finds out all about the page now, so that it need not be there any more.
  void LookAtPage();

  DeclaredEncoding declared();

 private:
  std::string_view page_;
  std::optional<PageEncoding> encoding_;
  std::optional<DeclaredEncoding> declared_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_VALUES_H_
