#include "toolkit/base/text.h"

#include <cstring>

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

using TextTest = AllegroFixture;

// A text that ends where its memory ends, so that reading on is noticed by an address sanitizer.
std::vector<char> Exact(const std::string& text) {
  return {text.c_str(), text.c_str() + text.size() + 1};
}

TEST_F(TextTest, CuttingKeepsCharactersWhole) {
  const char* text = "a\u00E9\u20AC\U0001F600z";  // of 1, 2, 3, 4 and 1 bytes
  constexpr std::size_t kBytes[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
  for (std::size_t limit = 0; limit < std::size(kBytes); ++limit)
    EXPECT_EQ(CutToBytes(text, limit), std::string(text, kBytes[limit])) << limit;
  EXPECT_EQ(CutToChars(text, 2), "a\u00E9");
  EXPECT_EQ(CutToChars(text, 100), text);
  EXPECT_EQ(CutToChars(text, -1), "");
  FixedText<4> fixed{"abcd"};
  EXPECT_STREQ(fixed, "abc") << "with its terminator";
  fixed.Assign(nullptr);
  EXPECT_TRUE(fixed.IsEmpty());
  set_uformat(U_ASCII_CP);
  EXPECT_EQ(CutToChars(text, 2) + CutToBytes(text, 2),
            "a\xC3"
            "a\xC3");
}

TEST_F(TextTest, WhatIsNoCharacterIsShownAsAllegroShowsIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"a\xC3", "a^"},                // ends after a lead byte
      {"\xE2\x82", "^"},              // and before the last byte
      {"\xE2\x82z", "^z"},            // goes on too early
      {"\xF0\xC3\xA9", "^\xC3\xA9"},  // with another character
      {"\x80\xBFz", "^z"},            // no lead byte
      {"\xC0\xAFz", "^z"},            // longer than need be
      {"\xE0\x80\x8A\xF0\x80\x80\x80z", "^^z"},
      {"\xF4\x90\x80\x80 \xF4\x8F\xBF\xBF \xE0\xA0\x80", "^ \xF4\x8F\xBF\xBF \xE0\xA0\x80"},
      {"\xFF\xFE", "^^"},                // never a lead byte
      {"\xC3\xA9\xA9z", "\xC3\xA9^z"}};  // a tail too many
  for (const auto& [bytes, kept] : cases) {
    EXPECT_EQ(CutToBytes(Exact(bytes).data(), 100), kept);
    EXPECT_EQ(CutToChars(Exact(bytes).data(), 100), kept);
  }
}

TEST_F(TextTest, TrimmedLosesTheWhiteSpaceOfTheFormat) {
  EXPECT_EQ(Trimmed(" \t\r\n"), "");
  EXPECT_EQ(Trimmed("\f two words \v"), "two words");
  EXPECT_EQ(Trimmed("\u3000\u4E2D\u3000\u6587\u3000"), "\u4E2D\u3000\u6587");
  EXPECT_EQ(Trimmed(Exact(" a\xC3 ").data()), "a\xC3");
  EXPECT_EQ(Trimmed(Exact("a \xE3\x80").data()), "a \xE3\x80");
  set_uformat(U_ASCII);
  EXPECT_EQ(Trimmed(" a\xE3\x80\x80 "), "a\xE3\x80\x80");
  EXPECT_STREQ(Ascii("Title 1"), "Title 1");
  set_uformat(U_UNICODE);
  EXPECT_EQ(std::memcmp(Ascii{"ab"}, u"ab", 6), 0);
}

}  // namespace
}  // namespace zel
