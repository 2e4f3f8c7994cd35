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

// A compiled message catalogue: a header, two tables of lengths and places, and the texts.
std::string Catalogue(std::map<std::string, std::string> messages) {
  messages[""] = "Content-Type: text/plain; charset=UTF-8\n";
  const auto word = [](std::uint32_t number) {
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
  };
  const std::size_t count = messages.size(), tables = 28;
  std::string texts, english, translated;
  const auto add = [&](std::string& table, const std::string& text) {
    table += word(text.size()) + word(tables + count * 16 + texts.size());
    texts += text + '\0';
  };
  for (const auto& [id, text] : messages) {
    add(english, id);
    add(translated, text);
  }
  return word(0x950412DE) + word(0) + word(count) + word(tables) + word(tables + count * 8) +
         word(0) + word(0) + english + translated + texts;
}

// Says German texts on the standard error stream and ends the process.
void SpeakGerman() {
  const TempDir directory;
  const std::string messages = directory.Path("de/LC_MESSAGES");
  std::filesystem::create_directories(messages);
  WriteFile(messages + "/quillon.mo", Catalogue({{"&Cancel", "\a\a&Abbrechen"}, {"en", "\ade"}}));
  WriteFile(messages + "/tevra.mo", Catalogue({{"&Cancel", "wrong"}}));
  paths.catalogues = directory.Path().c_str();
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("LANGUAGE", "de", 1);
  std::fprintf(stderr, "%s,%s,%s,%s.", Text(1320), LanguageSuffix(), Text(1515), Text(9999));
  std::filesystem::remove_all(directory.Path());
  std::exit(EXIT_SUCCESS);
}

// In a process of its own: the catalogues are opened once, with the first text.
TEST(TextsDeathTest, AreTranslatedWithoutTheirMarks) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(SpeakGerman(), testing::ExitedWithCode(EXIT_SUCCESS),
              "^&Abbrechen,de,Back to the previous menu,\\.$");
}

TEST(Texts, AreEnglishWithoutATranslation) {
  paths.catalogues = "/nowhere";
  EXPECT_STREQ(Text(1516), "Waiting for services initialization...");
  EXPECT_STREQ(LanguageSuffix(), "en");
  for (const std::uint32_t id : {0u, 1u, 28u, 173u, 175u, 1517u, 9999u, 0xFFFFFFFFu})
    EXPECT_STREQ(Text(id), "") << id;
}

}  // namespace
}  // namespace zel
