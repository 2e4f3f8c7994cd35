#include "launcher/progress_file.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "launcher/paths.h"
#include "toolkit/base/section_file.h"

namespace zel {
namespace {

constexpr std::size_t kLongestFile = 1 << 16;
constexpr std::int64_t kSmallFile = 4096;  // bytes that take no longer to read than to ask about
constexpr std::int64_t kPause = 100;       // milliseconds between two readings of a larger one
constexpr int kSlowPoll = 1000;            // milliseconds

}  // namespace

int ProgressValues::PollPeriod() const {
  return progressInterval < 1 ? kSlowPoll : progressInterval;
}

ProgressValues ReadProgressFile() {
  const SectionFile file = SectionFile::FromUtf8(
      ReadPlainFile(BehindOwnLinks(paths.progressFile).c_str(), kLongestFile));
  const SectionFile::Section& said = file.Find("Progress");
  ProgressValues values{said.GetInt("StepNumber"), said.GetInt("CurrentStep"),
                        said.GetInt("ProgressHide"), said.GetInt("ProgressInterval")};
  if (values == ProgressValues{0, 0, 0, 0}) values.progressHide = 1;
  values.currentStep = std::min(values.currentStep, values.stepNumber);
  return values;
}

const ProgressValues& ProgressFile::Look(std::int64_t now) {
  const FileStamp stamp = StampOf(BehindOwnLinks(paths.progressFile).c_str());
  if (IsKnown(stamp, now)) return values_;
  isSettled_ = stamp == stamp_;
  stamp_ = stamp;
  readAt_ = now;
  values_ = ReadProgressFile();
  return values_;
}

bool ProgressFile::IsKnown(const FileStamp& stamp, std::int64_t now) const {
  if (stamp.size <= kSmallFile) return false;
  return now - readAt_ < kPause || (isSettled_ && stamp == stamp_);
}

std::int64_t Milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace zel
