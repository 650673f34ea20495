#ifndef TESSARIL_ENGINE_HTML_TEXT_H_
#define TESSARIL_ENGINE_HTML_TEXT_H_

#include <string>
#include <string_view>

// Texts from outside on their way into a page that the program makes: nothing in them may become markup.

namespace tessaril {

/// A path: "<", ">", the double quote and "&" become entities.
std::string EscapedPath(std::string_view path);

/// A value of another page's attribute. Its "&" stays: it is HTML already, and still leads where it led.
std::string EscapedValue(std::string_view value);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_HTML_TEXT_H_
