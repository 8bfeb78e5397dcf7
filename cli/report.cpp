// What a run tells the user. See report.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/report.h"

#include <utility>

namespace tintline {
namespace {

using std::chrono::steady_clock;

constexpr auto kCounterInterval = std::chrono::milliseconds(50);

std::wstring counted(std::size_t count, const wchar_t* one, const wchar_t* many) {
  return std::to_wstring(count) + L' ' + (count == 1 ? one : many);
}

}  // namespace

Report::Report(std::vector<std::wstring> names, Write write, bool progress)
    : names_(std::move(names)),
      write_(std::move(write)),
      progress_(progress),
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
  const std::wstring& text = outcome.failure.empty() ? outcome.warning : outcome.failure;
  if (text.empty()) return;
  clearCounter();
  write_(L"tintline: " + names_[index] + L": " + text + L'\n');
}

void Report::showCounter() {
  const auto now = steady_clock::now();
  if (now - counterShown_ < kCounterInterval) return;
  counterShown_ = now;
  counter_ = std::to_wstring(done_) + L" von " + counted(names_.size(), L"Datei", L"Dateien");
  write_(L'\r' + counter_);
}

void Report::clearCounter() {
  if (counter_.empty()) return;
  write_(L'\r' + std::wstring(counter_.size(), L' ') + L'\r');
  counter_.clear();
}

void Report::showSummary() {
  write_(counted(converted_, L"Datei", L"Dateien") + L", " +
         counted(sourceLines_, L"Zeile", L"Zeilen") + L" in " +
         secondsText(steady_clock::now() - start_) + L"s verarbeitet\n");
}

std::wstring secondsText(steady_clock::duration duration) {
  const auto hundredths =
      std::chrono::duration_cast<std::chrono::duration<long long, std::centi>>(duration).count();
  std::wstring text = std::to_wstring(hundredths / 100);
  const long long fraction = hundredths % 100;
  if (fraction != 0) text += L',';
  if (fraction != 0) text += static_cast<wchar_t>(L'0' + fraction / 10);
  if (fraction % 10 != 0) text += static_cast<wchar_t>(L'0' + fraction % 10);
  return text;
}

}  // namespace tintline
