#include "toolkit/core/text.h"

#include <array>
#include <cstring>
#include <memory>

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

constexpr std::array<unsigned short, 256> kCodePage = [] {
  std::array<unsigned short, 256> page{};
  for (int i = 0; i < 256; ++i) page[i] = static_cast<unsigned short>(i < 128 ? i : 0x400 + i);
  return page;
}();

// A text that ends where its memory ends, so that reading on is noticed by an address sanitizer.
class ExactText {
 public:
  explicit ExactText(const std::string& text) : bytes_{new char[text.size() + 1]} {
    std::memcpy(bytes_.get(), text.c_str(), text.size() + 1);
  }
  operator const char*() const { return bytes_.get(); }

 private:
  std::unique_ptr<char[]> bytes_;
};

class TextTest : public AllegroFixture {};

TEST_F(TextTest, FixedTextKeepsWhatFitsWithItsTerminator) {
  FixedText<4> text{"abc"};
  EXPECT_STREQ(text, "abc");
  text.Assign("abcd");
  EXPECT_STREQ(text, "abc");
  text.Assign(nullptr);
  EXPECT_TRUE(text.IsEmpty());
}

TEST_F(TextTest, CuttingToBytesKeepsCharactersWhole) {
  const char* text = "a\u00E9\u20AC\U0001F600z";  // of 1, 2, 3, 4 and 1 bytes
  constexpr std::size_t kBytes[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
  for (std::size_t limit = 0; limit < std::size(kBytes); ++limit)
    EXPECT_EQ(CutToBytes(text, limit), std::string(text, kBytes[limit])) << limit;
}

TEST_F(TextTest, CuttingToCharactersCountsThemAsTheFormatDoes) {
  const char* text = "a\u00E9\u20ACz";
  EXPECT_EQ(CutToChars(text, 2), "a\u00E9");
  EXPECT_EQ(CutToChars(text, 100), text);
  EXPECT_EQ(CutToChars(text, -1), "");
  for (const int format : {U_ASCII, U_ASCII_CP}) {
    set_uformat(format);
    EXPECT_EQ(CutToChars(text, 2), "a\xC3");
    EXPECT_EQ(CutToBytes(text, 2), "a\xC3");
  }
}

TEST_F(TextTest, WhatIsNoCharacterIsShownAsAllegroShowsIt) {
  const auto expect = [](const char* bytes, const char* kept) {
    const ExactText text{bytes};
    EXPECT_EQ(CutToBytes(text, 100), kept);
    EXPECT_EQ(CutToChars(text, 100), kept);
  };
  expect("a\xC3", "a^");                  // ends after a lead byte
  expect("\xE2\x82", "^");                // and before the last byte
  expect("\xE2\x82z", "^z");              // goes on too early
  expect("\xF0\xC3\xA9", "^\xC3\xA9");    // with another character
  expect("\x80\xBFz", "^z");              // no lead byte
  expect("\xC0\xAFz", "^z");              // longer than need be
  expect("\xFF\xFE", "^^");               // never a lead byte
  expect("\xC3\xA9\xA9z", "\xC3\xA9^z");  // a tail too many
}

// Every beginning of every string of such bytes stays within its limit and can be walked by Allegro
// without leaving it.
TEST_F(TextTest, CutTextCanBeWalkedSafely) {
  constexpr char kBytes[] = {'a', ' ', '\x80', '\xC3', '\xE2', '\xF0', '\xFE', '\xFF'};
  for (int number = 0; number < 8 * 8 * 8 * 8; ++number) {
    std::string bytes;
    for (int rest = number; static_cast<int>(bytes.size()) < 4; rest /= 8)
      bytes += kBytes[rest % 8];
    for (std::size_t limit = 0; limit <= bytes.size(); ++limit) {
      const ExactText kept{CutToBytes(ExactText{bytes}, limit)};
      ASSERT_LE(std::strlen(kept), limit);
      const char* at = kept;
      while (*at != '\0') at += uwidth(at);
      ASSERT_EQ(at, kept + std::strlen(kept));
    }
  }
}

TEST_F(TextTest, TrimmedLosesTheWhiteSpaceOfTheFormat) {
  EXPECT_EQ(Trimmed(""), "");
  EXPECT_EQ(Trimmed(" \t\r\n"), "");
  EXPECT_EQ(Trimmed("\f two words \v"), "two words");
  EXPECT_EQ(Trimmed("\u3000\u4E2D\u3000\u6587\u3000"), "\u4E2D\u3000\u6587");
  EXPECT_EQ(Trimmed(ExactText{" a\xC3 "}), "a\xC3");
  EXPECT_EQ(Trimmed(ExactText{"a \xE3\x80"}), "a \xE3\x80");
  set_uformat(U_ASCII);
  EXPECT_EQ(Trimmed(" a\xE3\x80\x80 "), "a\xE3\x80\x80");
}

TEST_F(TextTest, AsciiIsConvertedToTheCurrentFormat) {
  set_ucodepage(kCodePage.data(), nullptr);
  for (const int format : {U_ASCII, U_ASCII_CP, U_UTF8}) {
    set_uformat(format);
    EXPECT_STREQ(Ascii("Title 1"), "Title 1");
  }
  set_uformat(U_UNICODE);
  const Ascii wide{"ab"};
  const unsigned short expected[] = {'a', 'b', 0};
  EXPECT_EQ(std::memcmp(wide, expected, sizeof expected), 0);
}

}  // namespace
}  // namespace zel
