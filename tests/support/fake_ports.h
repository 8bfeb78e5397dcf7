// Stand-ins for everything that the program stands on, in one hand.
#pragma once

#include <cstdint>

#include "app/ports.h"
#include "tests/support/fake_clipboard.h"
#include "tests/support/fake_clock.h"
#include "tests/support/fake_files.h"
#include "tests/support/fake_locale.h"
#include "tests/support/fake_message_loop.h"
#include "tests/support/fake_office.h"
#include "tests/support/fake_shell.h"
#include "tests/support/fake_text_measure.h"
#include "tests/support/script_dialogs.h"

namespace tintline::test {

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
    return {.dialogs = dialogs,
            .messageLoop = messageLoop,
            .clock = clock,
            .clipboard = clipboard,
            .shell = shell,
            .office = office,
            .files = files,
            .locale = locale,
            .textMeasure = textMeasure,
            .systemColor = systemColor,
            .releaseSingleInstance = [this] { ++released; }};
  }
};

}  // namespace tintline::test
