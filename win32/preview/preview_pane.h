// The preview: a child window that shows the program's page, in the system's
// browser when an HTML engine answers, else in a rich-edit control.
//
// Which of them it is shows on the first page (asking takes some 0.1 s). A
// browser that fails or does not show a page within five seconds is given up
// for good, and the page is shown by the other.
//
// Tested by tests/win32/preview/preview_test.cpp.
#pragma once

#include <windows.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "win32/handle.h"
#include "win32/preview/browser_host.h"
#include "win32/preview/rich_edit_view.h"

namespace tintline {

class PreviewPane {
 public:
  enum class Engine { Automatic, Browser, RichEdit };

  // A child of `parent` with that control id, hidden and without a size. The thread has called
  // OleInitialize. Throws Win32Error.
  PreviewPane(HWND parent, int id, Engine engine = Engine::Automatic);
  ~PreviewPane();
  PreviewPane(const PreviewPane&) = delete;
  PreviewPane& operator=(const PreviewPane&) = delete;

  // To place and size it; nullptr once the parent has destroyed it.
  HWND window() const { return window_.get(); }

  // A web or mail address that was clicked, checked by output/link_target.h; the shell may open
  // it. Set before the first page.
  std::function<void(const std::wstring& address)> onExternalLink;

  // A link to an id of the page that was clicked. Set before the first page.
  std::function<void(const std::wstring& id)> onAnchor;

  // A window that covers the pane, or a part of it, came or goes; set before the first page.
  std::function<void(HWND window, bool came)> onChildWindow;

  // Shows a page of the program. Throws Win32Error when the system has nothing to show it with;
  // FileError when the file cannot be read (a browser that cannot read it is given up).
  // `keepPlace`: it shows the line that the page before it shows at its top, or one at about the
  // same share of it.
  void navigate(const std::filesystem::path& page, bool keepPlace = false);

  // Marks what has that id and brings it into view; nothing when the page has none.
  void showAnchor(const std::wstring& id);

  void setVisible(bool visible);

  // To be called when the parent has moved to a screen of another resolution.
  void dpiChanged();

  // The look of the windows is another now.
  void followTheme();

  // Whether the message is a key that the page's view uses itself, as those for copying: it is
  // no command of the program then.
  bool usesKey(const MSG& message) const;

  // For the message loop, in front of TranslateMessage: true when the message was a key for the
  // browser and is dealt with.
  bool translate(MSG& message);

  // The rich-edit view while that is what shows the page, else nullptr.
  const RichEditView* richEdit() const { return richEdit_.get(); }

 private:
  static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  void startEngine();
  void startBrowser();
  void startRichEdit();
  void giveUpBrowser();
  void closeEngines();
  void fitEngine();
  void tellChildWindow(UINT event, HWND window) const;
  void tellLink(const std::wstring& address) const;
  void tellAnchor(const std::wstring& id) const;

  UniqueWindow window_;
  Engine engine_;
  std::filesystem::path page_;
  std::unique_ptr<BrowserHost> browser_;
  std::unique_ptr<RichEditView> richEdit_;
};

}  // namespace tintline
