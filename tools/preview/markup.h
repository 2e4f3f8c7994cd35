// Texts as pages want them.
#pragma once

#include <string>
#include <string_view>

namespace zel {

// UTF-8 as the content of an element or of an attribute in quotes.
std::string HtmlText(std::string_view text);
// UTF-8 as a text of JSON, with its quotes.
std::string JsonText(std::string_view text);
std::string Base64(std::string_view bytes);

}  // namespace zel
