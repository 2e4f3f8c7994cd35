// What the keys of terminals send.
#pragma once

#include "text/keys.h"

namespace zel {

// Behind an escape, as the Linux console and the usual terminals send it, whatever TERM says.
// Arrows to the sides mean nothing, but their escape is no key either.
struct KeySequence {
  const char* sequence;
  int key;
};
inline constexpr KeySequence kKeySequences[] = {
    {"[A", kKeyUp},      {"OA", kKeyUp},        {"[B", kKeyDown},  {"OB", kKeyDown},
    {"[C", kKeyOther},   {"OC", kKeyOther},     {"[D", kKeyOther}, {"OD", kKeyOther},
    {"[H", kKeyHome},    {"OH", kKeyHome},      {"[1~", kKeyHome}, {"[7~", kKeyHome},
    {"[F", kKeyEnd},     {"OF", kKeyEnd},       {"[4~", kKeyEnd},  {"[8~", kKeyEnd},
    {"[5~", kKeyPageUp}, {"[6~", kKeyPageDown}, {"OP", kKeyHelp},  {"[[A", kKeyHelp},
    {"[11~", kKeyHelp}};

}  // namespace zel
