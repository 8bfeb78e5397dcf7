// All ports that the program stands on, in one hand.
#pragma once

#include <functional>

#include "app/window_memory.h"
#include "engine/color_scheme.h"
#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/dialogs.h"
#include "ports/files.h"
#include "ports/locale.h"
#include "ports/message_loop.h"
#include "ports/office.h"
#include "ports/shell.h"
#include "ports/text_measure.h"

namespace tintline {

// What stands behind the references must live as long as the program.
struct Ports {
  Dialogs& dialogs;
  MessageLoop& messageLoop;
  Clock& clock;
  Clipboard& clipboard;
  Shell& shell;
  Office& office;
  Files& files;
  Locale& locale;
  TextMeasure& textMeasure;  // in the font of the two lists
  modColor::SystemColor systemColor;
  // Gives the windows the brightness that the user wants; whether they are dark now.
  std::function<bool(Brightness)> showBrightness;
  std::function<void()> releaseSingleInstance;  // at exit: the handle's release and close
};

}  // namespace tintline
