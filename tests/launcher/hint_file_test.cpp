#include "launcher/hint_file.h"

#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class HintFileTest : public AllegroFixture {
 protected:
  static std::string Hint(const std::string& content, const char* section = "a") {
    return HintFile{TempFile{content}.Path()}.Fill(section);
  }
  // A section of lines of x, each so long.
  static std::string Lines(std::initializer_list<int> lengths) {
    std::string content = "[a]\n";
    for (const int length : lengths) content += std::string(length, 'x') + '\n';
    return content;
  }
};

TEST_F(HintFileTest, JoinsTheLinesOfASection) {
  struct Row {
    const char* content;
    const char* hint;
  };
  constexpr Row kRows[] = {
      {"[a]\none\ntwo\n[end:a]\n", "one two"},
      {"before\n [a]\t\n  one \n\ttwo\n[End: whatever\nthree\n", "one two"},
      {"[A]\nno\n[end:A]\n[a ]\nno\n[end:]\n[a]\nyes\n[END:A]", "yes"},
      {"[a]\nfirst\n[end:a]\n[a]\nsecond\n[end:a]\n", "first"},
      {"[a]\n[b]\n[end\nend:a]\n[eNd:\n", "[b] [end end:a]"},
      {"[a]\none\n\ntwo\n[end:a]\n", "one\n two"},
      {"[a]\n\n\none\n\n\n[end:a]\n", "\n\n one"},
      {"[a]\rone\r\ntwo\n\rthree\n[end:a]\n", "one two three"},
      {"[a]\r\none\r\n\r\ntwo\r\n[end:a]\r\n", "one\n two"},
      {"[a]\none\ntwo\n", "one"},
      {"[a]\none\ntwo", "one"},
      {"[a]\none\ntwo\n\n", "one two"},
      {"[a]\none\n", ""},
      {"[a]", ""},
      {"[b]\none\n[end:b]\n", ""},
      {"", ""},
  };
  for (const Row& row : kRows) EXPECT_EQ(Hint(row.content), row.hint) << row.content;
  EXPECT_EQ(Hint(std::string("[a]\none\n\0[end:a]\n", 18)), "") << "a zero byte ends the file";
}

TEST_F(HintFileTest, LongHintsAreCut) {
  EXPECT_EQ(Hint(Lines({2000, 2000, 2000, 5, 5})).size(), 4096u);
  // With 4095 characters there is room for one more, but not for the space before it.
  EXPECT_EQ(Hint(Lines({2000, 2000, 93}) + "yz\nz\n[end:a]"), Lines({2000}).substr(4, 2000) + ' ' +
                                                                  std::string(2000, 'x') + ' ' +
                                                                  std::string(93, 'x') + 'y');
  EXPECT_EQ(Hint(Lines({5000, 1}) + "[end:a]"), std::string(2047, 'x') + " x");
}

TEST_F(HintFileTest, LimitsCountCharactersAndCutNone) {
  std::string line;
  for (int i = 0; i < 1500; ++i) line += "\xC3\xA4";  // a-umlaut
  std::string content = "[a]\n";
  for (int i = 0; i < 6; ++i) content += line + '\n';
  const std::string hint = Hint(content);
  EXPECT_EQ(ustrlen(hint.c_str()), 4096);
  EXPECT_EQ(hint.substr(0, 2050), line.substr(0, 2046) + " \xC3\xA4\xC3");
  // In a code page the same bytes are twice as many characters.
  set_uformat(U_ASCII_CP);
  EXPECT_EQ(Hint(content).size(), 4096u);
}

TEST_F(HintFileTest, UnusableFilesHaveNoHints) {
  for (const char* name : {"", "/no/such/file", "/", "/dev/zero"})
    EXPECT_EQ(HintFile{name}.Fill("a"), "") << name;
}

}  // namespace
}  // namespace zel
