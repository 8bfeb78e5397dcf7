// Stand-ins for everything that the program stands on, in one hand. Their public members are what a
// test sets and looks at.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "app/ports.h"
#include "tests/support/fake_office.h"
#include "tests/support/script_dialogs.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {

class FakeClipboard final : public Clipboard {
 public:
  void setText(std::wstring_view text) override { check(), content = text, formats = {}; }
  void setFormats(const Formats& all) override { check(), content = all.text, formats = all; }
  std::wstring text() override { return check(), content; }

  std::wstring content;
  Formats formats;      // of what was copied last, empty when that was plain text
  bool broken = false;  // as when another program holds the clipboard open

 private:
  void check() const {
    if (broken) throw std::runtime_error("the clipboard is in use");
  }
};

// Writes down what it is asked to do.
class FakeShell final : public Shell {
 public:
  int open(const std::wstring& target) override { return opened.push_back(target), result; }
  void showHelp(const std::filesystem::path& helpFile, std::string_view topic) override {
    opened.push_back(pathText(helpFile) + L" " + fromAnsi(topic));
  }
  void closeHelp() override { ++helpClosed; }

  std::vector<std::wstring> opened;
  int result = 33;  // what open answers: above 32 is success
  int helpClosed = 0;
};

class FakeClock final : public Clock {
 public:
  float timer() override { return std::exchange(seconds, seconds + step); }
  std::chrono::year_month_day today() override {
    return {std::chrono::year(2025), std::chrono::month(1), std::chrono::day(31)};
  }
  void pause(std::chrono::milliseconds duration) override {
    seconds += std::chrono::duration<float>(duration).count();
    if (onPause) onPause();
  }

  float seconds = 0;  // since midnight: what timer() gives next
  float step = 0;     // how much time goes by between two looks at the clock
  std::function<void()> onPause;
};

// The program's folders inside a temporary folder of the test's own. The user's is not there yet.
class FakeFiles final : public Files {
 public:
  FakeFiles() {
    std::filesystem::create_directory(program);
    std::filesystem::create_directory(temporary);
  }
  std::filesystem::path programFolder() override { return program; }
  std::filesystem::path temporaryFolder() override { return temporary; }
  std::filesystem::path userFolder() override { return user; }

  TempFolder folder;
  std::filesystem::path program = folder / "program", temporary = folder / "temporary";
  std::filesystem::path user = folder / "roaming" / "TINTLINE";
};

class FakeLocale final : public Locale {
 public:
  wchar_t decimalSeparator() override { return L','; }
};

// A message loop in which a test lets things happen.
class FakeMessageLoop final : public MessageLoop {
 public:
  void yield() override {
    ++yields;
    if (onYield) onYield();
    if (const auto event = events_.extract(yields); !event.empty()) event.mapped()();
  }

  // Has `action` arrive in the n-th yield from the start (the first is 1).
  void at(int n, std::function<void()> action) { events_[n] = std::move(action); }

  int yields = 0;
  std::function<void()> onYield;  // in every yield

 private:
  std::map<int, std::function<void()>> events_;
};

// A font in which "W" is the widest character.
class FakeTextMeasure final : public TextMeasure {
 public:
  int width(std::wstring_view text) override {
    ++measured;
    int pixels = 0;
    for (const wchar_t c : text) pixels += c == L'W' ? widest : 5;
    return pixels;
  }
  int widestCharacter() override { return widest; }

  int widest = 10;
  int measured = 0;  // how many texts were measured
};

struct FakePorts {
  ScriptDialogs dialogs;
  FakeMessageLoop messageLoop;
  FakeClock clock;
  FakeClipboard clipboard;
  FakeShell shell;
  FakeOffice office;
  FakeFiles files;
  FakeLocale locale;
  FakeTextMeasure textMeasure;
  int released = 0;  // calls of releaseSingleInstance

  // System colour `index` is grey of that brightness.
  static std::uint32_t systemColor(std::uint32_t index) { return (index & 0xFF) * 0x010101; }

  Ports ports() {
    return {dialogs,
            messageLoop,
            clock,
            clipboard,
            shell,
            office,
            files,
            locale,
            textMeasure,
            systemColor,
            [](Brightness wanted) { return wanted == Brightness::Dark; },
            [this] { ++released; }};
  }
};

}  // namespace tintline::test
