#include "toolkit/base/text.h"

#include <cstring>
#include <vector>

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
  for (const int format : {U_ASCII, U_ASCII_CP}) {
    set_uformat(format);
    EXPECT_EQ(CutToChars(text, 2), "a\xC3");
    EXPECT_EQ(CutToBytes(text, 2), "a\xC3");
  }
}

TEST_F(TextTest, WhatIsNoCharacterIsShownAsAllegroShowsIt) {
  const auto expect = [](const char* bytes, const char* kept) {
    EXPECT_EQ(CutToBytes(Exact(bytes).data(), 100), kept);
    EXPECT_EQ(CutToChars(Exact(bytes).data(), 100), kept);
  };
  expect("a\xC3", "a^");                // ends after a lead byte
  expect("\xE2\x82", "^");              // and before the last byte
  expect("\xE2\x82z", "^z");            // goes on too early
  expect("\xF0\xC3\xA9", "^\xC3\xA9");  // with another character
  expect("\x80\xBFz", "^z");            // no lead byte
  expect("\xC0\xAFz", "^z");            // longer than need be
  expect("\xE0\x80\x8A\xF0\x80\x80\x80z", "^^z");
  expect("\xFF\xFE", "^^");               // never a lead byte
  expect("\xC3\xA9\xA9z", "\xC3\xA9^z");  // a tail too many
}

// Every beginning of every string of such bytes stays within its limit and can be walked by Allegro
// without leaving it.
TEST_F(TextTest, CutTextCanBeWalkedSafely) {
  constexpr char kBytes[] = {'a', ' ', '\x80', '\xC3', '\xE2', '\xF0', '\xFE', '\xFF'};
  for (int number = 0; number < 8 * 8 * 8 * 8; ++number) {
    std::string bytes;
    for (const int digit : {1, 8, 64, 512}) bytes += kBytes[number / digit % 8];
    for (std::size_t limit = 0; limit <= 4; ++limit) {
      const std::vector<char> kept = Exact(CutToBytes(Exact(bytes).data(), limit));
      const char* at = kept.data();
      while (*at != '\0') at += uwidth(at);
      ASSERT_EQ(at, &kept.back());
      ASSERT_LE(kept.size(), limit + 1);
    }
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
