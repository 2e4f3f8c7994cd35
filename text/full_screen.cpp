#include "text/full_screen.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "launcher/default_start.h"
#include "launcher/item_wait.h"
#include "launcher/progress_file.h"
#include "launcher/texts.h"
#include "text/keys.h"
#include "text/movement.h"
#include "text/repeated_key.h"
#include "text/screen.h"
#include "text/terminal.h"
#include "text/terminal_text.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr int kMarkColumns = 2;
constexpr int kMostHintRows = 8, kFewestHintRows = 2;
constexpr int kMostBarColumns = 50;
constexpr std::int64_t kBusyStep = 500;  // milliseconds
constexpr wchar_t kBusySigns[] = L"|/-\\";

struct Rows {
  int heading = -1, title = -1, list = 0, listCount = 0, hintTitle = -1, hint = 0, hintCount = 0;
  int progress = -1, keys = -1, countdown = -1;
};

class FullScreen {
 public:
  FullScreen(Screen& screen, MenuSession& session) : screen_{screen}, session_{session} {}

  bool Run() {
    default_.Begin(session_, Milliseconds());
    while (!session_.IsChosen()) {
      Draw();
      const int key = ReadKey(Milliseconds() + PollPeriod());
      if (key == kGone) return false;
      if (key >= 0) default_.Stop();
      Handle(key);
      CountDown();
    }
    return true;
  }

 private:
  int ReadKey(std::int64_t until);

  int PollPeriod() const {
    return default_.IsCounting() ? kShortestPoll : std::max(progress_.PollPeriod(), kShortestPoll);
  }
  Rows Place() const;
  void Draw();
  void Put();
  void DrawTitles(const Rows& rows) const;
  void DrawEntry(int index, int row) const;
  void DrawHint(const Rows& rows);
  void DrawProgress(int row) const;

  void Handle(int key);
  bool ScrollHint(int key);
  void MoveTo(int index);
  void CountDown();
  void Choose();
  void ShowHelp();
  void Show(const std::vector<std::wstring>& lines);
  bool WaitFor(const MenuItem& item);
  void DrawWait(const ItemWait& wait, std::size_t busy);

  Screen& screen_;
  MenuSession& session_;
  int first_ = 0, page_ = 1;          // entries of the list
  int hintFirst_ = 0, hintRows_ = 0;  // lines of the hint
  int hintCount_ = 0;                 // all of them
  int cursorRow_ = 0, cursorColumn_ = 0;
  bool isInHint_ = false;
  Movement movement_;
  RepeatedKey repeated_{Milliseconds()};
  DefaultStart default_;
  ProgressFile progressFile_;
  ProgressValues progress_;
  std::int64_t lookAt_ = 0;  // at the progress file
};

// The next key that counts, or what happened instead. Whoever asks draws first.
int FullScreen::ReadKey(std::int64_t until) {
  for (;;) {
    if (const int key = Screen::Key(); key != kKeyNone) {
      if (repeated_.Takes(key, Milliseconds())) return key;
      continue;
    }
    const std::int64_t now = Milliseconds();
    if (const int waited = repeated_.TakeWaiting(now)) return waited;
    if (now >= until) return kKeyNone;
    const std::int64_t pause = until - now;
    switch (Terminal::Wait(repeated_.IsWaiting() ? std::min(pause, RepeatedKey::kWait) : pause)) {
      case Terminal::Event::kResized:
        Screen::TakeSize();
        return kResized;
      case Terminal::Event::kGone:
        return kGone;
      case Terminal::Event::kInput: {
        int count = 0;
        if (ioctl(STDIN_FILENO, FIONREAD, &count) == 0 && count > 0) break;
        return kGone;
      }
      case Terminal::Event::kNone:
        break;
    }
  }
}

Rows FullScreen::Place() const {
  const MenuConfig& config = session_.Config();
  Rows rows;
  int top = 0, bottom = Screen::Rows();
  const auto has = [](const char* text) { return *text != '\0'; };
  if (Screen::Rows() >= 8 && has(session_.Level().heading.text)) rows.heading = top++;
  if (Screen::Rows() >= 4) rows.title = top++;
  if (Screen::Rows() >= 5) rows.keys = --bottom;
  if (Screen::Rows() >= 2 && default_.IsCounting()) rows.countdown = --bottom;
  if (Screen::Rows() >= 3 && progress_.Shows()) rows.progress = --bottom;
  if (Screen::Rows() >= 9 && FileExists(config.hintFile)) {
    const int room = bottom - top - 1;
    rows.hintCount =
        std::clamp(room - session_.Count(), std::clamp(room / 4, kFewestHintRows, kMostHintRows),
                   kMostHintRows);
    rows.hint = bottom - rows.hintCount;
    bottom = rows.hintTitle = rows.hint - 1;
  }
  rows.list = top;
  rows.listCount = std::max(1, bottom - top);
  return rows;
}

void FullScreen::DrawTitles(const Rows& rows) const {
  screen_.Put(rows.heading, 0, Shown(session_.Level().heading.text), Look::kTitle);
  screen_.Put(rows.title, 0, Shown(session_.Config().menuTitle), Look::kStrong);
  const auto [number, count] = PlaceOfCurrent(session_);
  const std::wstring place = std::to_wstring(number) + L'/' + std::to_wstring(count);
  screen_.Put(rows.title, std::max(0, Screen::Columns() - Columns(place)), place);
  const char* keys = session_.Level().keyHelp.text;
  std::wstring help = Shown(Text(kKeysText));
  if (*keys != '\0') {
    const std::wstring own = Shown(keys);
    if (Columns(own) + 2 + Columns(help) <= Screen::Columns()) help = own + L"  " + help;
  }
  screen_.Put(rows.keys, 0, help, Look::kKeys);
}

void FullScreen::DrawEntry(int index, int row) const {
  const MenuItem& item = session_.Entry(index);
  const bool isCurrent = index == session_.Current();
  if (item.flags & kItemSeparator) {
    screen_.Put(row, kMarkColumns,
                std::wstring(static_cast<std::size_t>(std::max(0, Screen::Columns() - 4)), L'-'));
    return;
  }
  std::wstring line = isCurrent ? L"> " : L"  ";
  line += Shown(session_.Title(index));
  std::wstring kind;
  if (item.flags & kItemDisabled)
    kind = L'(' + Shown(Text(kNotAvailableText)) + L')';
  else if (item.flags & kItemSubmenu)
    kind = L'(' + Shown(Text(kSubmenuText)) + L')';
  // Where there is no room for the word, the title matters more.
  const int room = Screen::Columns() - Columns(line) - Columns(kind);
  const Look look = isCurrent ? Look::kCurrent : Look::kPlain;
  if (room > 0) line.append(static_cast<std::size_t>(room), L' ').append(kind);
  screen_.Put(row, 0, line, look);
}

void FullScreen::DrawHint(const Rows& rows) {
  hintCount_ = 0;
  hintRows_ = rows.hintCount;
  if (rows.hintTitle < 0) return;
  const Look look = Look::kHint;
  std::wstring title = Shown(session_.Config().hintTitle);
  screen_.Put(rows.hintTitle, 0,
              (isInHint_ ? L"> " : L"--") + (title.empty() ? title : L' ' + title) + L' ', look);
  const MenuItem* item = session_.CurrentItem();
  if (!item) return;
  std::vector<std::wstring> lines;
  for (const std::wstring& part : ShownLines(item->hintText))
    for (std::wstring& line : Wrapped(part, Screen::Columns())) lines.push_back(std::move(line));
  hintCount_ = static_cast<int>(lines.size());
  hintFirst_ = std::clamp(hintFirst_, 0, std::max(0, hintCount_ - rows.hintCount));
  const int end = std::min(hintCount_, hintFirst_ + rows.hintCount);
  for (int i = hintFirst_; i < end; ++i)
    screen_.Put(rows.hint + i - hintFirst_, 0, lines[static_cast<std::size_t>(i)]);
  if (hintCount_ > rows.hintCount) {
    const std::wstring part =
        std::to_wstring(hintFirst_ + rows.hintCount) + L'/' + std::to_wstring(hintCount_);
    screen_.Put(rows.hintTitle, std::max(0, Screen::Columns() - Columns(part)), part, look);
  }
}

void FullScreen::DrawProgress(int row) const {
  if (row < 0) return;
  const std::int64_t all = std::max(progress_.stepNumber, 1), done = progress_.currentStep;
  const std::wstring numbers =
      L"] " + std::to_wstring(progress_.currentStep) + L'/' + std::to_wstring(progress_.stepNumber);
  const int room = std::clamp(Screen::Columns() - 1 - Columns(numbers), 0, kMostBarColumns);
  const auto full = static_cast<std::size_t>(std::clamp<std::int64_t>(room * done / all, 0, room));
  screen_.Put(row, 0,
              L'[' + std::wstring(full, L'#') +
                  std::wstring(static_cast<std::size_t>(room) - full, L'.') + numbers);
}

void FullScreen::Draw() {
  lookAt_ = 0;
  Put();
  Screen::Show(cursorRow_, cursorColumn_);
}

// What Show then shows, unless something is put in front of it.
void FullScreen::Put() {
  if (const std::int64_t now = Milliseconds(); now >= lookAt_) {
    progress_ = progressFile_.Look(now);
    lookAt_ = now + PollPeriod();
  }
  Screen::Clear();
  const Rows rows = Place();
  DrawTitles(rows);
  page_ = rows.listCount;
  const int current = std::max(session_.Current(), 0);
  first_ = std::clamp(first_, std::max(0, current - page_ + 1), current);
  first_ = std::clamp(first_, 0, std::max(0, session_.Count() - page_));
  for (int i = 0; i < page_ && first_ + i < session_.Count(); ++i)
    DrawEntry(first_ + i, rows.list + i);
  DrawHint(rows);
  DrawProgress(rows.progress);
  if (rows.countdown >= 0)
    screen_.Put(rows.countdown, 0, Shown(default_.Filled(Text(kDefaultText)).c_str()),
                Look::kStrong);
  const bool isInHint = isInHint_ && rows.hintTitle >= 0;
  cursorRow_ = isInHint ? rows.hint : rows.list + current - first_;
  cursorColumn_ = isInHint ? 0 : std::min(kMarkColumns, Screen::Columns() - 1);
}

void FullScreen::MoveTo(int index) {
  if (index < 0) return;
  if (index != session_.Current()) hintFirst_ = 0;
  session_.Select(index);
}

bool FullScreen::ScrollHint(int key) {
  switch (key) {
    case kKeyDown:
      ++hintFirst_;
      return true;
    case kKeyUp:
      --hintFirst_;
      return true;
    case kKeyPageDown:
      hintFirst_ += hintRows_;
      return true;
    case kKeyPageUp:
      hintFirst_ -= hintRows_;
      return true;
    case kKeyHome:
      hintFirst_ = 0;
      return true;
    case kKeyEnd:
      hintFirst_ = hintCount_;
      return true;
    default:
      return false;
  }
}

void FullScreen::Handle(int key) {
  if (isInHint_ && ScrollHint(key)) return;
  switch (key) {
    case '\r':
    case '\n':
    case ' ':
      return Choose();
    case kTab:
      isInHint_ = !isInHint_ && hintRows_ > 0;
      return;
    case kCtrlL:
      Screen::Renew();
      return;
    case '?':
    case kKeyHelp:
      return ShowHelp();
    default:
      return MoveTo(movement_.Target(session_, key, page_));
  }
}

void FullScreen::CountDown() {
  const int entry = default_.Look(Milliseconds());
  if (entry < 0) return;
  session_.Select(entry);
  Choose();
}

void FullScreen::Choose() {
  isInHint_ = false;
  if (!session_.CurrentItem()) return;
  const MenuItem& item = *session_.CurrentItem();
  switch (session_.Choose(item)) {
    case MenuSession::Step::kNothing:
      Screen::Beep();
      return;
    case MenuSession::Step::kOther:
      session_.ReadHints();
      first_ = hintFirst_ = 0;
      return;
    case MenuSession::Step::kWaits:
      if (WaitFor(item)) session_.EndWaiting();
      return;
    case MenuSession::Step::kChosen:
      return;
  }
}

void FullScreen::ShowHelp() {
  std::vector<std::wstring> lines;
  for (const int text :
       {kMoveText, kChooseText, kTypeText, kScrollText, kDrawAgainText, kLeaveText})
    if (text != kTypeText || settings.typeAhead) lines.push_back(Shown(Text(text)));
  Show(lines);
}

// Until a key is pressed.
void FullScreen::Show(const std::vector<std::wstring>& lines) {
  for (;;) {
    Screen::Clear();
    int row = 0;
    for (const std::wstring& line : lines)
      for (const std::wstring& part : Wrapped(line, Screen::Columns())) screen_.Put(row++, 0, part);
    Screen::Show(0, 0);
    const int key = ReadKey(Milliseconds() + PollPeriod());
    if (key != kKeyNone && key != kResized) return;
  }
}

void FullScreen::DrawWait(const ItemWait& wait, std::size_t busy) {
  Put();
  const std::wstring title = Shown(Text(kWaitTitleText));
  std::wstring cancel = Shown(Text(kCancelText));
  cancel.erase(std::remove(cancel.begin(), cancel.end(), L'&'), cancel.end());
  const std::wstring clock =
      wait.HasTimeout() ? std::to_wstring(wait.Seconds()) : std::wstring(1, kBusySigns[busy % 4]);
  constexpr int kMargin = 4, kNarrowest = 20;
  std::vector<std::wstring> message = Wrapped(Shown(wait.Message()), Screen::Columns() - kMargin);
  int longest = std::max(Columns(title), kNarrowest);
  for (const std::wstring& line : message) longest = std::max(longest, Columns(line));
  const int width = std::min(Screen::Columns(), longest + kMargin);
  const int height = static_cast<int>(message.size()) + 6;  // without the last row
  const bool hasFrame = Screen::Rows() > height && Screen::Columns() >= kNarrowest;
  const int left = hasFrame ? (Screen::Columns() - width) / 2 : 0,
            top = hasFrame ? (Screen::Rows() - height - 1) / 2 : 0;
  if (!hasFrame) message.resize(1);
  const std::wstring button = L"[ " + cancel + L" ]";
  std::vector<std::wstring> rows{title, {}};
  rows.insert(rows.end(), message.begin(), message.end());
  rows.insert(rows.end(), {clock, {}, button});
  if (hasFrame) {
    const std::wstring edge = L'+' + std::wstring(static_cast<std::size_t>(width - 2), L'-') + L'+';
    screen_.Put(top, left, edge);
    for (int i = 1; i < height; ++i)
      screen_.Put(top + i, left,
                  L'|' + std::wstring(static_cast<std::size_t>(width - 2), L' ') + L'|');
    screen_.Put(top + height, left, edge);
  } else {
    Screen::Clear();
  }
  int row = top + (hasFrame ? 1 : 0), cursor = 0, column = 0;
  for (const std::wstring& text : rows) {
    if (!hasFrame && text.empty()) continue;
    column = std::max(0, left + (width - Columns(text)) / 2);
    cursor = std::min(row, Screen::Rows() - 1);
    screen_.Put(row++, column, CutToColumns(text, hasFrame ? width - 2 : Screen::Columns()),
                &text == &rows.back() ? Look::kCurrent : Look::kPlain);
  }
  Screen::Show(cursor, std::min(column + kMarkColumns, Screen::Columns() - 1));
}

// True when nothing keeps the item from being chosen any longer, false when the user gave up.
bool FullScreen::WaitFor(const MenuItem& item) {
  ItemWait wait{item};
  if (wait.Check()) return true;
  const std::int64_t start = Milliseconds();
  for (std::int64_t check = start + ItemWait::kPeriod;; check += ItemWait::kPeriod) {
    DrawWait(wait, static_cast<std::size_t>((check - start) / kBusyStep));
    for (int key = kResized; key != kKeyNone;) {
      key = ReadKey(check);
      if (EndsWaiting(key)) return false;
      if (key == kResized) DrawWait(wait, 0);
    }
    if (wait.Check()) return true;
  }
}

}  // namespace

bool RunFullScreen(Screen& screen, MenuSession& session) {
  return FullScreen{screen, session}.Run();
}

}  // namespace zel
