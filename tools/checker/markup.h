// Signs in texts that say something elsewhere, and that show as they are written here.
#pragma once

#include <cstddef>
#include <string>

namespace zel {

// What looks like an entity, a tag or an escape, from `position` on, which then is behind it; empty
// for none.
std::string Markup(const std::string& text, std::size_t& position);
// The first one of an explanation, in which names in brackets may be meant.
std::string MarkupOfHint(const std::string& text);

}  // namespace zel
