#include "fuzz/targets.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "imageformats/load.h"
#include "imageformats/register.h"
#include "launcher/code_pages.h"
#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/menu_config.h"
#include "launcher/menu_screen.h"
#include "launcher/menu_session.h"
#include "launcher/paths.h"
#include "launcher/progress.h"
#include "launcher/result_files.h"
#include "launcher/state.h"
#include "text/plain_lines.h"
#include "text/terminal_text.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/offscreen.h"
#include "tools/checker/check.h"
#include "tools/preview/http.h"
#include "tools/skin/project.h"

namespace zel {
namespace {

constexpr Size kCanvas{96, 64}, kScreen{320, 240};

// Chosen by the length of the input, so that a fuzzer can find out which one matters.
constexpr int kDepths[] = {16, 32, 8, 24, 15};
constexpr const unsigned short* (*kCodePages[])() = {nullptr, WesternCodePage, RussianCodePage,
                                                     CentralEuropeanCodePage};
bool wantsPalette = false;

// What holds for every file.
void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// All of a file, or what comes before its first zero byte.
std::string ReadAll(const char* file) {
  constexpr std::size_t kLongest = 1 << 20;
  return ReadText(file, kLongest);
}
std::string ReadPlainText(const char* file) {
  const std::string all = ReadAll(file);
  return all.substr(0, all.find('\0'));
}

void TryPicture(const char* file) {
  PALETTE palette;
  const BitmapPtr picture{LoadPicture(file, wantsPalette ? palette : nullptr)};
  if (!picture) return;
  Require(getpixel(picture.get(), picture->w - 1, picture->h - 1) >= 0, "has its last pixel");
}

void WriteWith(const Font& font, const char* text) {
  SkinBitmap canvas(kCanvas.w, kCanvas.h, kMemoryBitmap);
  canvas.clear_bitmap();
  Require(font.TextLength(text) >= 0 && font.TextHeight() >= 0, "a text has an extent");
  font.HotkeyTextout(canvas, text, 5, 5, white, black, Color{}, kAlignLeft);
  font.MultilineTextout(canvas, text, white, Color{}, blue, 40, 0, kCanvas.w / 2, kAlignCentre);
}

void TryFont(const char* file) {
  constexpr const char* kText = "Ag &fi\tH\xC3\xA4 \xD0\x96\n\xE4\xB8\xAD\xF4\x8F\xBF\xBF ~\x7F";
  Font font;
  if (font.Load(file).IsError()) return;
  for (const int size : {0, 9, 40}) {
    if (font.IsEngine()) font.SetSize(size);
    settings.antialiasing = size < 10;
    WriteWith(font, kText);
  }
}

// Any one, whose state no run leaves to the next.
Skin& FreshSkin() {
  static Skin& skin = *new Skin("default");  // not destroyed: Allegro ends before
  skin.Unload();
  return skin;
}

void TryElements(const char* file) {
  Skin& skin = FreshSkin();
  if (skin.LoadData(file).IsError()) return;
  SkinBitmap canvas(kCanvas.w, kCanvas.h, kMemoryBitmap);
  for (int id = 0; id < kElementCount; ++id) {
    const SkinBitmap& element = *skin.bitmaps[id];
    if (element.IsEmpty()) continue;
    element.DrawArea(canvas, 1, 0, 3, 4, 80, 50, 3, 2);
    element.DrawHFrameMasked(canvas, 1, -3, 0, 90, 2);
    element.DrawVFrame(canvas, 0, 1, -5, 70, 4);
  }
}

void TryCursors(const char* file) {
  Skin& skin = FreshSkin();
  settings.mouseShadow = true;
  if (skin.LoadCursors(file).IsError()) return;
  SkinBitmap canvas(kCanvas.w, kCanvas.h, kMemoryBitmap);
  for (int i = 0; i < kCursorCount; ++i) {
    Cursor& cursor = *skin.cursors[i];
    for (int tick = 0; tick < 3 && cursor.GetFrame(); ++tick) {
      cursor.GetShadow()->masked_blit(canvas, 0, 0, 1, 1, kCanvas.w, kCanvas.h);
      cursor.GetFrame()->masked_blit(canvas, 0, 0, 0, 0, kCanvas.w, kCanvas.h);
      cursor.Update();
    }
  }
}

void TrySkin(const char* file) {
  Skin& skin = FreshSkin();
  Require(!skin.Load(file).IsError() || skin.GetError() != Error{kSkinFileError}, "is a skin file");
  for (const auto& states : skin.fontIndex)
    for (const int index : states)
      Require(0 <= index && index < Skin::kFonts, "a text set has a font");
}

// What was saved once is saved alike ever after.
void TrySettings(const char* file) {
  std::string saved[2];
  for (std::string& text : saved) {
    settings = {};
    settings.Load(file);
    settings.Save();
    text = ReadAll(file);
  }
  Require(saved[0] == saved[1], "settings come back as they were saved");
  Require(settings.UsableFrameRate() >= 1 && settings.UsableMouseSpeed() != 0, "can be used");
}

void TryMenu(const char* file) {
  launcherState.layoutValues = {};
  MenuConfig menu;
  for (int depth = 1; depth <= 2; ++depth) {
    menu.Read(file);
    Require(menu.Depth() == depth, "a menu file opens one level");
  }
  menu.Read(nullptr);
  for (const auto& item : menu.items)
    if (!item->submenu.IsEmpty()) FileExists(item->submenu);
}

void TryHints(const char* file) {
  const HintFile hints{file};
  for (const HintFile::Section& section : hints.Sections())
    Require(ustrlen(hints.Fill(section.name.c_str()).c_str()) <= kHintCharacters, "a hint is cut");
}

void TryProgress(const char* file) {
  paths.progressFile = file;
  const ProgressValues values = ReadProgressFile();
  Require(values.PollPeriod() >= 1 && values.currentStep <= values.stepNumber, "can be shown");
}

void TryPosition(const char* file) { ParseMenuPosition(ReadAll(file)); }

void TryLanguage(const char* file) {
  paths.languageFile = file;
  SetupEncoding();
  Require(kEnglish <= LanguageIndex() && LanguageIndex() <= kJapanese, "is a language");
}

void TryText(const char* file) {
  const std::string text = ReadPlainText(file);
  Require(CutToBytes(text.c_str(), 100).size() <= 100, "a text is cut to bytes");
  Require(ustrlen(CutToChars(text.c_str(), 10).c_str()) <= 10, "a text is cut to characters");
  Require(Trimmed(text.c_str()).size() <= text.size(), "a text is trimmed");
  Converted(text, U_UTF8, U_CURRENT);
  Color::FromText(text.c_str());
  WriteWith(Font{}, text.c_str());
}

// Writes several files, which a zero byte parts in this one.
void Part(const char* file, std::initializer_list<const char*> names) {
  std::string rest = ReadAll(file);
  for (const char* name : names) {
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    WriteBytes(name, {rest.data(), end});
    rest.erase(0, end + 1);
  }
}

// Draws on a bitmap of its own.
class Canvas final : public ScreenUpdate {
 public:
  Canvas() { canvas.CreateEx(kDepths[0], kScreen.w, kScreen.h); }
  Error Create() override { return kNoError; }
};

// The launcher with all files that it reads, for a second.
void TryScreen(const char* file) {
  static Offscreen& machine = *new Offscreen;  // which has the clock
  if (!CurrentSkin()) machine.LoadSkin("default");
  set_color_depth(kDepths[0]);
  RecomputeNamedColors();
  Part(file, {"menu.cfg", "hints.txt", "progress", "menupos.txt"});
  paths = {.progressFile = "progress", .outputFile = "output.txt", .positionFile = "menupos.txt"};
  launcherState = {};
  settings.screenWidth = kScreen.w;
  settings.screenHeight = kScreen.h;
  settings.showMouse = settings.useKeyboard = false;
  settings.logicFrameRate = 10;
  SetCurrentScreenUpdate(std::make_unique<Canvas>());
  MenuScreen screen;
  screen.MsgStart();
  for (const int key : {KEY_DOWN, KEY_PGDN, KEY_TAB, KEY_DOWN, KEY_END, KEY_UP}) {
    screen.HandleKey(0, key);
    screen.MsgIdle();
  }
  if (screen.Config().Depth() == 1) screen.Load("menu.cfg");
  for (int tick = 0; tick < settings.logicFrameRate; ++tick) screen.MsgIdle();
  screen.MsgEnd();
}

// The menu in plain lines, to its end by a choice or that of what is typed.
void TryAnswers(const char* file) {
  Part(file, {"menu.cfg", "hints.txt", "progress", "menupos.txt", "typed"});
  paths = {.progressFile = "progress", .outputFile = "output.txt", .positionFile = "menupos.txt"};
  launcherState = {};
  Require(std::freopen("typed", "r", stdin) != nullptr, "it is there");
  // Standard output is closed, and the first file to be opened may take its place.
  const int nowhere = open("/dev/null", O_WRONLY);
  if (nowhere != STDOUT_FILENO) {
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
  }
  MenuSession session;
  session.Open("menu.cfg");
  session.Restore();
  session.ReadHints();
  Require(RunPlainLines(session) == session.IsChosen(), "only a choice or the input ends it");
  for (const int columns : {0, 1, 9})
    for (int i = 0; i < session.Count(); ++i)
      for (const std::wstring& line : Wrapped(Shown(session.Entry(i).hintText), columns))
        Require(Columns(line) <= columns || line.size() == 1, "a line fits");
}

void TryTree(const char* file) {
  Part(file, {"menu.cfg", "zel.cfg", "hints.txt"});
  CheckTree();
}

// A project of a skin that is read without complaint is written so that it reads the same.
void TryProject(const char* file) {
  const FormatGuard format{U_UTF8};
  Complaints complaints;
  const std::string once = ProjectText(ReadProject(".", complaints));
  if (complaints.HasErrors()) return;
  WriteBytes(file, once);
  Require(ProjectText(ReadProject(".", complaints)) == once, "reads as it was written");
}

// What has come over a connection so far, all at once and in pieces: it is the same requests.
void TryRequests(const char* file) {
  constexpr std::size_t kLargest = (1 << 15) + 4;  // head, body and what parts them
  constexpr std::size_t kPiece = 61;
  const std::string bytes = ReadAll(file);
  std::vector<HttpRequest> requests;
  std::string left = bytes;
  HttpRequest request;
  HttpState end = TakeRequest(left, request);
  for (; end == HttpState::kComplete; end = TakeRequest(left, request)) {
    Require(request.Header("transfer-encoding").empty(), "has its length");
    requests.push_back(request);
  }
  Require(left.size() <= kLargest || end == HttpState::kWrong, "nothing piles up");
  std::size_t next = 0;
  left.clear();
  end = HttpState::kIncomplete;
  for (std::size_t at = 0; at < bytes.size() && end != HttpState::kWrong; at += kPiece) {
    left += bytes.substr(at, kPiece);
    while ((end = TakeRequest(left, request)) == HttpState::kComplete) {
      Require(next < requests.size() && request.target == requests[next].target &&
                  request.body == requests[next].body && request.headers == requests[next].headers,
              "is the same request");
      ++next;
    }
  }
  Require(next == requests.size(), "are as many requests");
}

constexpr std::size_t kText = 4096, kPicture = 4096;

constexpr FuzzTarget kTargets[] = {
    {"bmp", "a.bmp", kPicture, TryPicture, ""},
    {"pcx", "a.pcx", kPicture, TryPicture, ""},
    {"lbm", "a.lbm", kPicture, TryPicture, "imageformats/lbm.cpp"},
    {"tga", "a.tga", kPicture, TryPicture, ""},
    {"png", "a.png", kPicture, TryPicture, ""},
    {"jpg", "a.jpg", kPicture, TryPicture, ""},
    {"ttf", "a.ttf", 1 << 16, TryFont, ""},
    {"fnt", "a.fnt", 8192, TryFont, ""},
    {"gridbmp", "a.bmp", 1 << 14, TryFont, ""},
    {"script", "a.txt", kText, TryFont, ""},
    {"datafile", "a.dat", 1 << 14, TryElements, "toolkit/skin/elements.cpp"},
    {"cursors", "a.dat", 1 << 16, TryCursors, "toolkit/draw/cursor.cpp toolkit/skin/skin_data.cpp"},
    {"skin", "a.skin", kText, TrySkin, "toolkit/skin/*.cpp toolkit/draw/cursor.cpp"},
    {"project", "skin.ini", kText, TryProject, "tools/skin/project.cpp toolkit/skin/elements.cpp"},
    {"settings", "a.cfg", kText, TrySettings, "toolkit/base/settings.cpp"},
    {"menu", "a.cfg", kText, TryMenu, "launcher/menu_*.cpp"},
    {"hints", "a.txt", 8192, TryHints, "launcher/hint_file.cpp"},
    {"progress", "progress", kText, TryProgress, "launcher/progress_file.cpp"},
    {"position", "menupos.txt", 512, TryPosition, ""},
    {"language", "i18n", 1024, TryLanguage, "launcher/language.cpp"},
    {"screen", "files", 2 * kText, TryScreen, "launcher/*.cpp"},
    {"text", "a.txt", 2048, TryText, ""},
    {"answers", "files", kText / 2, TryAnswers, "launcher/menu_*.cpp"},
    {"http", "requests", 4 * kText, TryRequests, "tools/preview/http.cpp tools/preview/server.cpp"},
    {"tree", "files", 2 * kText, TryTree,
     "tools/checker/*.cpp launcher/menu_*.cpp toolkit/base/settings.cpp"},
};

// A picture with two characters on a grid of marks.
void WriteGrid(const char* file, int depth, int mark) {
  const BitmapPtr picture{create_bitmap_ex(depth, 19, 10)};
  clear_to_color(picture.get(), mark);
  for (const int x : {1, 10}) {
    rectfill(picture.get(), x, 1, x + 7, 8, 0);
    putpixel(picture.get(), x + 3, 4, 1);
  }
  save_bitmap(file, picture.get(), desktop_palette);
}

// What files of other formats can name.
void WriteFonts() {
  WriteGrid("s.bmp", 8, 255);
  WriteGrid("rgb.bmp", 24, makecol24(255, 255, 0));
  WriteBytes("r.fnt", std::vector<char>(256 * 8, 'f'));
}

// Goes with the process.
struct Directory {
  std::filesystem::path path;
  ~Directory() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

void EnterDirectory() {
  std::string path = std::filesystem::temp_directory_path() / "zel-fuzz.XXXXXX";
  Require(mkdtemp(path.data()) != nullptr, "there is room for a directory");
  static const Directory directory{path};
  std::filesystem::current_path(path);
}

void UseVariant(std::size_t number) {
  set_color_depth(kDepths[number % std::size(kDepths)]);
  number /= std::size(kDepths);
  wantsPalette = number % 2 != 0;
  set_palette(default_palette);
  RecomputeNamedColors();
  set_color_conversion(PictureConversion());
  const auto codePage = kCodePages[number % std::size(kCodePages)];
  set_uformat(codePage ? U_ASCII_CP : U_UTF8);
  if (codePage) set_ucodepage(codePage(), nullptr);
  settings = {};
}

}  // namespace

std::span<const FuzzTarget> FuzzTargets() { return kTargets; }

const FuzzTarget* FindFuzzTarget(const char* name) {
  const auto* found = std::find_if(
      std::begin(kTargets), std::end(kTargets),
      [name](const FuzzTarget& target) { return std::string_view{target.name} == name; });
  return found == std::end(kTargets) ? nullptr : found;
}

void PrepareFuzzing() {
  EnterDirectory();
  std::fclose(stdout);
  install_allegro(SYSTEM_NONE, &errno, std::atexit);
  InstallBitmapGuard();
  RegisterPictureFormats();
  EngineInit();
  WriteFonts();
}

void RunFuzzTarget(const FuzzTarget& target, std::span<const std::uint8_t> bytes) {
  const auto* content = reinterpret_cast<const char*>(bytes.data());
  Require(WriteBytes(target.file, {content, bytes.size()}), "there is room for a file");
  UseVariant(bytes.size());
  target.run(target.file);
}

}  // namespace zel
