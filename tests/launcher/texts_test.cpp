#include "launcher/texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "launcher/paths.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using Messages = std::vector<std::pair<std::string, std::string>>;  // sorted

// A compiled message catalogue: a header, two tables of lengths and places, and the texts.
std::string Catalogue(const Messages& messages) {
  const auto count = static_cast<std::uint32_t>(messages.size()), tables = 28 + 16 * count;
  std::vector<std::uint32_t> words = {0x950412DE, 0, count, 28, 28 + 8 * count, 0, 0};
  std::string texts;
  for (const auto half : {&Messages::value_type::first, &Messages::value_type::second})
    for (const auto& message : messages) {
      words.push_back((message.*half).size());
      words.push_back(tables + texts.size());
      texts += message.*half + '\0';
    }
  return std::string{reinterpret_cast<const char*>(words.data()), tables} + texts;
}

// Says German texts on the standard error stream and ends the process.
void SpeakGerman() {
  const TempDir directory;
  const std::string messages = directory.Path("de/LC_MESSAGES");
  std::filesystem::create_directories(messages);
  WriteFile(messages + "/quillon.mo", Catalogue({{"", "Content-Type: text/plain; charset=UTF-8\n"},
                                                 {"&Cancel", "\a\a&Abbrechen"},
                                                 {"en", "\ade"}}));
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
