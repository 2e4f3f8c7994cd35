#include "launcher/texts.h"

#include <langinfo.h>
#include <libintl.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>

#include "launcher/paths.h"
#include "launcher/state.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

// Marks a text for the catalogue template (tools/update-po).
constexpr const char* N_(const char* english) { return english; }

}  // namespace

const TextEntry TextTable[] = {
    {kNotRootText, N_("You must have root permissions to run this program")},
    {kWaitTitleText, N_("Please wait")},
    // TRANSLATORS: The key of this button is C in every language: mark a C with the ampersand.
    {kCancelText, N_("&Cancel")},
    {kNoGraphicsText,
     // TRANSLATORS: Shown on a text console of 80 columns.
     N_("The program can not start due to incorrect BIOS settings\n"
        "or a lack of video memory on your computer. Please inform our\n"
        "support team and we can help you.\n"
        "If you are an experienced PC user, you can try by yourself to increase,\n"
        "for example, the <Frame Buffer Size> setting in the <Video configuration>\n"
        "part of your BIOS. It may help.")},
    {kBackText, N_("Back to the previous menu")},
    {kWaitingText, N_("Waiting for services initialization...")},
    // TRANSLATORS: The texts from here to "Progress:" are for terminals. The first two say in
    // brackets behind a menu entry what it is.
    {kSubmenuText, N_("submenu")},
    {kNotAvailableText, N_("not available")},
    // TRANSLATORS: Asks for an answer, which is typed behind it.
    {kNumberText, N_("Number of an entry, or ? for help:")},
    {kNumberOrBackText, N_("Number of an entry, 0 to go back, or ? for help:")},
    {kPlainHelpText, N_("Type the number of an entry and press Enter to choose it.\n"
                        "?3 explains entry 3.\n"
                        "0 goes back to the previous menu.\n"
                        "Enter alone shows the menu again.")},
    {kNoEntryText, N_("There is no such entry.")},
    {kNoHintText, N_("There is no explanation.")},
    {kEnterCancelsText, N_("Enter cancels.")},
    {kHowFarText, N_("Progress:")},
    // TRANSLATORS: These explain the keys, each in a line; shorter is better.
    {kMoveText, N_("Arrow keys, Page Up, Page Down, Home, End: move")},
    {kKeysText, N_("F1 or ?: help")},
    {kChooseText, N_("Enter or Space: choose, open a submenu, go back")},
    {kScrollText, N_("Tab: scroll the explanation, and back to the menu")},
    {kDrawAgainText, N_("Ctrl+L: draw the screen again")},
    {kLeaveText, N_("Any key leaves this help.")},
    {kTypeText, N_("Letters or a number: go to that entry")},
    {kSkinText, N_("F2: another look")},
    {kSizeText, N_("F3, F4: smaller or larger text")},
    {kHelpTitleText, N_("Keys")},
    // TRANSLATORS: %1 is a menu entry, %2 a number of seconds, which counts down.
    {kDefaultText, N_("%1 starts in %2 s. Any key stops it.")},
    {kPlainDefaultText, N_("%1 starts in %2 s. Enter stops it.")},
    // TRANSLATORS: Spoken behind the name of a menu entry: which one it is, and of how many.
    {kPlaceText, N_("%1 of %2")},
    {kSpokenHelpText, N_("Tab: say the entry and its explanation again")},
    {0xFFFFFFFF, ""},
};

namespace {

constexpr const char* kBrandDomain = "tevra";
constexpr std::uint32_t kLastBrandId = 28;

// A mark at the beginning of some texts that is never shown.
constexpr char kMark = '\a';

void OpenCatalogues() {
  if (std::exchange(launcherState.catalogues.areOpen, true)) return;
  std::setlocale(LC_ALL, "");
  // Numbers keep their decimal point, in files as on the screen.
  std::setlocale(LC_NUMERIC, "C");
  bindtextdomain(kTextDomain, paths.catalogues);
  bindtextdomain(kBrandDomain, paths.catalogues);
}

const char* InCurrentFormat(const char* utf8) {
  const auto [place, isNew] = launcherState.catalogues.forAllegro->try_emplace(utf8);
  if (isNew) place->second = Converted(Sound(utf8, U_UTF8), U_UTF8, U_CURRENT);
  return place->second.c_str();
}

const char* Translate(const char* domain, const char* english) {
  OpenCatalogues();
  const char* text = dcgettext(domain, english, LC_MESSAGES);
  while (*text == kMark) ++text;
  return launcherState.catalogues.forAllegro ? InCurrentFormat(text) : text;
}

void SetEncoding(const char* codeset) {
  bind_textdomain_codeset(kTextDomain, codeset);
  bind_textdomain_codeset(kBrandDomain, codeset);
}

const char* English(std::uint32_t id) {
  const TextEntry* last = std::prev(std::end(TextTable));
  const TextEntry* found = std::lower_bound(
      std::begin(TextTable), last, id,
      [](const TextEntry& entry, std::uint32_t wanted) { return entry.id < wanted; });
  return found->id == id ? found->english : last->english;
}

}  // namespace

const char* Text(std::uint32_t id) {
  const char* english = English(id);
  // The empty message id would give the catalogue's header.
  if (*english == '\0') return english;
  return Translate(id <= kLastBrandId ? kBrandDomain : kTextDomain, english);
}

void SetTextLanguage(const char* catalogue) {
  setenv("LANGUAGE", catalogue, 1);
  textdomain(kTextDomain);  // has texts looked up anew that were found in another language
  SetEncoding("UTF-8");
  launcherState.catalogues.forAllegro.emplace();
}

void UseEncodingOfLocale() {
  OpenCatalogues();
  launcherState.catalogues.forAllegro.reset();
  SetEncoding(nl_langinfo(CODESET));
}

std::string Filled(const char* text, const std::string& first, const std::string& second) {
  std::string filled = text;
  const auto fill = [&filled](const char* place, const std::string& value) {
    if (const std::size_t at = filled.find(place); at != std::string::npos)
      filled.replace(at, 2, value);
  };
  // The first value may hold what stands for the second.
  fill("%2", second);
  fill("%1", first);
  return filled;
}

// TRANSLATORS: The suffix of keys in menu files, such as Title.de: the code of the language.
const char* LanguageSuffix() { return Translate(kTextDomain, N_("en")); }

}  // namespace zel
