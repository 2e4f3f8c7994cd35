// Texts as a terminal can show them: wide characters of its character set, and how many columns
// they take.
#pragma once

#include <string>
#include <vector>

namespace zel {

// From here on only what the font of the console behind this descriptor has counts as a letter that
// can be shown. Nothing for other terminals, whose locale alone says that.
void KeepToFontOf(int terminal);

// A text in Allegro's current format. Letters that the terminal lacks come as near as they can, in
// ASCII; what is no letter, a line feed too, is a space.
std::wstring Shown(const char* text);
// The same, with a part for each line feed.
std::vector<std::wstring> ShownLines(const char* text);

int Columns(const std::wstring& text);
// As much of a text as fits so many columns.
std::wstring CutToColumns(const std::wstring& text, int columns);
// A text in lines of at most so many columns, or of one letter where there is not even room for
// that; between words where there are spaces.
std::vector<std::wstring> Wrapped(const std::wstring& text, int columns);

// A text of Shown's in the bytes of the terminal.
std::string Encoded(const std::wstring& text);

}  // namespace zel
