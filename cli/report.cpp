// What a run tells the user. See report.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/report.h"

#include <algorithm>
#include <utility>

#include "cli/messages.h"

namespace tintline {
namespace {

using std::chrono::steady_clock;

constexpr auto kCounterInterval = std::chrono::milliseconds(50);

}  // namespace

Report::Report(std::vector<std::wstring> files, Write write, const Telling& telling)
    : files_(std::move(files)),
      write_(std::move(write)),
      telling_(telling),
      start_(steady_clock::now()),
      outcomes_(files_.size()),
      counterDue_(start_ + telling.silence) {}

void Report::noteRead() {
  const std::lock_guard lock(mutex_);
  ++read_;
  if (telling_.progress) showCounter(messages::kReadProgress(read_, files_.size()));
}

void Report::finished(std::size_t index, Outcome outcome) {
  const std::lock_guard lock(mutex_);
  ++done_;
  if (outcome.failure.empty()) {
    ++converted_;
    sourceLines_ += outcome.sourceLines;
  }
  outcomes_[index] = std::move(outcome);
  tellOutcomes();
  if (telling_.progress && done_ < files_.size())
    showCounter(messages::kProgress(done_, files_.size()));
}

bool Report::close() {
  const std::lock_guard lock(mutex_);
  for (; told_ < outcomes_.size(); ++told_) tellOutcome(told_);
  clearCounter();
  if (telling_.summary) showSummary();
  return converted_ == files_.size();
}

void Report::tellOutcomes() {
  for (; told_ < outcomes_.size() && outcomes_[told_]; ++told_) tellOutcome(told_);
}

void Report::tellOutcome(std::size_t index) {
  if (!outcomes_[index]) return;
  const Outcome& outcome = *outcomes_[index];
  using enum Notice::Severity;
  if (!outcome.failure.empty())
    tell({.severity = Error, .file = files_[index], .message = outcome.failure});
  else if (!outcome.warning.empty())
    tell({.severity = Warning, .file = files_[index], .message = outcome.warning});
}

void Report::tell(const Notice& notice) {
  clearCounter();
  write_(noticeText(notice, telling_.format, telling_.language));
}

void Report::showCounter(const Message& counter) {
  const auto now = steady_clock::now();
  if (now < counterDue_) return;
  counterDue_ = now + kCounterInterval;
  const std::size_t before = counter_.size();
  counter_ = counter.in(telling_.language);
  const std::size_t shorter = before - std::min(before, counter_.size());
  write_(L'\r' + counter_ + std::wstring(shorter, L' '));
}

void Report::clearCounter() {
  if (counter_.empty()) return;
  write_(L'\r' + std::wstring(counter_.size(), L' ') + L'\r');
  counter_.clear();
}

void Report::showSummary() {
  const Message summary =
      messages::kSummary(messages::counted(converted_, messages::kOneFile, messages::kFiles),
                         messages::counted(sourceLines_, messages::kOneLine, messages::kLines),
                         secondsText(steady_clock::now() - start_));
  if (telling_.format == NoticeFormat::Json)
    tell({.severity = Notice::Severity::Note, .message = summary});
  else
    write_(summary.in(telling_.language) + L'\n');
}

Message secondsText(steady_clock::duration duration) {
  const auto hundredths =
      std::chrono::duration_cast<std::chrono::duration<long long, std::centi>>(duration).count();
  const std::wstring whole = std::to_wstring(hundredths / 100);
  std::wstring fraction;
  if (hundredths % 100 != 0) fraction += static_cast<wchar_t>(L'0' + hundredths % 100 / 10);
  if (hundredths % 10 != 0) fraction += static_cast<wchar_t>(L'0' + hundredths % 10);
  if (fraction.empty()) return valueOf(whole);
  return {whole + L'.' + fraction, whole + L',' + fraction};
}

}  // namespace tintline
