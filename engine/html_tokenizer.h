#ifndef TESSARIL_ENGINE_HTML_TOKENIZER_H_
#define TESSARIL_ENGINE_HTML_TOKENIZER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/foreign_content.h"
#include "engine/html_attribute.h"

namespace tessaril {

/// Takes an HTML text apart as browsers do by the tokenization rules of the HTML standard, scripting switched
/// off (so that what stands in `noscript` is read). Nothing is copied: all that it gives are views of the
/// text, which must outlive it.
class HtmlTokenizer {
 public:
  /// How browsers take a text: pages as HTML; what is served as XML (XHTML, SVG) knows no raw text, and CDATA
  /// everywhere.
  enum class Syntax { kHtml, kXml };

  explicit HtmlTokenizer(std::string_view text, Syntax syntax = Syntax::kHtml)
      : text_(text), syntax_(syntax) {}

  enum class Token {
    kEnd,
    kText,      // character references count in it
    kRawText,   // they do not: the text of script, style and their like, and CDATA
    kStartTag,  // with name() and attributes()
    kEndTag,    // with name()
    kComment    // a comment, and what is taken for one: <!DOCTYPE>, <?...>, </...> without a name
  };

  /// The next token. All bytes of the text belong to one, but for those of a tag that has no end.
  Token Next();

  /// Where the token begins, and where it ends: the position behind its last byte.
  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }

  /// The name of a tag as it is written.
  std::string_view name() const { return name_; }

  /// The attributes of a start tag in their order; a name that is there already is left out, as browsers
  /// ignore it.
  const std::vector<HtmlAttribute>& attributes() const { return attributes_; }

  /// Whether the start tag ends in "/>".
  bool is_self_closing() const { return self_closing_; }

  /// Whether what follows stands in SVG or MathML.
  bool is_foreign() const { return syntax_ == Syntax::kXml || foreign_.IsInside(); }

  /// The position of a view that the tokenizer gave, in the text.
  std::size_t PositionOf(std::string_view part) const {
    return static_cast<std::size_t>(part.data() - text_.data());
  }

 private:
  // What the text behind a start tag is, up to the end tag of the same name.
  enum class Inside { kMarkup, kRaw, kScript, kReferences, kRest };

  Token Markup();
  Token Declaration();
  Token EndTagOrNot();
  Token TakeTag(Token token);
  bool TakeAttributes();
  bool TakeValue(HtmlAttribute& attribute);
  void DropRepeated();
  Token Until(std::size_t end, Token token);
  Token UntilBehind(std::string_view mark, Token token);
  Token InsideElement();
  bool IsEndTag(std::size_t pos) const;
  std::size_t EndOfRawText() const;
  std::size_t EndOfScript() const;
  void NoteStartTag();

  std::string_view text_;
  Syntax syntax_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::string_view name_;
  bool self_closing_ = false;
  std::vector<HtmlAttribute> attributes_;
  std::unordered_set<std::string> many_names_;  // of the attributes of a tag, in lower case, when it has many
  Inside inside_ = Inside::kMarkup;
  std::string_view inside_name_;
  ForeignContent foreign_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_HTML_TOKENIZER_H_
