// Where the parts of the main window stand: pure arithmetic.
//
// From left to right: tree, lists, preview (when shown). The two lists lie one upon
// the other, each in its frame with its buttons below; between them is a row of options.
// The tool bar is on top, the status line at the bottom.
//
// Tested by tests/win32/controls/layout_test.cpp.
#pragma once

#include <windows.h>

#include <array>

namespace tintline {

// The user's division of the window, kept as shares of what there is to divide.
struct Division {
  double tree = 0.2;      // of the width
  double preview = 0.42;  // of the width beside the tree
  double source = 0.5;    // of the height of both lists
};

// Heights and widths in pixels that the layout depends on.
struct LayoutMetrics {
  unsigned dpi;
  int toolBar, status;  // heights
  int button, caption;  // heights of a button and of a frame's caption
  int option;           // height of one row of options
  int optionsWidth;     // what all of them need side by side; else they take two rows
};

enum class Splitter { None, Tree, Preview, Source };

struct MainLayout {
  RECT toolBar, tree, frame1, list1, buttons1, options, frame2, list2, buttons2;
  RECT preview, browser;  // empty while there is no preview
  RECT status;
  RECT treeSplitter, previewSplitter, sourceSplitter;

  Splitter splitterAt(POINT point) const;
};

MainLayout layOut(SIZE client, const Division& division, const LayoutMetrics& metrics,
                  bool preview);

// The division after a splitter was moved to that point.
Division moved(Splitter splitter, POINT point, SIZE client, const Division& division,
               const LayoutMetrics& metrics, bool preview);

}  // namespace tintline
