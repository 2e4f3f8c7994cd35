#include "launcher/texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "launcher/paths.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using Messages = std::map<std::string, std::string>;

void AppendNumber(std::string& bytes, std::size_t number) {
  const auto word = static_cast<std::uint32_t>(number);
  bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
}

// A compiled message catalogue: a header, two tables of lengths and places, and the texts.
std::string Catalogue(const Messages& messages) {
  constexpr std::size_t kHeader = 7 * 4;
  const std::size_t table = messages.size() * 2 * 4;
  std::string texts;
  std::string english, translated;
  const auto add = [&](std::string& entries, const std::string& text) {
    AppendNumber(entries, text.size());
    AppendNumber(entries, kHeader + 2 * table + texts.size());
    texts += text + '\0';
  };
  for (const auto& [id, text] : messages) {
    add(english, id);
    add(translated, text);
  }
  std::string file;
  for (const std::size_t number : {std::size_t{0x950412DE}, std::size_t{0}, messages.size(),
                                   kHeader, kHeader + table, std::size_t{0}, std::size_t{0}})
    AppendNumber(file, number);
  return file + english + translated + texts;
}

// Says German texts on the standard error stream and ends the process.
void SpeakGerman() {
  {
    const TempDir directory;
    const std::string messages = directory.Path("de/LC_MESSAGES");
    std::filesystem::create_directories(messages);
    const std::string header = "Content-Type: text/plain; charset=UTF-8\n";
    WriteFile(messages + "/quillon.mo", Catalogue({{"", header},
                                                   {"&Cancel", "\a\a&Abbrechen"},
                                                   {"Please wait", "Bitte warten"},
                                                   {"en", "\ade"}}));
    WriteFile(messages + "/tevra.mo", Catalogue({{"", header}, {"&Cancel", "wrong"}}));
    paths.catalogues = directory.Path().c_str();
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("LANGUAGE", "de", 1);
    std::fprintf(stderr, "%s,%s,%s,%s,%s.", Text(1320), Text(1312), LanguageSuffix(), Text(1515),
                 Text(9999));
  }
  std::exit(EXIT_SUCCESS);
}

// In a process of its own: the catalogues are opened once, with the first text.
TEST(TextsDeathTest, AreTranslatedWithoutTheirMarks) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(SpeakGerman(), testing::ExitedWithCode(EXIT_SUCCESS),
              "^&Abbrechen,Bitte warten,de,Back to the previous menu,\\.$");
}

TEST(Texts, AreEnglishWithoutATranslation) {
  EXPECT_STREQ(Text(174), "You must have root permissions to run this program");
  EXPECT_STREQ(Text(1515), "Back to the previous menu");
  EXPECT_STREQ(LanguageSuffix(), "en");
  EXPECT_STREQ(Text(1516), "Waiting for services initialization...");
}

TEST(Texts, OfUnknownIdsAreEmpty) {
  for (const std::uint32_t id : {0u, 1u, 28u, 173u, 175u, 1517u, 9999u, 0xFFFFFFFFu})
    EXPECT_STREQ(Text(id), "") << id;
}

TEST(Texts, EveryEntryOfTheTableIsFound) {
  const TextEntry* entry = TextTable;
  for (; entry->id != 0xFFFFFFFF; ++entry) {
    EXPECT_LT(entry->id, entry[1].id);
    EXPECT_STRNE(Text(entry->id), "") << entry->id;
  }
  EXPECT_STREQ(entry->english, "");
}

}  // namespace
}  // namespace zel
