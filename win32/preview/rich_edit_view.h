// Shows the program's own pages in a rich-edit control, where no browser can.
//
// A long page comes in pieces: what loads in a moment at once, the rest from a
// timer, so that the window stays responsive. The next page cancels the rest.
//
// Links are text as coloured as the page says; the view itself knows where they
// are. The control's own links are blue whatever the page says, and to mark them
// takes the longer the longer the text is.
//
// Tested by tests/win32/preview/preview_test.cpp.
#pragma once

#include <windows.h>
#include <richedit.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "output/rendered_page.h"
#include "output/rich_text.h"
#include "win32/handle.h"

namespace tintline {

class RichEditView {
 public:
  using ExternalLink = std::function<void(const std::wstring& address)>;

  using AnchorLink = std::function<void(const std::wstring& id)>;

  // A control that fills the parent. Throws Win32Error when the system has none of its kind.
  RichEditView(HWND parent, ExternalLink onExternalLink, AnchorLink onAnchor);
  ~RichEditView();
  RichEditView(const RichEditView&) = delete;
  RichEditView& operator=(const RichEditView&) = delete;

  // The control; another one for every page, nullptr once the parent has destroyed it.
  HWND window() const { return control_.get(); }

  // Reads the page and shows its beginning, or with `keepPlace` the line that stands at the top
  // now, which is found by its id, else by its share of the lines. Throws FileError and leaves the
  // old page.
  void navigate(const std::filesystem::path& file, bool keepPlace);

  // Marks the line of that id and brings it into view; nothing when the page has none.
  void showAnchor(const std::wstring& id);

  // Whether all of the page is shown.
  bool loaded() const { return shown_ == page_.text.size(); }

  const RenderedPage& page() const { return page_; }

  // Fits the letters to the resolution of the screen that the window is on.
  void fitDpi() const;

  // The look of the windows is another now: the page is shown anew, where it is.
  void followTheme();

 private:
  static LRESULT CALLBACK controlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR id, DWORD_PTR view);

  LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
  UniqueWindow makeControl();
  void replaceControl();
  void setFormats() const;
  void setColors();
  CHARRANGE selection() const;
  void select(std::size_t from, std::size_t to) const;
  void show(RenderedPage page, bool keepPlace);
  std::size_t placeIn(const RenderedPage& next) const;
  void askForMenu(POINT place) const;
  void appendPieces(ULONGLONG milliseconds);
  void appendPiece(std::size_t end);
  void onTimer();
  POINT placeOf(std::size_t position) const;
  const TextRun* linkAt(POINT place) const;
  bool showHand() const;
  LRESULT onButtonUp(WPARAM wParam, LPARAM lParam);
  void followLink(const TextRun* run);
  // A place to go to, or a range to mark and to bring into view.
  struct Jump {
    std::size_t from, to;
  };
  void jumpTo(Jump jump);
  bool reached(const Jump& jump) const;
  void goTo(Jump jump);
  LRESULT lineAt(std::size_t position) const;
  void scrollTo(LRESULT line) const;

  HWND parent_;
  UniqueWindow control_;
  ExternalLink onExternalLink_;
  AnchorLink onAnchor_;
  RenderedPage page_;
  RichTextColors colors_;             // of the text in the control
  std::size_t shown_ = 0;             // characters in the control
  std::size_t pieceSize_;             // characters that load in a short moment
  const TextRun* pressed_ = nullptr;  // the link that the mouse was pressed on
  std::optional<Jump> jump_;          // to be done when its place is shown
};

}  // namespace tintline
