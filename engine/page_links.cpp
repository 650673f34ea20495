#include "engine/page_links.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "engine/ascii.h"
#include "engine/character_references.h"
#include "engine/css_links.h"
#include "engine/html_tokenizer.h"

namespace tessaril {
namespace {

// How the value of an attribute names addresses.
enum class Use { kAddress, kAddressList, kMap, kStyle };

struct AttributeRow {
  std::string_view name;  // in lower case
  Use use;
  std::string_view elements;  // the names of those that have it, each between blanks; empty for all
};

// An attribute means something to a browser only where the HTML standard, or an older one, gives it to the
// element.
constexpr AttributeRow kAttributes[] = {
    {"href", Use::kAddress, " a area link "},
    {"src", Use::kAddress, " img script iframe frame embed source track input audio video image "},
    {"srcset", Use::kAddressList, " img source "},
    {"imagesrcset", Use::kAddressList, " link "},
    {"poster", Use::kAddress, " video "},
    {"data", Use::kAddress, " object "},
    {"action", Use::kAddress, " form "},
    {"formaction", Use::kAddress, " button input "},
    {"cite", Use::kAddress, " blockquote q ins del "},
    {"background", Use::kAddress, " body table thead tbody tfoot tr td th "},
    {"longdesc", Use::kAddress, " img frame iframe "},
    {"usemap", Use::kMap, " img object input "},
    {"manifest", Use::kAddress, " html "},
    {"style", Use::kStyle, ""},
};
constexpr std::string_view kForeignLink = "xlink:href";

// Whether one of these names begins so.
constexpr std::array<bool, 256> MakeInitials() {
  std::array<bool, 256> initials{};
  for (const AttributeRow& row : kAttributes) {
    initials[static_cast<unsigned char>(row.name[0])] = true;
    initials[static_cast<unsigned char>(ToUpper(row.name[0]))] = true;
  }
  initials['x'] = initials['X'] = true;
  return initials;
}
constexpr std::array<bool, 256> kInitials = MakeInitials();

constexpr std::string_view kBlanks = " \t\n\f\r";

std::string_view Stripped(std::string_view value) {
  if (!value.empty() && static_cast<unsigned char>(value.front()) > ' ' &&
      static_cast<unsigned char>(value.back()) > ' ') {
    return value;
  }
  while (!value.empty() && static_cast<unsigned char>(value.front()) <= ' ') value.remove_prefix(1);
  while (!value.empty() && static_cast<unsigned char>(value.back()) <= ' ') value.remove_suffix(1);
  return value;
}

// Whether a list of names between blanks holds `name`, in any letter case.
bool Lists(std::string_view list, std::string_view name) {
  for (std::size_t pos = 1; pos < list.size();) {
    const std::size_t end = list.find(' ', pos);
    if (end - pos == name.size() && EqualsLower(name, list.substr(pos, name.size()))) return true;
    pos = end + 1;
  }
  return false;
}

// The way through one page.
class Reading {
 public:
  Reading(std::string_view text, HtmlTokenizer::Syntax syntax, PageLinks& found)
      : text_(text), is_xml_(syntax == HtmlTokenizer::Syntax::kXml), tokens_(text, syntax), found_(found) {}

  void Run();

 private:
  void TakeStartTag();
  void TakeTemplate();
  bool IsFollowed() const;
  bool IsLoaded(const AttributeRow& row) const;
  void TakeAttribute(const HtmlAttribute& attribute);
  void TakeAnchor(const HtmlAttribute& attribute);
  void TakeAddressList(std::string_view value);
  void TakeStyle(std::string_view value);
  void TakePlainStyle(std::string_view value);
  void TakeInstruction(std::string_view text);
  void TakeBase();
  void TakeRefresh();
  void AddAnchor(std::string_view value, bool is_map);
  const HtmlAttribute* Find(std::string_view name) const;
  std::string_view TokenText() const {
    return text_.substr(tokens_.begin(), tokens_.end() - tokens_.begin());
  }

  std::string_view text_;
  bool is_xml_;
  HtmlTokenizer tokens_;
  PageLinks& found_;
  std::vector<std::string_view> css_links_;
  bool is_style_ = false;  // what follows is the text of a style element
  int unscripted_ = 0;     // how many `noscript` are open,
  int templates_ = 0;      // and how many `template`, whose content is not part of the page
};

void Reading::Run() {
  for (;;) {
    switch (tokens_.Next()) {
      case HtmlTokenizer::Token::kEnd:
        return;
      case HtmlTokenizer::Token::kStartTag:
        TakeStartTag();
        break;
      case HtmlTokenizer::Token::kEndTag:
        is_style_ = false;
        if (unscripted_ > 0 && EqualsLower(tokens_.name(), "noscript")) --unscripted_;
        if (templates_ > 0 && EqualsLower(tokens_.name(), "template")) --templates_;
        break;
      case HtmlTokenizer::Token::kText:
        if (is_style_) TakeStyle(TokenText());
        break;
      case HtmlTokenizer::Token::kRawText:
        if (is_style_) TakePlainStyle(TokenText());
        break;
      case HtmlTokenizer::Token::kComment:
        TakeInstruction(TokenText());
        break;
    }
  }
}

void Reading::TakeStartTag() {
  const std::string_view name = tokens_.name();
  is_style_ = false;
  switch (name.size()) {
    case 4:
      if (templates_ > 0) break;
      if (EqualsLower(name, "base")) TakeBase();
      if (EqualsLower(name, "meta")) TakeRefresh();
      break;
    case 5:
      if (EqualsLower(name, "style")) is_style_ = !tokens_.is_self_closing() || !tokens_.is_foreign();
      break;
    case 8:
      if (EqualsLower(name, "noscript")) ++unscripted_;
      if (EqualsLower(name, "template")) TakeTemplate();
      break;
    default:
      break;
  }
  if (templates_ > 0) {
    is_style_ = false;
    return;
  }
  for (const HtmlAttribute& attribute : tokens_.attributes()) TakeAttribute(attribute);
}

// One with a shadow root is shown where it stands.
void Reading::TakeTemplate() {
  if (!tokens_.is_foreign() && (templates_ > 0 || Find("shadowrootmode") == nullptr)) ++templates_;
}

// Some `link` elements are for search engines only.
bool Reading::IsFollowed() const {
  const HtmlAttribute* const rel = Find("rel");
  return rel == nullptr || !Lists(" canonical shortlink pingback amphtml ", Stripped(rel->value));
}

// Whether the element at hand does with the attribute what the row says.
bool Reading::IsLoaded(const AttributeRow& row) const {
  const std::string_view element = tokens_.name();
  if (row.elements.empty()) return true;
  if (!Lists(row.elements, element)) return tokens_.is_foreign() && row.name == "href";
  if (row.name == "href") return !EqualsLower(element, "link") || IsFollowed();
  if (row.name != "src" || !EqualsLower(element, "input")) return true;
  const HtmlAttribute* const type = Find("type");
  return type != nullptr && EqualsLower(type->value, "image");
}

void Reading::TakeAttribute(const HtmlAttribute& attribute) {
  const std::string_view name = attribute.name;
  if (name.size() == 2 || (name.size() == 4 && (name[0] | 0x20) == 'n')) return TakeAnchor(attribute);
  // Initials and sizes of the names below, before any of them is compared.
  constexpr std::size_t kShortest = 3;
  if (name.size() < kShortest || !kInitials[static_cast<unsigned char>(name[0])] || name == "class") return;
  for (const AttributeRow& row : kAttributes) {
    if (row.name.size() != name.size() || !EqualsLower(name, row.name)) continue;
    if (!IsLoaded(row)) return;
    if (row.use == Use::kAddressList) return TakeAddressList(attribute.value);
    if (row.use == Use::kStyle && attribute.value.find_first_of("(&") == std::string_view::npos) return;
    if (row.use == Use::kStyle) return TakeStyle(attribute.value);
    found_.links.push_back({Stripped(attribute.value), Spelling::kAttribute, row.use == Use::kMap});
    return;
  }
  if (tokens_.is_foreign() && EqualsLower(name, kForeignLink))
    found_.links.push_back({Stripped(attribute.value)});
}

void Reading::TakeAnchor(const HtmlAttribute& attribute) {
  const std::string_view element = tokens_.name();
  const bool is_id = EqualsLower(attribute.name, "id");
  if (!is_id && !EqualsLower(attribute.name, "name")) return;
  if (EqualsLower(element, "map")) AddAnchor(attribute.value, true);
  if (is_id) return AddAnchor(attribute.value, false);
  if (!EqualsLower(element, "a")) return;
  const HtmlAttribute* const id = Find("id");
  if (id == nullptr || id->value != attribute.value) AddAnchor(attribute.value, false);
}

void Reading::AddAnchor(std::string_view value, bool is_map) {
  if (!value.empty()) found_.anchors.push_back({value, is_map, !is_map && unscripted_ == 0});
}

const HtmlAttribute* Reading::Find(std::string_view name) const {
  for (const HtmlAttribute& attribute : tokens_.attributes()) {
    if (EqualsLower(attribute.name, name)) return &attribute;
  }
  return nullptr;
}

// Only the first address of a base counts.
void Reading::TakeBase() {
  const HtmlAttribute* const href = Find("href");
  if (href != nullptr && !found_.base) found_.base = Stripped(href->value);
}

// <meta http-equiv=refresh content="5; url=next.html">
void Reading::TakeRefresh() {
  const HtmlAttribute* const equivalent = Find("http-equiv");
  const HtmlAttribute* const content = Find("content");
  if (equivalent == nullptr || content == nullptr || !EqualsLower(equivalent->value, "refresh")) return;
  std::string_view rest = content->value;
  const auto skip = [&rest](std::string_view bytes) {
    rest.remove_prefix(std::min(rest.find_first_not_of(bytes), rest.size()));
  };
  skip(kBlanks);
  if (rest.empty() || std::string_view("0123456789.").find(rest.front()) == std::string_view::npos) return;
  skip("0123456789.");
  if (rest.empty() || std::string_view(";, \t\n\f\r").find(rest.front()) == std::string_view::npos) return;
  skip(kBlanks);
  if (rest.starts_with(';') || rest.starts_with(',')) rest.remove_prefix(1);
  skip(kBlanks);
  if (EqualsLower(rest.substr(0, 3), "url")) {
    const std::string_view whole = rest;
    rest.remove_prefix(3);
    skip(kBlanks);
    if (rest.starts_with('=')) {
      rest.remove_prefix(1);
      skip(kBlanks);
    } else {
      rest = whole;
    }
  }
  for (const std::string_view quote : {"\"", "'", "&quot;", "&#34;", "&#39;", "&apos;"}) {
    if (!rest.starts_with(quote)) continue;
    rest.remove_prefix(quote.size());
    rest = rest.substr(0, rest.find(quote));
    break;
  }
  if (!rest.empty()) found_.links.push_back({Stripped(rest)});
}

// "a.png 1x, b.png 2x"
void Reading::TakeAddressList(std::string_view value) {
  std::size_t pos = 0;
  for (;;) {
    pos = value.find_first_not_of(" \t\n\f\r,", pos);
    if (pos == std::string_view::npos) return;
    const std::size_t end = std::min(value.find_first_of(kBlanks, pos), value.size());
    std::string_view address = value.substr(pos, end - pos);
    pos = end;
    const bool ends_here = address.ends_with(',');
    while (address.ends_with(',')) address.remove_suffix(1);
    if (!address.empty()) found_.links.push_back({address});
    for (bool in_parentheses = false; !ends_here && pos < value.size(); ++pos) {
      if (value[pos] == '(') in_parentheses = true;
      if (value[pos] == ')') in_parentheses = false;
      if (value[pos] == ',' && !in_parentheses) break;
    }
  }
}

// A style sheet in which references count. They are resolved before its links are looked for; where they
// stand in the page is kept beside each byte.
void Reading::TakeStyle(std::string_view value) {
  if (value.find('&') == std::string_view::npos) return TakePlainStyle(value);
  css_links_.clear();
  std::string css;
  std::vector<std::size_t> places;
  for (std::size_t pos = 0; pos < value.size();) {
    const CharacterReference reference =
        value[pos] == '&' ? ReadCharacterReference(value.substr(pos), true) : CharacterReference{};
    const std::size_t length = std::max<std::size_t>(reference.length, 1);
    css += reference.length == 0 ? std::string(1, value[pos]) : reference.characters;
    places.resize(css.size(), pos);
    pos += length;
  }
  places.push_back(value.size());
  FindCssLinks(css, css_links_);
  for (const std::string_view link : css_links_) {
    const std::string_view stripped = Stripped(link);
    const auto begin = static_cast<std::size_t>(stripped.data() - css.data());
    const std::size_t from = places[begin];
    found_.links.push_back(
        {value.substr(from, places[begin + stripped.size()] - from), Spelling::kCssAttribute});
  }
}

void Reading::TakePlainStyle(std::string_view value) {
  css_links_.clear();
  FindCssLinks(value, css_links_);
  for (const std::string_view link : css_links_) found_.links.push_back({Stripped(link), Spelling::kCss});
}

// <?xml-stylesheet type="text/css" href="style.css"?>
void Reading::TakeInstruction(std::string_view text) {
  constexpr std::string_view kStart = "<?xml-stylesheet";
  if (!is_xml_ || !text.starts_with(kStart)) return;
  for (std::size_t pos = text.find("href", kStart.size()); pos != std::string_view::npos;
       pos = text.find("href", pos + 1)) {
    const std::size_t equals = std::min(text.find_first_not_of(kBlanks, pos + 4), text.size());
    if (kBlanks.find(text[pos - 1]) == std::string_view::npos || !text.substr(equals).starts_with('='))
      continue;
    const std::size_t quote = text.find_first_not_of(kBlanks, equals + 1);
    if (quote == std::string_view::npos || (text[quote] != '"' && text[quote] != '\'')) continue;
    const std::size_t end = text.find(text[quote], quote + 1);
    if (end == std::string_view::npos) return;
    found_.links.push_back({Stripped(text.substr(quote + 1, end - quote - 1))});
    return;
  }
}

std::string_view ExtensionOf(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

}  // namespace

PageForm FormOfName(std::string_view name) {
  const std::string_view extension = ExtensionOf(name);
  if (Lists(" html htm shtml shtm ", extension)) return PageForm::kHtml;
  if (Lists(" xhtml xht svg ", extension)) return PageForm::kXml;
  return EqualsLower(extension, "css") ? PageForm::kCss : PageForm::kNone;
}

PageForm FormOfListed(std::string_view name) {
  constexpr std::string_view kOthers =
      " js mjs json map xml txt text md csv pdf ps png jpg jpeg gif webp avif ico bmp tif tiff mp3 mp4 m4a "
      "ogg"
      " oga ogv wav webm woff woff2 ttf otf eot zip gz tgz bz2 xz 7z rar tar exe jar war class so dll iso dmp"
      " toml inv chm ";
  const PageForm form = FormOfName(name);
  if (form != PageForm::kNone || Lists(kOthers, ExtensionOf(name))) return form;
  return PageForm::kHtml;
}

void FindPageLinks(std::string_view text, PageForm form, PageLinks& found) {
  found.Clear();
  if (form == PageForm::kCss) {
    std::vector<std::string_view> links;
    FindCssLinks(text, links);
    for (const std::string_view link : links) found.links.push_back({Stripped(link), Spelling::kCss});
    return;
  }
  const bool is_xml = form == PageForm::kXml;
  Reading(text, is_xml ? HtmlTokenizer::Syntax::kXml : HtmlTokenizer::Syntax::kHtml, found).Run();
}

std::string_view ResolveSpelling(std::string_view value, Spelling spelling, std::string& memory) {
  if (spelling != Spelling::kCss && value.find('&') != std::string_view::npos) {
    memory = ResolveReferences(value);
    value = memory;
  }
  if (spelling != Spelling::kAttribute && value.find('\\') != std::string_view::npos) {
    memory = ResolveCssEscapes(value);
    value = memory;
  }
  return value;
}

}  // namespace tessaril
