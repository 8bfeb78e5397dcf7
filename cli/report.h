// What a run tells the user while it works: failures and warnings in the order of the inputs
// and, on a terminal, how far it is.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "cli/notice.h"
#include "runs/task.h"

namespace tintline {

// How much a report tells beside failures and warnings.
struct Telling {
  bool progress;  // a counter, on a terminal
  bool summary;   // in the end
  NoticeFormat format = NoticeFormat::Text;
  Language language = Language::English;
  std::chrono::milliseconds silence = std::chrono::seconds(1);  // before there is a counter
};

class Report {
 public:
  using Write = std::function<void(std::wstring_view text)>;

  // `files` are the inputs as Notice has them; `write` puts text on the error stream.
  Report(std::vector<std::wstring> files, Write write, const Telling& telling);

  // One more input is read, before any is done. May be called from several threads.
  void noteRead();

  // Input `index` is done. May be called from several threads.
  void finished(std::size_t index, Outcome outcome);

  // Closes the report when nothing more is done; true when all inputs were converted.
  bool close();

 private:
  void tellOutcomes();
  void tellOutcome(std::size_t index);
  void tell(const Notice& notice);
  void showCounter(const Message& counter);
  void clearCounter();
  void showSummary();

  const std::vector<std::wstring> files_;
  const Write write_;
  const Telling telling_;
  const std::chrono::steady_clock::time_point start_;

  std::mutex mutex_;  // guards what follows
  std::vector<std::optional<Outcome>> outcomes_;
  std::size_t read_ = 0;
  std::size_t done_ = 0;
  std::size_t told_ = 0;  // all inputs in front of this one are done and told
  std::size_t converted_ = 0;
  std::size_t sourceLines_ = 0;
  std::wstring counter_;  // as it stands on the terminal
  std::chrono::steady_clock::time_point counterDue_;
};

// A duration as the program shows it: hundredths cut off, no zeros at the end,
// decimal point or comma: "0.3".
Message secondsText(std::chrono::steady_clock::duration duration);

}  // namespace tintline
