// What somebody may have meant.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zel {

// The known name that is nearest to another one, by letters that are missing, added, changed or
// swapped, without regard to case; empty when none is near.
std::string Nearest(const std::string& name, const std::vector<std::string>& known);

// How many letters have to be changed for that, counting two that are swapped as one; without
// regard to case.
std::size_t Distance(const std::string& a, const std::string& b);

}  // namespace zel
