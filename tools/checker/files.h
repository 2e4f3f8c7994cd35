// Whether files can be used.
#pragma once

#include <cstddef>
#include <string>

#include "tools/checker/findings.h"

namespace zel {

// True also for a link that leads nowhere.
bool IsThere(const std::string& name);

// The name of another file in the same directory that may be meant; empty for none.
std::string NearestFile(const std::string& name);

// Says what keeps a file, which is named in that place, from being read. True when nothing does.
bool CheckFile(Findings& findings, const Place& place, const std::string& name);

// Stores the text of such a file. False when it is none or larger than `limit` bytes, which is
// said. Comments in it are taken to heart. Where it is named, it is said that it is no text at all.
bool ReadChecked(Findings& findings, const std::string& name, std::size_t limit, std::string* text,
                 const Place* named = nullptr);

}  // namespace zel
