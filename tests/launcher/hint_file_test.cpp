#include "launcher/hint_file.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using HintFileTest = AllegroFixture;

std::string Hint(const std::string& content) {
  return HintFile{TempFile{content}.Path()}.Fill("a");
}

TEST_F(HintFileTest, JoinsTheLinesOfASection) {
  const std::pair<const char*, const char*> rows[] = {
      {"before\n [a]\t\n  one \n\ttwo\n[End: whatever\nthree\n", "one two"},
      {"[A]\nno\n[end:A]\n[a ]\nno\n[end:]\n[a]\nyes\n[END:A]", "yes"},
      {"[a]\nfirst\n[end:a]\n[a]\nsecond\n[end:a]\n", "first"},
      {"[a]\n[b]\n[end\nend:a]\n[eNd:\n", "[b] [end end:a]"},
      {"[a]\n\n\none\n\n\n[end:a]\n", "\n\n one"},
      {"[a]\rone\r\ntwo\n\rthree\r\n\r\nfour\n[end:a]\n", "one two three\n four"},
      {"[a]\none\ntwo", "one"},
      {"[a]\none\ntwo\n\n", "one two"},
      {"[a]", ""}};
  for (const auto& [content, hint] : rows) EXPECT_EQ(Hint(content), hint) << content;
  for (const char* name : {"", "/no/such/file", "/", "/dev/zero"})
    EXPECT_EQ(HintFile{name}.Fill("a"), "") << name;
}

TEST_F(HintFileTest, LongHintsAreCutAtAWholeCharacter) {
  const std::string line(2000, 'x');
  const std::string almost = line + '\n' + line + '\n' + line.substr(0, 93);
  EXPECT_EQ(Hint("[a]\n" + almost + "0\n1\n[end:]").size(), 4096u);
  // With 4095 characters there is room for one more, but not for the space before it.
  EXPECT_EQ(Hint("[a]\n" + almost + "\nyz\nz\n[end:]").substr(4090), "xxxxxy");
  EXPECT_EQ(Hint("[a]\n" + line + line + "\n1\n[end:]"), line + line.substr(0, 47) + " 1");

  std::string umlauts, content = "[a]\n";
  for (int i = 0; i < 1500; ++i) umlauts += "\xC3\xA4";
  for (int i = 0; i < 5; ++i) content += umlauts + '\n';
  content += "[end:]";
  EXPECT_EQ(ustrlen(Hint(content).c_str()), 4096);
  EXPECT_EQ(Hint(content).substr(0, 2050), umlauts.substr(0, 2046) + " \xC3\xA4\xC3");
  set_uformat(U_ASCII_CP);  // where the same bytes are twice as many characters
  EXPECT_EQ(Hint(content).size(), 4096u);
}

}  // namespace
}  // namespace zel
