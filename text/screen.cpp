#include "text/screen.h"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "text/key_sequences.h"
#include "text/terminal.h"
#include "text/terminal_text.h"

// The functions for wide characters, and no macros in their place.
#define NCURSES_WIDECHAR 1
#define NCURSES_NOMACROS 1
#include <curses.h>
#include <term.h>
#undef columns
#undef lines

namespace zel {
namespace {

// Larger terminals are a mistake of whoever told the size.
constexpr int kMostColumns = 1000, kMostRows = 500;
constexpr int kEscapeDelay = 100;  // milliseconds for the rest of a key's letters, at 1,200 baud

enum ColorPair : short { kNoPair, kTitlePair, kCurrentPair, kHintPair };

const char* Capability(const char* name) {
  const char* text = tigetstr(name);
  return text == reinterpret_cast<const char*>(-1) ? nullptr : text;
}

// What leaves the full screen, without the pauses that old terminals need.
std::string LeavingText() {
  std::string text;
  for (const char* name : {"sgr0", "rmkx", "cnorm", "rmcup"}) {
    const char* sequence = Capability(name);
    for (const char* at = sequence ? sequence : ""; *at != '\0'; ++at) {
      const char* end = at[0] == '$' && at[1] == '<' ? std::strchr(at, '>') : nullptr;
      if (end)
        at = end;
      else
        text += *at;
    }
  }
  return text + "\r\n";
}

// Curses has put them back to what they were when it began to read single characters.
void KeepKeysFromSignals() {
  termios modes{};
  if (tcgetattr(STDIN_FILENO, &modes) != 0) return;
  modes.c_lflag &= static_cast<tcflag_t>(~ISIG);
  tcsetattr(STDIN_FILENO, TCSANOW, &modes);
  def_prog_mode();
}

// The number that curses has for a key.
int NumberOf(int key) {
  switch (key) {
    case kKeyUp:
      return KEY_UP;
    case kKeyDown:
      return KEY_DOWN;
    case kKeyPageUp:
      return KEY_PPAGE;
    case kKeyPageDown:
      return KEY_NPAGE;
    case kKeyHome:
      return KEY_HOME;
    case kKeyEnd:
      return KEY_END;
    case kKeyHelp:
      return KEY_F(1);
    default:
      return KEY_LEFT;  // which means nothing
  }
}

// What terminals of another kind than TERM says send: an escape that is none would end waiting.
void KnowCommonKeys() {
  for (const auto& [sequence, key] : kKeySequences) {
    const std::string bytes = std::string{"\033"} + sequence;
    if (key_defined(bytes.c_str()) == 0) define_key(bytes.c_str(), NumberOf(key));
  }
}

attr_t AttributesOf(Look look, bool hasColors) {
  struct Row {
    attr_t plain;
    ColorPair pair;
  };
  constexpr Row kRows[] = {{A_NORMAL, kNoPair},       {A_BOLD, kNoPair},   {A_BOLD, kTitlePair},
                           {A_REVERSE, kCurrentPair}, {A_BOLD, kHintPair}, {A_NORMAL, kTitlePair}};
  const Row& row = kRows[static_cast<int>(look)];
  if (!hasColors || row.pair == kNoPair) return row.plain;
  const attr_t colors = static_cast<attr_t>(COLOR_PAIR(row.pair));
  return look == Look::kCurrent ? colors | A_BOLD : colors | row.plain;
}

bool IsUsable(const char* terminal) {
  if (!terminal || std::strcmp(terminal, "dumb") == 0 || std::strcmp(terminal, "unknown") == 0)
    return false;
  if (isatty(STDIN_FILENO) == 0 || isatty(STDOUT_FILENO) == 0) return false;
  const Terminal::Size size = Terminal::GetSize();
  if (size.columns > kMostColumns || size.rows > kMostRows) return false;
  int error = 0;
  if (setupterm(terminal, STDOUT_FILENO, &error) != OK) return false;
  const bool placesCursor = Capability("cup");
  // The screen has a description of its own.
  del_curterm(cur_term);
  return placesCursor;
}

}  // namespace

std::unique_ptr<Screen> Screen::Start() {
  const char* terminal = std::getenv("TERM");
  if (!IsUsable(terminal)) return nullptr;
  SCREEN* handle = newterm(terminal, stdout, stdin);
  if (!handle) return nullptr;
  return std::unique_ptr<Screen>{new Screen{handle}};
}

Screen::Screen(void* handle) : handle_{handle} {
  cbreak();
  noecho();
  nonl();
  keypad(stdscr, TRUE);
  nodelay(stdscr, TRUE);
  set_escdelay(kEscapeDelay);
  KnowCommonKeys();
  KeepKeysFromSignals();
  if (has_colors() && start_color() == OK && use_default_colors() == OK) {
    hasColors_ = true;
    init_pair(kTitlePair, COLOR_CYAN, -1);
    init_pair(kCurrentPair, COLOR_WHITE, COLOR_BLUE);
    init_pair(kHintPair, COLOR_GREEN, -1);
  }
  leaving_ = LeavingText();
  Terminal::LeaveWith(leaving_);
}

Screen::~Screen() {
  endwin();
  Terminal::LeaveWith({});
  delscreen(static_cast<SCREEN*>(handle_));
}

int Screen::Rows() { return LINES; }
int Screen::Columns() { return COLS; }

void Screen::TakeSize() {
  const Terminal::Size size = Terminal::GetSize();
  resizeterm(std::clamp(size.rows, 1, kMostRows), std::clamp(size.columns, 1, kMostColumns));
  Renew();  // nobody knows what the terminal has made of what it showed
}

void Screen::Renew() { clearok(curscr, TRUE); }

void Screen::Beep() { beep(); }

void Screen::Clear() { werase(stdscr); }

void Screen::Put(int row, int column, const std::wstring& text, Look look) const {
  if (row < 0 || row >= LINES || column >= COLS) return;
  wattrset(stdscr, static_cast<int>(AttributesOf(look, hasColors_)));
  mvwaddwstr(stdscr, row, column, CutToColumns(text, COLS - column).c_str());
  wattrset(stdscr, A_NORMAL);
}

void Screen::Show(int row, int column) {
  wmove(stdscr, std::clamp(row, 0, LINES - 1), std::clamp(column, 0, COLS - 1));
  wrefresh(stdscr);
}

int Screen::Key() {
  const int key = wgetch(stdscr);
  switch (key) {
    case ERR:
      return kKeyNone;
    case KEY_DOWN:
      return kKeyDown;
    case KEY_UP:
      return kKeyUp;
    case KEY_NPAGE:
    case KEY_C3:
      return kKeyPageDown;
    case KEY_PPAGE:
    case KEY_A3:
      return kKeyPageUp;
    case KEY_HOME:
    case KEY_FIND:  // which Home is by the description of vt220, as Select is End
    case KEY_A1:
      return kKeyHome;
    case KEY_END:
    case KEY_SELECT:
    case KEY_C1:
      return kKeyEnd;
    case KEY_ENTER:
      return '\r';
    case KEY_F(1):
      return kKeyHelp;
    default:
      return key < KEY_MIN ? key : kKeyOther;
  }
}

}  // namespace zel
