#include "text/spoken_lines.h"

#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "launcher/default_start.h"
#include "launcher/item_wait.h"
#include "launcher/texts.h"
#include "text/keys.h"
#include "text/movement.h"
#include "text/progress_news.h"
#include "text/repeated_key.h"
#include "text/terminal.h"
#include "text/terminal_text.h"
#include "text/typed_keys.h"
#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr int kPage = 5;  // entries
// Screen readers do not speak what is written within about 0.12 seconds after an arrow key: they
// wait for the cursor to come to rest, and speak its line. So the line with the cursor comes at
// once, and the rest later.
constexpr std::int64_t kRestDelay = 300;
constexpr std::int64_t kProgressPause = 10000;  // milliseconds between two lines that say how far

using Lines = std::vector<std::wstring>;

// Each key by itself, and none shown. Whoever has the terminal puts it back.
void TakeKeysSingly() {
  termios modes{};
  if (tcgetattr(STDIN_FILENO, &modes) != 0) return;
  modes.c_lflag &= static_cast<tcflag_t>(~(ICANON | ECHO));
  modes.c_cc[VMIN] = 1;
  modes.c_cc[VTIME] = 0;
  tcsetattr(STDIN_FILENO, TCSANOW, &modes);
}

class SpokenLines {
 public:
  explicit SpokenLines(MenuSession& session) : session_{session} {}

  bool Run() {
    TakeKeysSingly();
    Write(L"\r\n");
    TellTitles();
    Put(Wrap(ShownLines(Text(kKeysText))));
    default_.Begin(session_, Milliseconds());
    if (default_.IsCounting()) Put(Wrap({DefaultText()}));
    TellEntry();
    while (!isGone_ && !session_.IsChosen()) {
      const int period = default_.IsCounting() ? kShortestPoll : news_.PollPeriod();
      const int key = ReadKey(Milliseconds() + period);
      if (key == kGone) break;
      if (key == kKeyNone) {
        TellProgress();
        CountDown();
      } else {
        default_.Stop();
        Handle(key);
      }
    }
    Write(Down() + L"\r\n");
    Flush();
    return !isGone_;
  }

 private:
  int ReadKey(std::int64_t until);
  void Handle(int key);
  void MoveTo(int index);
  void Choose();
  bool WaitFor(const MenuItem& item);

  std::wstring DefaultText() const { return Shown(default_.Filled(Text(kDefaultText)).c_str()); }
  void CountDown();
  void TellTitles();
  void TellEntry();
  void TellRest();
  void TellHelp();
  void TellProgress();
  std::wstring EntryText() const;

  Lines Wrap(const Lines& texts) const;
  std::wstring Down() const {
    return rowsBelow_ > 0 ? L"\033[" + std::to_wstring(rowsBelow_) + L'B' : L"";
  }
  void Write(const std::wstring& text) { written_ += Encoded(text); }
  void Put(const Lines& lines) {
    for (const std::wstring& line : lines) Write(line + L"\r\n");
  }
  void Begin(const Lines& lines);
  void PutBelow(const Lines& lines);
  void Flush() {
    if (!Terminal::Write(written_)) isGone_ = true;
    written_.clear();
  }

  MenuSession& session_;
  TypedKeys typed_;
  Movement movement_;
  RepeatedKey repeated_{Milliseconds()};
  std::string written_;
  std::wstring heading_;     // that was told
  Lines rest_;               // of what is told, as rows
  std::int64_t restAt_ = 0;  // when it is due; 0 when nothing is left to tell
  int rowsBelow_ = 0;        // the line with the cursor
  bool isGone_ = false;
  DefaultStart default_;
  ProgressNews news_{kProgressPause};
};

// The next key that counts, or what happened instead. What is due meanwhile is told.
int SpokenLines::ReadKey(std::int64_t until) {
  for (;;) {
    const std::int64_t now = Milliseconds();
    if (const int key = typed_.Take(now); key != kKeyNone) {
      if (repeated_.Takes(key, now)) return key;
      continue;
    }
    if (const int waited = repeated_.TakeWaiting(now)) return waited;
    if (restAt_ != 0 && now >= restAt_) TellRest();
    if (isGone_) return kGone;
    if (now >= until) return kKeyNone;
    std::int64_t pause = until - now;
    if (restAt_ != 0) pause = std::min(pause, restAt_ - now);
    if (repeated_.IsWaiting()) pause = std::min(pause, RepeatedKey::kWait);
    if (!typed_.IsEmpty()) pause = std::min(pause, TypedKeys::kEscapeDelay);
    const Terminal::Event event = Terminal::Wait(pause);
    if (event == Terminal::Event::kInput) {
      char bytes[512];
      const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
      if (count <= 0) isGone_ = true;
      if (count > 0) typed_.Add(bytes, static_cast<std::size_t>(count), Milliseconds());
    }
    if (event == Terminal::Event::kGone) isGone_ = true;
  }
}

Lines SpokenLines::Wrap(const Lines& texts) const {
  const int columns = Terminal::GetSize().columns;
  Lines rows;
  for (const std::wstring& text : texts)
    // What fills a row to its end may begin another one.
    for (std::wstring& row :
         Wrapped(text, (columns > 1 ? columns : Terminal::kUsualSize.columns) - 1))
      rows.push_back(std::move(row));
  return rows;
}

// In place of what was told before: the first row with the cursor at once, the others in a moment.
void SpokenLines::Begin(const Lines& lines) {
  Lines rows = Wrap(lines);
  if (rows.empty()) rows.emplace_back();
  Write(L"\r\033[J" + rows[0] + L'\r');
  rowsBelow_ = 0;
  rest_.assign(rows.begin() + 1, rows.end());
  restAt_ = Milliseconds() + kRestDelay;
  Flush();
}

// More rows below, with the cursor where it was. They scroll, but never so far that it leaves the
// screen.
void SpokenLines::PutBelow(const Lines& lines) {
  const int height = Terminal::GetSize().rows;
  for (const std::wstring& line : lines) {
    if (rowsBelow_ + 2 > (height > 0 ? height : Terminal::kUsualSize.rows)) break;
    Write(Down() + L"\r\n" + line);
    ++rowsBelow_;
    Write(L"\033[" + std::to_wstring(rowsBelow_) + L"A\r");
  }
  Flush();
}

void SpokenLines::TellRest() {
  restAt_ = 0;
  PutBelow(rest_);
}

void SpokenLines::TellTitles() {
  const std::wstring heading = Shown(session_.Level().heading.text);
  if (heading != heading_) Put(Wrap({heading}));
  heading_ = heading;
  Put(Wrap({Shown(session_.Config().menuTitle)}));
}

std::wstring SpokenLines::EntryText() const {
  const MenuItem& item = *session_.CurrentItem();
  std::wstring text = Shown(session_.Title(session_.Current()));
  if (item.flags & kItemDisabled)
    text += L", " + Shown(Text(kNotAvailableText));
  else if (item.flags & kItemSubmenu)
    text += L", " + Shown(Text(kSubmenuText));
  const auto [number, count] = PlaceOfCurrent(session_);
  const std::string place = Filled(Text(kPlaceText), std::to_string(number), std::to_string(count));
  return text + L", " + Shown(place.c_str());
}

void SpokenLines::TellEntry() {
  const MenuItem* item = session_.CurrentItem();
  if (!item) return Begin({});
  Lines lines{EntryText()};
  for (std::wstring& line : ShownLines(item->hintText)) lines.push_back(std::move(line));
  Begin(lines);
}

void SpokenLines::TellHelp() {
  Lines lines;
  for (const int text : {kMoveText, kChooseText, kTypeText, kSpokenHelpText})
    if (text != kTypeText || settings.typeAhead) lines.push_back(Shown(Text(text)));
  Begin(lines);
}

void SpokenLines::TellProgress() {
  if (const std::wstring news = news_.Look(restAt_ != 0); !news.empty()) PutBelow({news});
}

void SpokenLines::CountDown() {
  const int seconds = default_.Seconds();
  if (const int entry = default_.Look(Milliseconds()); entry >= 0) {
    session_.Select(entry);
    return Choose();
  }
  if (!default_.IsCounting() || default_.Seconds() == seconds) return;
  if (default_.Seconds() % kCountdownStep == 0 && restAt_ == 0) PutBelow({DefaultText()});
}

void SpokenLines::MoveTo(int index) {
  if (index < 0) return;
  session_.Select(index);
  TellEntry();
}

void SpokenLines::Handle(int key) {
  switch (key) {
    case '\r':
    case '\n':
    case ' ':
      return Choose();
    case '?':
    case kKeyHelp:
      return TellHelp();
    case kTab:
    case kCtrlL:
    case kEscape:
      return TellEntry();
    default:
      return MoveTo(movement_.Target(session_, key, kPage));
  }
}

void SpokenLines::Choose() {
  if (!session_.CurrentItem()) return;
  const MenuItem& item = *session_.CurrentItem();
  switch (session_.Choose(item)) {
    case MenuSession::Step::kNothing:
      return TellEntry();  // which says that it is not available
    case MenuSession::Step::kOther:
      session_.ReadHints();
      Write(L"\r\033[J");
      TellTitles();
      return TellEntry();
    case MenuSession::Step::kWaits:
      if (WaitFor(item))
        session_.EndWaiting();
      else
        TellEntry();
      return;
    case MenuSession::Step::kChosen:
      return;
  }
}

// True when nothing keeps the item from being chosen any longer, false when the user gave up.
bool SpokenLines::WaitFor(const MenuItem& item) {
  ItemWait wait{item};
  if (wait.Check()) return true;
  Begin({Shown(Text(kWaitTitleText)) + L". " + Shown(wait.Message()),
         Shown(Text(kEnterCancelsText))});
  int told = -1;
  for (std::int64_t check = Milliseconds() + ItemWait::kPeriod;; check += ItemWait::kPeriod) {
    if (const int seconds = wait.Seconds();
        wait.HasTimeout() && seconds != told && (told < 0 || seconds % kCountdownStep == 0)) {
      told = seconds;
      if (restAt_ != 0)
        rest_.push_back(std::to_wstring(seconds));
      else
        PutBelow({std::to_wstring(seconds)});
    }
    for (int key = kKeyOther; key != kKeyNone;) {
      key = ReadKey(check);
      if (EndsWaiting(key)) return false;
    }
    if (wait.Check()) return true;
    TellProgress();
  }
}

}  // namespace

bool RunSpokenLines(MenuSession& session) { return SpokenLines{session}.Run(); }

}  // namespace zel
