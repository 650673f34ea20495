#include "tests/support/plain_tokenizer.h"

#include <algorithm>
#include <set>

#include "tests/support/plain_text.h"

namespace tessaril {
namespace {

using Token = HtmlTokenizer::Token;

constexpr int kEof = -1;
bool IsBlank(int c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
bool Lists(const std::string& names, const std::string& name) {
  return names.find(" " + name + " ") != std::string::npos;
}
bool IsAlpha(int c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The stack of open elements, as far as it decides how the text behind a tag is read.
class PlainTree {
 public:
  enum Space { kHtml, kSvg, kMath };

  bool KnowsCdata() const { return Current().space != kHtml; }
  // Whether the start tag made an HTML element.
  bool StartTag(const std::string& name, const PlainToken& tag) {
    if (IsHtmlStart(name)) return HtmlStart(name, tag);
    static const std::string leaving =
        " b big blockquote body br center code dd div dl dt em embed h1 h2 h3 h4 h5 h6 head hr i img li menu "
        "meta listing nobr ol p pre s ruby small span strong sub strike sup table tt u ul var ";
    if (Lists(leaving, name) || (name == "font" && HasAny(tag, " color face size "))) {
      LeaveForeign();
      return HtmlStart(name, tag);
    }
    if (!tag.self_closing) Push(name, Current().space, tag);
    return false;
  }
  void EndTag(const std::string& name) {
    if (Current().space == kHtml) return HtmlEnd(name);
    if (name == "br" || name == "p") {
      LeaveForeign();
      return HtmlEnd(name);
    }
    for (std::size_t i = open_.size() - 1; open_[i].space != kHtml; --i) {
      if (open_[i].name == name) return open_.resize(i);
    }
    HtmlEnd(name);
  }

 private:
  struct Element {
    std::string name;
    Space space;
    bool holds_html = false;  // an HTML integration point
    bool holds_text = false;  // a MathML text integration point
  };
  std::vector<Element> open_ = {{"html", kHtml}, {"body", kHtml}};

  const Element& Current() const { return open_.back(); }
  static bool HasAny(const PlainToken& tag, const std::string& names) {
    for (const std::string& text : tag.attributes) {
      if (Lists(names, Lower(text.substr(0, text.find('=', 1))))) return true;
    }
    return false;
  }
  static bool SaysHtml(const PlainToken& tag) {
    for (const std::string& text : tag.attributes) {
      std::string value = Lower(text);
      if (!value.starts_with("encoding=")) continue;
      value.erase(0, 9);
      if (value[0] == '"' || value[0] == '\'') value = value.substr(1, value.size() - 2);
      return value == "text/html" || value == "application/xhtml+xml";
    }
    return false;
  }
  static bool IsTextName(const std::string& name) { return Lists(" mi mo mn ms mtext ", name); }
  static bool IsHtmlName(const std::string& name) { return Lists(" foreignobject desc title ", name); }

  void Push(const std::string& name, Space space, const PlainToken& tag) {
    open_.push_back(
        {name, space,
         (space == kSvg && IsHtmlName(name)) || (space == kMath && name == "annotation-xml" && SaysHtml(tag)),
         space == kMath && IsTextName(name)});
  }
  bool IsHtmlStart(const std::string& name) const {
    const Element& node = Current();
    return node.space == kHtml || node.holds_html ||
           (node.holds_text && name != "mglyph" && name != "malignmark") ||
           (node.space == kMath && node.name == "annotation-xml" && name == "svg");
  }
  void LeaveForeign() {
    while (Current().space != kHtml && !Current().holds_html && !Current().holds_text) open_.pop_back();
  }
  // The index of an open HTML element within its scope; 0: none.
  std::size_t InScope(const std::string& name, bool button_scope) const {
    for (std::size_t i = open_.size() - 1; i > 0; --i) {
      const Element& node = open_[i];
      if (node.space == kHtml && node.name == name) return i;
      if (node.space == kSvg
              ? IsHtmlName(node.name)
              : node.space == kMath && (IsTextName(node.name) || node.name == "annotation-xml")) {
        return 0;
      }
      if (node.space == kHtml &&
          (Lists(" object marquee applet ", node.name) || (button_scope && node.name == "button"))) {
        return 0;
      }
    }
    return 0;
  }
  void PopTo(std::size_t index) {
    if (index > 0) open_.resize(index);
  }
  static bool IsBlock(const std::string& name) {
    return Lists(" div section ul xmp plaintext p blockquote ", name);
  }
  bool HtmlStart(const std::string& name, const PlainToken& tag) {
    if (IsBlock(name)) PopTo(InScope("p", true));
    if (name == "svg" || name == "math") {
      if (!tag.self_closing) Push(name, name == "svg" ? kSvg : kMath, tag);
      return false;
    }
    static const std::string empty = " area base br col embed hr img link meta input source track wbr param ";
    if (!Lists(empty, name) && name != "body" && name != "html" && name != "head") Push(name, kHtml, tag);
    return true;
  }
  // What is open around SVG and MathML is not known; an end tag in them is taken for the one of an element
  // around where its name is one of HTML.
  bool IsForgotten(std::size_t index) const {
    const auto around_end =
        std::find_if(open_.begin(), open_.end(), [](const Element& node) { return node.space != kHtml; });
    return around_end != open_.end() && index < static_cast<std::size_t>(around_end - open_.begin()) &&
           Lists(" foreignobject desc mi mtext g annotation-xml mglyph ", open_[index].name);
  }
  void HtmlEnd(const std::string& name) {
    if (name == "br" || name == "body" || name == "html" || name == "head") return;
    if (IsBlock(name) && name != "xmp" && name != "plaintext") return PopTo(InScope(name, name == "p"));
    static const std::string special =
        " script style title textarea iframe xmp noembed noframes plaintext noscript object ";
    for (std::size_t i = open_.size() - 1; i > 1; --i) {
      const Element& node = open_[i];
      if (node.space == kHtml && node.name == name) {
        if (!IsForgotten(i)) open_.resize(i);
        return;
      }
      const bool is_special = node.space == kHtml  ? IsBlock(node.name) || Lists(special, node.name)
                              : node.space == kSvg ? IsHtmlName(node.name)
                                                   : IsTextName(node.name) || node.name == "annotation-xml";
      if (is_special) return;
    }
  }
};

// The states of the standard under their names, those of character references left out, which never take what
// ends a tag, a value or a text, and those of DOCTYPE made one: each of them ends at the first ">".
class PlainTokenizer {
 public:
  PlainTokenizer(const std::string& text, bool is_xml) : text_(text), is_xml_(is_xml) {}

  std::vector<PlainToken> Run() {
    while (!done_) {
      const int c = pos_ < text_.size() ? static_cast<unsigned char>(text_[pos_]) : kEof;
      ++pos_;
      if (state_ <= kScriptDoubleEnd) {
        Text(c);
      } else if (state_ <= kSelfClosing) {
        Tag(c);
      } else {
        Other(c);
      }
    }
    return tokens_;
  }

 private:
  // clang-format off
  enum State {
    kData, kRcdata, kRawtext, kScript, kPlaintext, kCdata, kCdataBracket, kCdataEnd, kRawLess, kRawEndOpen,
    kRawEndName, kScriptEscapeStart, kScriptEscapeStartDash, kScriptEscaped, kScriptEscapedDash,
    kScriptEscapedDashDash, kScriptEscapedLess, kScriptDoubleStart, kScriptDouble, kScriptDoubleDash,
    kScriptDoubleDashDash, kScriptDoubleLess, kScriptDoubleEnd,  // texts up to here
    kTagOpen, kEndTagOpen, kTagName, kBeforeName, kName, kAfterName, kBeforeValue, kValueDouble,
    kValueSingle, kValueUnquoted, kAfterValue, kSelfClosing,  // tags up to here
    kBogusComment, kInstruction, kXmlComment, kDeclaration, kCommentStart, kCommentStartDash, kComment, kCommentLess,
    kCommentLessBang, kCommentLessBangDash, kCommentLessBangDashDash, kCommentEndDash, kCommentEnd,
    kCommentEndBang, kDoctype
  };
  // clang-format on

  const std::string& text_;
  const bool is_xml_;
  std::size_t pos_ = 0;
  State state_ = kData;
  State text_state_ = kData;  // what the text in hand is
  State back_ = kData;        // to which an end tag that is none goes back
  std::size_t text_begin_ = 0;
  std::size_t mark_ = 0;  // the last "<" that may begin a token
  std::size_t part_ = 0;  // where a name or value begins
  std::string buffer_, last_start_tag_;
  PlainToken tag_;
  std::set<std::string> names_;
  bool is_dropped_ = false;  // an attribute that is there already
  PlainTree tree_;
  std::vector<PlainToken> tokens_;
  bool done_ = false;

  void To(State state) { state_ = state; }
  void Again(State state) {
    state_ = state;
    --pos_;
  }
  void Flush(std::size_t end, Token kind) {
    const bool goes_on = !tokens_.empty() && tokens_.back().kind == kind && tokens_.back().end == text_begin_;
    if (end > text_begin_ && !goes_on) tokens_.push_back({kind, text_begin_, end, {}, {}, false});
    if (goes_on) tokens_.back().end = end;
    text_begin_ = end;
  }
  Token TextKind() const {
    return text_state_ == kData || text_state_ == kRcdata ? Token::kText : Token::kRawText;
  }
  void EndInText() {
    Flush(text_.size(), TextKind());
    done_ = true;
  }
  void EndInTag() {
    Flush(mark_, TextKind());
    done_ = true;
  }
  void SetText(State state) { state_ = text_state_ = state; }
  void NewTag(Token kind) {
    tag_ = {kind, mark_, 0, {}, {}, false};
    names_.clear();
  }
  void EmitComment(bool at_eof) {
    Flush(mark_, TextKind());
    text_begin_ = at_eof ? text_.size() : pos_;
    tokens_.push_back({Token::kComment, mark_, text_begin_, {}, {}, false});
    done_ = at_eof;
    SetText(kData);
  }
  void EmitTag() {
    Flush(mark_, TextKind());
    tag_.end = text_begin_ = pos_;
    if (tag_.kind == Token::kEndTag) {
      tag_.attributes.clear();
      tag_.self_closing = false;
    }
    tokens_.push_back(tag_);
    SetText(kData);
    if (is_xml_) return;
    const std::string name = Lower(tag_.name);
    if (tag_.kind == Token::kEndTag) return tree_.EndTag(name);
    last_start_tag_ = name;
    if (!tree_.StartTag(name, tag_)) return;
    if (name == "title" || name == "textarea") SetText(kRcdata);
    if (Lists(" style xmp iframe noembed noframes ", name)) SetText(kRawtext);
    if (name == "script") SetText(kScript);
    if (name == "plaintext") SetText(kPlaintext);
  }
  void EndName() { tag_.name = text_.substr(part_, pos_ - 1 - part_); }
  void EndAttributeName() {
    const std::string name = text_.substr(part_, pos_ - 1 - part_);
    is_dropped_ = !names_.insert(Lower(name)).second;
    if (!is_dropped_) tag_.attributes.push_back(name);
  }
  void EndValue(const std::string& quote) {
    if (!is_dropped_) tag_.attributes.back() += "=" + quote + text_.substr(part_, pos_ - 1 - part_) + quote;
  }

  void Text(int c) {
    switch (state_) {
      case kData:
      case kRcdata:
      case kRawtext:
      case kScript:
        if (c == kEof) return EndInText();
        if (c != '<') return;
        mark_ = pos_ - 1;
        back_ = state_;
        return To(state_ == kData ? kTagOpen : kRawLess);
      case kPlaintext:
        if (c == kEof) EndInText();
        return;
      case kCdata:
        if (c == kEof) EndInText();
        if (c == ']') To(kCdataBracket);
        return;
      case kCdataBracket:
        return c == ']' ? To(kCdataEnd) : Again(kCdata);
      case kCdataEnd:
        if (c == ']') return;
        if (c != '>') return Again(kCdata);
        Flush(pos_, Token::kRawText);
        return SetText(kData);
      case kRawLess:
        if (c == '/') return To(kRawEndOpen);
        return c == '!' && text_state_ == kScript ? To(kScriptEscapeStart) : Again(text_state_);
      case kRawEndOpen:
        if (!IsAlpha(c)) return Again(back_);
        NewTag(Token::kEndTag);
        part_ = pos_ - 1;
        return Again(kRawEndName);
      case kRawEndName: {
        if (IsAlpha(c)) return;
        EndName();
        const bool is_end = Lower(tag_.name) == last_start_tag_;
        if (is_end && IsBlank(c)) return To(kBeforeName);
        if (is_end && c == '/') return To(kSelfClosing);
        if (is_end && c == '>') return EmitTag();
        return Again(back_);
      }
      default:
        return ScriptText(c);
    }
  }

  void ScriptText(int c) {
    if (c == kEof) return EndInText();
    const bool is_double = state_ >= kScriptDouble;
    switch (state_) {
      case kScriptEscapeStart:
        return c == '-' ? To(kScriptEscapeStartDash) : Again(kScript);
      case kScriptEscapeStartDash:
        return c == '-' ? To(kScriptEscapedDashDash) : Again(kScript);
      case kScriptEscaped:
      case kScriptEscapedDash:
      case kScriptEscapedDashDash:
      case kScriptDouble:
      case kScriptDoubleDash:
      case kScriptDoubleDashDash: {
        const bool two = state_ == kScriptEscapedDashDash || state_ == kScriptDoubleDashDash;
        const bool none = state_ == kScriptEscaped || state_ == kScriptDouble;
        if (c == '>' && two) return To(kScript);
        if (c == '-' && none) return To(is_double ? kScriptDoubleDash : kScriptEscapedDash);
        if (c == '-') return To(is_double ? kScriptDoubleDashDash : kScriptEscapedDashDash);
        if (c != '<') return To(is_double ? kScriptDouble : kScriptEscaped);
        if (!is_double) mark_ = pos_ - 1;
        return To(is_double ? kScriptDoubleLess : kScriptEscapedLess);
      }
      case kScriptEscapedLess:
        back_ = kScriptEscaped;
        buffer_.clear();
        if (c == '/') return To(kRawEndOpen);
        return Again(IsAlpha(c) ? kScriptDoubleStart : kScriptEscaped);
      case kScriptDoubleLess:
        buffer_.clear();
        return c == '/' ? To(kScriptDoubleEnd) : Again(kScriptDouble);
      default: {  // the double escape begins or ends, when the name is that
        if (IsAlpha(c)) {
          buffer_ += static_cast<char>(c);
          return;
        }
        const bool begins = state_ == kScriptDoubleStart;
        if (!IsBlank(c) && c != '/' && c != '>') return Again(begins ? kScriptEscaped : kScriptDouble);
        return To((Lower(buffer_) == "script") == begins ? kScriptDouble : kScriptEscaped);
      }
    }
  }

  void Tag(int c) {
    if (c == kEof && state_ <= kEndTagOpen) return EndInText();
    if (c == kEof) return EndInTag();
    switch (state_) {
      case kTagOpen:
        if (c == '!') return To(kDeclaration);
        if (c == '/') return To(kEndTagOpen);
        if (c == '?') return Again(is_xml_ ? kInstruction : kBogusComment);
        if (!IsAlpha(c)) return Again(kData);
        NewTag(Token::kStartTag);
        part_ = pos_ - 1;
        return To(kTagName);
      case kEndTagOpen:
        if (!IsAlpha(c)) return Again(kBogusComment);
        NewTag(Token::kEndTag);
        part_ = pos_ - 1;
        return To(kTagName);
      case kTagName:
        if (!IsBlank(c) && c != '/' && c != '>') return;
        EndName();
        if (c == '>') return EmitTag();
        return To(c == '/' ? kSelfClosing : kBeforeName);
      case kBeforeName:
        if (IsBlank(c)) return;
        part_ = pos_ - 1;
        if (c == '/' || c == '>') return Again(kAfterName);
        return To(kName);  // a "=" here is the first character of the name
      case kName:
        if (!IsBlank(c) && c != '/' && c != '>' && c != '=') return;
        EndAttributeName();
        return c == '=' ? To(kBeforeValue) : Again(kAfterName);
      case kAfterName:
        if (IsBlank(c)) return;
        part_ = pos_ - 1;
        if (c == '/') return To(kSelfClosing);
        if (c == '=') return To(kBeforeValue);
        return c == '>' ? EmitTag() : To(kName);
      default:
        return Value(c);
    }
  }

  void Value(int c) {
    switch (state_) {
      case kBeforeValue:
        if (IsBlank(c)) return;
        part_ = pos_;
        if (c == '"') return To(kValueDouble);
        if (c == '\'') return To(kValueSingle);
        --part_;
        if (c == '>') {
          EndValue("");
          return EmitTag();
        }
        return To(kValueUnquoted);
      case kValueDouble:
      case kValueSingle: {
        const char quote = state_ == kValueDouble ? '"' : '\'';
        if (c != quote) return;
        EndValue(std::string(1, quote));
        return To(kAfterValue);
      }
      case kValueUnquoted:
        if (!IsBlank(c) && c != '>') return;
        EndValue("");
        return c == '>' ? EmitTag() : To(kBeforeName);
      case kAfterValue:
        if (IsBlank(c)) return To(kBeforeName);
        if (c == '/') return To(kSelfClosing);
        return c == '>' ? EmitTag() : Again(kBeforeName);
      default:  // kSelfClosing
        tag_.self_closing = c == '>';
        return c == '>' ? EmitTag() : Again(kBeforeName);
    }
  }

  void Other(int c) {
    if (state_ == kDeclaration) return Declaration();
    if (c == kEof) return EmitComment(true);
    switch (state_) {
      case kInstruction:
        if (c == '>' && text_[pos_ - 2] == '?' && pos_ > mark_ + 3) EmitComment(false);
        return;
      case kXmlComment:
        if (c == '>' && pos_ >= mark_ + 7 && text_.compare(pos_ - 3, 2, "--") == 0) EmitComment(false);
        return;
      case kBogusComment:
      case kDoctype:
        if (c == '>') EmitComment(false);
        return;
      case kCommentStart:
        if (c == '-') return To(kCommentStartDash);
        return c == '>' ? EmitComment(false) : Again(kComment);
      case kCommentStartDash:
        if (c == '-') return To(kCommentEnd);
        return c == '>' ? EmitComment(false) : Again(kComment);
      case kComment:
        if (c == '<') To(kCommentLess);
        if (c == '-') To(kCommentEndDash);
        return;
      case kCommentLess:
        if (c == '<') return;
        return c == '!' ? To(kCommentLessBang) : Again(kComment);
      case kCommentLessBang:
        return c == '-' ? To(kCommentLessBangDash) : Again(kComment);
      case kCommentLessBangDash:
        return c == '-' ? To(kCommentLessBangDashDash) : Again(kCommentEndDash);
      case kCommentLessBangDashDash:
        return Again(kCommentEnd);
      case kCommentEndDash:
        return c == '-' ? To(kCommentEnd) : Again(kComment);
      case kCommentEnd:
        if (c == '-') return;
        if (c == '!') return To(kCommentEndBang);
        return c == '>' ? EmitComment(false) : Again(kComment);
      default:  // kCommentEndBang
        if (c == '-') return To(kCommentEndDash);
        return c == '>' ? EmitComment(false) : Again(kComment);
    }
  }

  void Declaration() {
    const std::string rest = text_.substr(pos_ - 1, 7);
    --pos_;
    if (rest.starts_with("--")) {
      pos_ += 2;
      return To(is_xml_ ? kXmlComment : kCommentStart);
    }
    if (Lower(rest) == "doctype") {
      pos_ += 7;
      return To(kDoctype);
    }
    if (rest != "[CDATA[" || !(is_xml_ || tree_.KnowsCdata())) return To(kBogusComment);
    pos_ += 7;
    Flush(mark_, TextKind());
    SetText(kCdata);
  }
};

class PlainCss {
 public:
  explicit PlainCss(const std::string& css) : css_(css) {}

  // A url-token is a link unless it belongs to @namespace or to "behavior"; a text in quotes is one behind
  // "url(" and behind @import.
  std::vector<std::string> Links() {
    std::vector<std::string> links;
    Item before, item = Next();
    bool counts = true;  // not within @namespace or behavior
    std::string name;    // of the identifier in hand, when it may be that of a property
    while (item.kind != kEnd) {
      if (item.kind == kAt && item.text == "namespace") counts = false;
      if (item.kind == kIdent) name = item.text;
      if (item.kind == kOther && item.text == ":" && (name == "behavior" || name == "-ms-behavior"))
        counts = false;
      if (item.kind == kOther && Lists(" ; { } ", item.text)) counts = true;
      if (item.kind != kIdent && item.kind != kSpace) name.clear();
      const bool is_quoted = item.kind == kString &&
                             (before.kind == kUrlFunction || (before.kind == kAt && before.text == "import"));
      if (counts && (item.kind == kUrl || is_quoted)) links.push_back(item.text);
      if (item.kind != kSpace) before = item;
      item = Next();
    }
    return links;
  }

 private:
  enum Kind { kEnd, kSpace, kString, kUrl, kUrlFunction, kAt, kIdent, kOther };
  struct Item {
    Kind kind = kOther;
    std::string text = {};  // of strings and urls as it stands, of names what it means, in lower case
  };

  const std::string& css_;
  std::size_t pos_ = 0;

  int At(std::size_t pos) const { return pos < css_.size() ? static_cast<unsigned char>(css_[pos]) : kEof; }
  static bool IsBreak(int c) { return c == '\n' || c == '\r' || c == '\f'; }
  static bool IsHex(int c) {
    return c != kEof && std::string("0123456789abcdefABCDEF").find(static_cast<char>(c)) != std::string::npos;
  }
  static bool IsDigit(int c) { return c >= '0' && c <= '9'; }
  static bool IsNameStart(int c) { return IsAlpha(c) || c == '_' || c >= 128 || c == 0; }
  static bool IsName(int c) { return IsNameStart(c) || IsDigit(c) || c == '-'; }
  bool IsEscape(std::size_t pos) const { return At(pos) == '\\' && !IsBreak(At(pos + 1)); }
  bool StartsName(std::size_t pos) const {
    if (At(pos) == '-') return IsNameStart(At(pos + 1)) || At(pos + 1) == '-' || IsEscape(pos + 1);
    return IsNameStart(At(pos)) || IsEscape(pos);
  }
  bool StartsNumber(std::size_t pos) const {
    if (At(pos) == '+' || At(pos) == '-') ++pos;
    return IsDigit(At(pos)) || (At(pos) == '.' && IsDigit(At(pos + 1)));
  }

  // Behind the backslash; the character, as far as it is ASCII.
  char TakeEscape() {
    if (At(pos_) == kEof) return '?';
    if (!IsHex(At(pos_))) return css_[pos_++];
    unsigned value = 0;
    for (int digits = 0; digits < 6 && IsHex(At(pos_)); ++digits) {
      value = value * 16 + static_cast<unsigned>(std::stoi(css_.substr(pos_++, 1), nullptr, 16));
    }
    if (At(pos_) == '\r' && At(pos_ + 1) == '\n') ++pos_;  // one line end
    if (IsBlank(At(pos_))) ++pos_;
    return value > 0 && value < 128 ? static_cast<char>(value) : '?';
  }
  std::string TakeName() {
    std::string name;
    for (;;) {
      if (IsName(At(pos_))) {
        name += css_[pos_++];
      } else if (IsEscape(pos_)) {
        ++pos_;
        name += TakeEscape();
      } else {
        return Lower(name);
      }
    }
  }
  Item TakeString() {
    const int quote = At(pos_++);
    const std::size_t begin = pos_;
    for (;;) {
      const int c = At(pos_);
      if (c == kEof) return {kString, css_.substr(begin)};
      if (c == quote) return {kString, css_.substr(begin, pos_++ - begin)};
      if (IsBreak(c)) return {};
      ++pos_;
      if (c != '\\' || At(pos_) == kEof) continue;
      if (IsBreak(At(pos_))) {
        pos_ += At(pos_) == '\r' && At(pos_ + 1) == '\n' ? 2 : 1;
      } else {
        TakeEscape();
      }
    }
  }
  Item TakeNamed() {
    const std::string name = TakeName();
    if (At(pos_) != '(') return {kIdent, name};
    ++pos_;
    if (name != "url") return {};
    std::size_t next = pos_;
    while (IsBlank(At(next))) ++next;
    if (At(next) == '"' || At(next) == '\'') return {kUrlFunction};
    pos_ = next;
    return TakeUrl();
  }
  Item TakeUrl() {
    const std::size_t begin = pos_;
    for (;;) {
      const int c = At(pos_);
      const std::size_t end = pos_;
      if (IsBlank(c)) {
        while (IsBlank(At(pos_))) ++pos_;
      }
      if (At(pos_) == ')' || At(pos_) == kEof) {
        ++pos_;
        return {kUrl, css_.substr(begin, end - begin)};
      }
      const bool is_control = (c > 0 && c < 32) || c == 127;
      if (IsBlank(c) || c == '"' || c == '\'' || c == '(' || is_control || (c == '\\' && !IsEscape(pos_))) {
        return TakeBadUrl();
      }
      ++pos_;
      if (c == '\\') TakeEscape();
    }
  }
  Item TakeBadUrl() {
    for (; At(pos_) != kEof;) {
      const bool is_escape = IsEscape(pos_);
      if (css_[pos_++] == ')') break;
      if (is_escape) TakeEscape();
    }
    return {};
  }
  Item Next() {
    const int c = At(pos_);
    if (c == kEof) return {kEnd};
    if (c == '/' && At(pos_ + 1) == '*') {
      const std::size_t end = css_.find("*/", pos_ + 2);
      pos_ = end == std::string::npos ? css_.size() : end + 2;
      return {kSpace};
    }
    if (IsBlank(c)) {
      ++pos_;
      return {kSpace};
    }
    if (c == '"' || c == '\'') return TakeString();
    if (StartsNumber(pos_)) {
      TakeNumber();
      return {};
    }
    if (StartsName(pos_) && css_.compare(pos_, 3, "-->") != 0) return TakeNamed();
    if (c == '#' && (IsName(At(pos_ + 1)) || IsEscape(pos_ + 1))) {
      ++pos_;
      TakeName();
      return {};
    }
    ++pos_;
    if (c == '@' && StartsName(pos_)) return {kAt, TakeName()};
    return {kOther, std::string(1, static_cast<char>(c))};
  }
  void TakeNumber() {
    if (At(pos_) == '+' || At(pos_) == '-') ++pos_;
    while (IsDigit(At(pos_))) ++pos_;
    if (At(pos_) == '.' && IsDigit(At(pos_ + 1))) {
      ++pos_;
      while (IsDigit(At(pos_))) ++pos_;
    }
    if (At(pos_) == 'e' || At(pos_) == 'E') {
      const std::size_t digits = At(pos_ + 1) == '+' || At(pos_ + 1) == '-' ? pos_ + 2 : pos_ + 1;
      if (IsDigit(At(digits))) {
        pos_ = digits;
        while (IsDigit(At(pos_))) ++pos_;
      }
    }
    if (StartsName(pos_)) TakeName();
  }
};

}  // namespace

std::vector<PlainToken> PlainHtmlTokens(const std::string& text, bool is_xml) {
  return PlainTokenizer(text, is_xml).Run();
}

std::vector<std::string> PlainCssLinks(const std::string& css) {
  return PlainCss(css).Links();
}

std::vector<PlainToken> TokensOf(const std::string& text, HtmlTokenizer::Syntax syntax) {
  std::vector<PlainToken> tokens;
  HtmlTokenizer tokenizer(text, syntax);
  for (Token kind = tokenizer.Next(); kind != Token::kEnd; kind = tokenizer.Next()) {
    PlainToken token{kind, tokenizer.begin(), tokenizer.end(), {}, {}, false};
    const bool is_text = kind == Token::kText || kind == Token::kRawText;
    if (is_text && !tokens.empty() && tokens.back().kind == kind && tokens.back().end == token.begin) {
      tokens.back().end = token.end;
      continue;
    }
    if (kind == Token::kStartTag || kind == Token::kEndTag) token.name = tokenizer.name();
    if (kind == Token::kStartTag) {
      token.self_closing = tokenizer.is_self_closing();
      for (const HtmlAttribute& attribute : tokenizer.attributes()) {
        const std::string quote(attribute.quote == '\0' ? 0 : 1, attribute.quote);
        token.attributes.push_back(std::string(attribute.name) + (attribute.has_value ? "=" : "") + quote +
                                   std::string(attribute.value) + quote);
      }
    }
    tokens.push_back(token);
  }
  return tokens;
}

std::string ShownTokens(const std::string& text, const std::vector<PlainToken>& tokens) {
  std::string shown;
  for (const PlainToken& token : tokens) {
    if (!shown.empty()) shown += " | ";
    if (token.kind == Token::kComment) shown += "!";
    if (token.kind == Token::kRawText) shown += "=";
    if (token.name.empty()) {
      shown += text.substr(token.begin, token.end - token.begin);
      continue;
    }
    shown += (token.kind == Token::kEndTag ? "</" : "<") + token.name;
    for (const std::string& attribute : token.attributes) shown += " {" + attribute + "}";
    shown += token.self_closing ? " />" : ">";
  }
  return shown;
}

}  // namespace tessaril
