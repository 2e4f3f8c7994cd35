#include "text/progress_news.h"

#include <algorithm>

#include "launcher/texts.h"
#include "text/terminal.h"
#include "text/terminal_text.h"

namespace zel {

int ProgressNews::PollPeriod() const { return std::max(values_.PollPeriod(), kShortestPoll); }

std::wstring ProgressNews::Look(bool isHeld) {
  const std::int64_t now = Milliseconds();
  if (now < lookAt_) return {};
  values_ = file_.Look(now);
  lookAt_ = now + PollPeriod();
  if (!values_.Shows() || values_ == told_ || isHeld) return {};
  if (toldAt_ != 0 && now - toldAt_ < pause_ && values_.currentStep < values_.stepNumber) return {};
  told_ = values_;
  toldAt_ = now;
  return Shown(Text(kHowFarText)) + L' ' + std::to_wstring(values_.currentStep) + L'/' +
         std::to_wstring(values_.stepNumber);
}

}  // namespace zel
