#include "engine/web_address.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "engine/ascii.h"

namespace tessaril {
namespace {

bool IsControlOrBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

bool IsDroppedInside(char c) {
  return c == '\t' || c == '\n' || c == '\r';
}

bool IsSlash(char c) {
  return c == '/' || c == '\\';
}

// What the bytes of a plain link mean.
enum class Meaning : unsigned char { kNothing, kSlash, kColon, kPercent, kQuery, kHash, kUnusual };

constexpr std::array<Meaning, 256> MakeMeanings() {
  constexpr std::size_t kFirstBeyondAscii = 0x80;
  std::array<Meaning, 256> meanings{};
  for (std::size_t code = 0; code < meanings.size(); ++code) {
    if (code <= ' ' || code == 0x7F || code >= kFirstBeyondAscii) meanings[code] = Meaning::kUnusual;
  }
  meanings['\\'] = meanings['&'] = Meaning::kUnusual;
  meanings['/'] = Meaning::kSlash;
  meanings[':'] = Meaning::kColon;
  meanings['%'] = Meaning::kPercent;
  meanings['?'] = Meaning::kQuery;
  meanings['#'] = Meaning::kHash;
  return meanings;
}
constexpr std::array<Meaning, 256> kMeanings = MakeMeanings();

// The scheme at the start without its ":"; empty when there is none.
std::string_view SchemeOf(std::string_view link) {
  if (link.empty() || !IsAsciiLetter(link[0])) return {};
  for (std::size_t pos = 1; pos < link.size(); ++pos) {
    const char c = link[pos];
    if (c == ':') return link.substr(0, pos);
    const bool in_scheme = IsAsciiLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    if (!in_scheme) return {};
  }
  return {};
}

}  // namespace

WebAddress SplitAddress(std::string_view link, std::string& memory) {
  while (!link.empty() && IsControlOrBlank(link.front())) link.remove_prefix(1);
  while (!link.empty() && IsControlOrBlank(link.back())) link.remove_suffix(1);
  if (std::any_of(link.begin(), link.end(), IsDroppedInside)) {
    std::string kept;
    std::copy_if(link.begin(), link.end(), std::back_inserter(kept),
                 [](char c) { return !IsDroppedInside(c); });
    memory = std::move(kept);
    link = memory;
  }
  WebAddress address;
  if (const std::string_view scheme = SchemeOf(link); !scheme.empty()) {
    address.kind = EqualsLower(scheme, "file") ? WebAddress::Kind::kFile : WebAddress::Kind::kElsewhere;
    return address;
  }
  if (link.size() >= 2 && IsSlash(link[0]) && IsSlash(link[1])) {
    address.kind = WebAddress::Kind::kElsewhere;
    return address;
  }
  const std::size_t hash = link.find('#');
  if (hash != std::string_view::npos) {
    address.fragment = link.substr(hash + 1);
    link = link.substr(0, hash);
  }
  address.path = link.substr(0, link.find('?'));
  return address;
}

std::optional<WebAddress> SplitPlainAddress(std::string_view link) {
  WebAddress address;
  std::size_t pos = 0;
  while (link.substr(pos, 3) == "../") pos += 3;
  const std::size_t behind_steps = pos;
  bool is_simple = pos == link.size() || link[pos] != '.';
  std::size_t path_end = std::string_view::npos;
  std::size_t hash = std::string_view::npos;
  bool may_be_scheme = pos == 0;
  for (; pos < link.size(); ++pos) {
    switch (kMeanings[static_cast<unsigned char>(link[pos])]) {
      case Meaning::kNothing:
        break;
      case Meaning::kSlash:
        may_be_scheme = false;
        if (path_end == std::string_view::npos && pos + 1 < link.size()) {
          is_simple = is_simple && link[pos + 1] != '/' && link[pos + 1] != '.';
        }
        break;
      case Meaning::kColon:
        // Whether it ends a scheme is for the slower way to tell.
        if (may_be_scheme) return std::nullopt;
        break;
      case Meaning::kPercent:
        if (path_end == std::string_view::npos) is_simple = false;
        break;
      case Meaning::kQuery:
        may_be_scheme = false;
        path_end = std::min(path_end, pos);
        break;
      case Meaning::kHash:
        may_be_scheme = false;
        path_end = std::min(path_end, pos);
        hash = std::min(hash, pos);
        break;
      case Meaning::kUnusual:
        return std::nullopt;
    }
  }
  if (link.starts_with("//") || (behind_steps > 0 && link.substr(behind_steps).starts_with('/'))) {
    return std::nullopt;
  }
  address.path = link.substr(0, path_end);
  if (hash != std::string_view::npos) address.fragment = link.substr(hash + 1);
  address.is_simple = is_simple;
  return address;
}

std::string PercentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t pos = 0; pos < text.size(); ++pos) {
    if (text[pos] == '%' && pos + 2 < text.size() && HexadecimalDigit(text[pos + 1]) >= 0 &&
        HexadecimalDigit(text[pos + 2]) >= 0) {
      decoded += static_cast<char>(HexadecimalDigit(text[pos + 1]) * 16 + HexadecimalDigit(text[pos + 2]));
      pos += 2;
    } else {
      decoded += text[pos];
    }
  }
  return decoded;
}

SitePath ResolveSitePath(std::string_view path, const std::vector<std::string>& folder) {
  SitePath resolved;
  if (path.empty() || !IsSlash(path[0])) {
    resolved.names = folder;
  } else {
    path.remove_prefix(1);
  }
  resolved.names_folder = true;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find_first_of("/\\"), path.size());
    std::string name = PercentDecoded(path.substr(0, end));
    resolved.names_folder = end < path.size();
    path.remove_prefix(std::min(end + 1, path.size()));
    if (name == "." || name == "..") {
      if (name == ".." && resolved.names.empty()) resolved.leaves_site = true;
      if (name == ".." && !resolved.names.empty()) resolved.names.pop_back();
      resolved.names_folder = true;
    } else {
      resolved.names.push_back(std::move(name));
    }
  }
  // An empty name is one for "..", and none for the server.
  std::erase(resolved.names, "");
  return resolved;
}

std::string EncodedName(std::string_view name) {
  constexpr std::string_view kSpecial = " \"#%<>?\\`{}'&()";
  std::string encoded;
  for (const char c : name) {
    const bool is_plain = c > ' ' && c < 0x7F && kSpecial.find(c) == std::string_view::npos;
    is_plain ? encoded.push_back(c) : AppendPercentEncoded(c, encoded);
  }
  return encoded;
}

void AppendPercentEncoded(char byte, std::string& out) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  out += '%';
  out += kDigits[static_cast<unsigned char>(byte) >> 4];
  out += kDigits[static_cast<unsigned char>(byte) & 0xF];
}

std::string JoinedNames(std::span<const std::string> names) {
  std::string path;
  for (const std::string& name : names) path.append(path.empty() ? "" : "/").append(name);
  return path;
}

}  // namespace tessaril
