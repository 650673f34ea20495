#include "engine/functions.h"

#include <array>

#include "engine/entity_check.h"
#include "engine/html_check.h"
#include "engine/text_search.h"

namespace tessaril {
namespace {

constexpr std::string_view kReplaceLabel = "Replace:";
constexpr std::string_view kWithLabel = "... with (editable):";

constexpr std::array<FunctionRow, 7> kFunctions = {{
    {Function::kLinks, "&Internal link errors", "links", "check local links and anchors; list unlinked files",
     false, "Error type:", "... in link (editable):", CheckPage},
    {Function::kEntities, "&&&xxxx; tag errors", "entities",
     "find characters and entities that should be written &name;", false, kReplaceLabel, kWithLabel,
     CheckEntities},
    {Function::kExternal, "&External links list", "external",
     "list the links to other servers as an HTML page", true, "", "", CheckPage},
    {Function::kSearch, "Search for &text", "search", "find a text", false, "Found:", "", SearchFile},
    {Function::kReplace, "Search && &Replace text", "replace", "replace a text", false, kReplaceLabel,
     kWithLabel, SearchFile},
    {Function::kShowFile, "Sho&w file - Start in Browser", "", "", true, "", "", nullptr},
    {Function::kColours, "Web Safe &Colour errors", "colours", "find colours that are not web-safe", false,
     "Not a web safe colour:", "Replace with:", CheckPage},
}};

}  // namespace

std::span<const FunctionRow> AllFunctions() {
  return kFunctions;
}

const FunctionRow& RowOf(Function function) {
  return kFunctions.at(static_cast<std::size_t>(function));
}

}  // namespace tessaril
