// Code pages for Allegro's set_ucodepage: 256 Unicode characters, one for each byte.
#pragma once

namespace zel {

const unsigned short* WesternCodePage();          // ISO 8859-15
const unsigned short* RussianCodePage();          // KOI8-R
const unsigned short* CentralEuropeanCodePage();  // Windows-1250; its free bytes are a space or "?"

}  // namespace zel
