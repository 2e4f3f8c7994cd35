#include "text/plain_lines.h"

#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "launcher/default_start.h"
#include "launcher/item_wait.h"
#include "launcher/texts.h"
#include "text/progress_news.h"
#include "text/terminal.h"
#include "text/terminal_text.h"

namespace zel {
namespace {

constexpr int kFewestColumns = 20;
constexpr std::size_t kLongestAnswer = 100;    // bytes; the rest of a line is not read
constexpr std::int64_t kProgressPause = 5000;  // milliseconds between two lines that say how far
constexpr const char* kBlanks = " \t";

class PlainLines {
 public:
  explicit PlainLines(MenuSession& session) : session_{session} {}

  bool Run() {
    ShowMenu();
    default_.Begin(session_, Milliseconds());
    if (default_.IsCounting()) TellDefault();
    Ask();
    while (!isGone_ && !session_.IsChosen()) {
      std::string line;
      const Input input = Next(line, default_.IsCounting() ? kShortestPoll : news_.PollPeriod());
      if (input == Input::kNone) CountDown();
      if (input == Input::kLine) {
        default_.Stop();
        Answer(line);
        if (session_.IsChosen()) break;
        Ask();
      }
      if (const std::wstring progress = news_.Look(); !progress.empty()) {
        WriteLine({});
        WriteLine(progress);
        Ask();
      }
    }
    return !isGone_;
  }

 private:
  enum class Input { kNone, kLine, kGone };

  void Write(const std::wstring& text) { written_ += Encoded(text); }
  void WriteLine(const std::wstring& text) { Write(text + L'\n'); }
  void WriteText(std::uint32_t text) {
    for (const std::wstring& line : ShownLines(Text(text))) WriteWrapped(line);
  }
  void WriteWrapped(const std::wstring& text) {
    const int columns = Terminal::GetSize().columns;
    // What fills a line to its end may begin another one.
    for (const std::wstring& line :
         Wrapped(text, (columns < kFewestColumns ? Terminal::kUsualSize.columns : columns) - 1))
      WriteLine(line);
  }
  void Flush() {
    if (!Terminal::Write(written_)) isGone_ = true;
    written_.clear();
  }

  void ShowMenu();
  void ShowEntry(int index);
  void Ask() {
    Write(Shown(Text(session_.Depth() > 1 ? kNumberOrBackText : kNumberText)) + L' ');
    Flush();
  }

  Input Next(std::string& line, std::int64_t milliseconds);
  bool TakeLine(std::string& line);
  void Answer(const std::string& line);
  void Explain(const std::string& number);
  // The entry of a number that was typed, or -1.
  int EntryOf(const std::string& number) const;
  void Choose(int index);
  bool WaitFor(const MenuItem& item);
  void TellDefault() { WriteWrapped(Shown(default_.Filled(Text(kPlainDefaultText)).c_str())); }
  void CountDown();

  MenuSession& session_;
  int number_ = 0;  // of the entry that was shown last
  std::string typed_, written_;
  bool isGone_ = false;
  DefaultStart default_;
  ProgressNews news_{kProgressPause};
};

void PlainLines::ShowMenu() {
  WriteLine({});
  for (const char* title :
       {session_.Level().heading.text.c_str(), session_.Config().menuTitle.c_str()})
    if (*title != '\0') WriteWrapped(Shown(title));
  number_ = 0;
  for (int i = 0; i < session_.Count(); ++i) ShowEntry(i);
}

void PlainLines::ShowEntry(int index) {
  const MenuItem& item = session_.Entry(index);
  if (item.flags & kItemSeparator) return WriteLine({});
  const bool isBack = (item.flags & kItemBack) != 0;
  if (!isBack) ++number_;
  const std::wstring number = std::to_wstring(isBack ? 0 : number_);
  std::wstring line = index == session_.Current() ? L"> " : L"  ";
  if (number.size() == 1) line += L' ';
  line += number + L"  " + Shown(session_.Title(index));
  if (item.flags & kItemDisabled)
    line += L" (" + Shown(Text(kNotAvailableText)) + L')';
  else if (item.flags & kItemSubmenu)
    line += L" (" + Shown(Text(kSubmenuText)) + L')';
  WriteLine(line);
}

bool PlainLines::TakeLine(std::string& line) {
  const std::size_t end = typed_.find_first_of("\r\n");
  if (end == std::string::npos) {
    typed_.resize(std::min(typed_.size(), kLongestAnswer));
    return false;
  }
  line = typed_.substr(0, end);
  typed_.erase(0, end + (typed_.compare(end, 2, "\r\n") == 0 ? 2 : 1));
  return true;
}

PlainLines::Input PlainLines::Next(std::string& line, std::int64_t milliseconds) {
  if (TakeLine(line)) return Input::kLine;
  const Terminal::Event event = Terminal::Wait(milliseconds);
  if (event == Terminal::Event::kGone) isGone_ = true;
  if (event != Terminal::Event::kInput) return isGone_ ? Input::kGone : Input::kNone;
  char bytes[512];
  const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
  if (count <= 0) {
    isGone_ = true;
    return Input::kGone;
  }
  typed_.append(bytes, static_cast<std::size_t>(count));
  return TakeLine(line) ? Input::kLine : Input::kNone;
}

int PlainLines::EntryOf(const std::string& number) const {
  constexpr std::size_t kDigits = 6;
  if (number.empty() || number.size() > kDigits ||
      number.find_first_not_of("0123456789") != std::string::npos)
    return -1;
  return session_.EntryOfNumber(std::stoi(number));
}

void PlainLines::Answer(const std::string& line) {
  const std::size_t start = line.find_first_not_of(kBlanks);
  if (start == std::string::npos) return ShowMenu();
  const std::string answer = line.substr(start, line.find_last_not_of(kBlanks) + 1 - start);
  if (answer == "?") return WriteText(kPlainHelpText);
  if (answer[0] == '?') return Explain(answer.substr(answer.find_first_not_of("? \t")));
  Choose(EntryOf(answer));
}

void PlainLines::Explain(const std::string& number) {
  const int index = EntryOf(number);
  if (index < 0) return WriteText(kNoEntryText);
  const MenuItem& item = session_.Entry(index);
  if (item.hintText.IsEmpty()) return WriteText(kNoHintText);
  for (const std::wstring& part : ShownLines(item.hintText)) WriteWrapped(part);
}

void PlainLines::Choose(int index) {
  if (index < 0) return WriteText(kNoEntryText);
  session_.Select(index);
  switch (session_.Choose(session_.Entry(index))) {
    case MenuSession::Step::kNothing:
      return WriteText(kNotAvailableText);
    case MenuSession::Step::kOther:
      session_.ReadHints();
      return ShowMenu();
    case MenuSession::Step::kWaits:
      if (WaitFor(session_.Entry(index))) session_.EndWaiting();
      return;
    case MenuSession::Step::kChosen:
      return;
  }
}

void PlainLines::CountDown() {
  const int seconds = default_.Seconds();
  const int entry = default_.Look(Milliseconds());
  if (entry < 0 && (!default_.IsCounting() || default_.Seconds() == seconds)) return;
  if (entry < 0 && default_.Seconds() % kCountdownStep != 0) return;
  WriteLine({});
  if (entry >= 0) {
    Choose(entry);
    if (session_.IsChosen()) return Flush();
  } else {
    TellDefault();
  }
  Ask();
}

// True when nothing keeps the item from being chosen any longer, false when the user gave up.
bool PlainLines::WaitFor(const MenuItem& item) {
  ItemWait wait{item};
  if (wait.Check()) return true;
  WriteText(kWaitTitleText);
  WriteLine(Shown(wait.Message()));
  WriteText(kEnterCancelsText);
  int told = -1;
  for (std::int64_t check = Milliseconds() + ItemWait::kPeriod;;) {
    if (const int seconds = wait.Seconds();
        wait.HasTimeout() && seconds != told && (told < 0 || seconds % kCountdownStep == 0)) {
      told = seconds;
      WriteLine(std::to_wstring(seconds));
    }
    Flush();
    std::string line;
    if (Next(line, check - Milliseconds()) != Input::kNone || isGone_) return false;
    if (Milliseconds() < check) continue;
    check += ItemWait::kPeriod;
    if (wait.Check()) return true;
    if (const std::wstring progress = news_.Look(); !progress.empty()) WriteLine(progress);
  }
}

}  // namespace

bool RunPlainLines(MenuSession& session) { return PlainLines{session}.Run(); }

}  // namespace zel
