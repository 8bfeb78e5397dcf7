// What a run tells the user. See report.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/report.h"

#include <utility>

#include "cli/messages.h"

namespace tintline {
namespace {

using std::chrono::steady_clock;

constexpr auto kCounterInterval = std::chrono::milliseconds(50);

}  // namespace

Report::Report(std::vector<Message> names, Write write, bool progress, Language language)
    : names_(std::move(names)),
      write_(std::move(write)),
      progress_(progress),
      language_(language),
      start_(steady_clock::now()),
      outcomes_(names_.size()),
      counterShown_(start_) {}

void Report::finished(std::size_t index, Outcome outcome) {
  const std::lock_guard lock(mutex_);
  ++done_;
  if (outcome.failure.empty()) {
    ++converted_;
    sourceLines_ += outcome.sourceLines;
  }
  outcomes_[index] = std::move(outcome);
  tellOutcomes();
  if (progress_ && done_ < names_.size()) showCounter();
}

bool Report::close() {
  const std::lock_guard lock(mutex_);
  for (; told_ < outcomes_.size(); ++told_) tellOutcome(told_);
  clearCounter();
  if (progress_) showSummary();
  return converted_ == names_.size();
}

void Report::tellOutcomes() {
  for (; told_ < outcomes_.size() && outcomes_[told_]; ++told_) tellOutcome(told_);
}

void Report::tellOutcome(std::size_t index) {
  if (!outcomes_[index]) return;
  const Outcome& outcome = *outcomes_[index];
  const Message& text = outcome.failure.empty() ? outcome.warning : outcome.failure;
  if (text.empty()) return;
  clearCounter();
  write_(messages::kTold(messages::kAbout(names_[index], text)).in(language_));
}

void Report::showCounter() {
  const auto now = steady_clock::now();
  if (now - counterShown_ < kCounterInterval) return;
  counterShown_ = now;
  counter_ = messages::kProgress(done_, names_.size()).in(language_);
  write_(L'\r' + counter_);
}

void Report::clearCounter() {
  if (counter_.empty()) return;
  write_(L'\r' + std::wstring(counter_.size(), L' ') + L'\r');
  counter_.clear();
}

void Report::showSummary() {
  write_(messages::kSummary(messages::counted(converted_, messages::kOneFile, messages::kFiles),
                            messages::counted(sourceLines_, messages::kOneLine, messages::kLines),
                            secondsText(steady_clock::now() - start_))
             .in(language_));
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
