// The commands that change the source lines in place.
// Tested by tests/app/reformatting_test.cpp.
#include <utility>

#include "app/frmVBACode/frmVBACode.h"
#include "reformat/indentation.h"
#include "reformat/wrapping.h"

namespace tintline {

void frmVBACode::Formatieren() {
  if (List1.ListCount() == 0) return;
  narrowable_ = true;
  indent(tintline::Formatieren);
}

void frmVBACode::Formatieren2() {
  if (List1.ListCount() > 0) indent(tintline::Formatieren2);
}

void frmVBACode::indent(LineList (*pass)(const LineList&, int&)) {
  int unit = einzug_;
  LineList lines = pass(List1.lines(), unit);  // may be too much: then nothing has changed
  einzug_ = unit;
  Frame1.Caption = std::wstring(kSourceCaption) + L" (Tab=" + std::to_wstring(einzug_) + L")";
  List1.Enabled = false;
  replaceLines(std::move(lines));
  // The last of several passes alone gives what all of them give.
  if (!reformatting_.empty() && reformatting_.back().width == 0) reformatting_.pop_back();
  reformatting_.push_back({.unit = einzug_, .width = 0});
  List1.Enabled = true;
  List1.Refresh();
}

void frmVBACode::Zeilenbreite() {
  const auto answer =
      ports_.dialogs.input(L"Zeilenbreite (" + std::to_wstring(kMinLineWidth) + L" bis " +
                               std::to_wstring(kMaxLineWidth) + L" Zeichen, 0 = aus):",
                           std::to_wstring(zeilenbreite_));
  if (!answer) return;
  if (const auto width = parseLineWidth(*answer)) {
    zeilenbreite_ = *width;
    Pruefen();
  } else {
    ports_.dialogs.message(L"\"" + *answer + L"\" ist keine Zeilenbreite. Erlaubt sind " +
                               std::to_wstring(kMinLineWidth) + L" bis " +
                               std::to_wstring(kMaxLineWidth) + L" Zeichen oder 0 für aus.",
                           MessageIcon::Critical, {});
  }
}

void frmVBACode::Umbruch() {
  auto lines = wrapLines(List1.lines(), zeilenbreite_, einzug_);
  if (!lines) return tellTooManyWrapped();
  replaceLines(std::move(*lines));
  if (zeilenbreite_ != 0) reformatting_.push_back({.unit = einzug_, .width = zeilenbreite_});
}

void frmVBACode::tellTooManyWrapped() {
  ports_.dialogs.message(L"Umbrochen wären es mehr als " + std::to_wstring(kMaxLines) +
                             L" Zeilen. Der Quellcode bleibt, wie er ist.",
                         MessageIcon::Critical, {});
}

// Whether there is something to wrap.
void frmVBACode::Pruefen() { wrappable_ = hasLongerLine(List1.lines(), zeilenbreite_); }

// Lines that keep their places keep their selection.
void frmVBACode::replaceLines(LineList lines) {
  const std::vector<bool> selection = List1.selection();
  const bool samePlaces = lines.size() == List1.ListCount();
  List1.setLines(std::move(lines));
  hscroll1_.fit();
  Pruefen();
  for (std::size_t line = 0; samePlaces && line < selection.size(); ++line)
    List1.setSelected(line, selection[line]);
  KopierschalterSetzen();
}

// Lines that were read anew get what the user did to the lines before them.
void frmVBACode::reformatAgain() {
  if (reformatting_.empty()) return;
  LineList lines = List1.lines();
  for (const Reformatting& pass : reformatting_) {
    int wider = pass.unit + 1;  // which the pass takes back
    if (pass.width == 0)
      lines = tintline::Formatieren2(lines, wider);
    else if (auto wrapped = wrapLines(lines, pass.width, pass.unit))
      lines = std::move(*wrapped);
    else
      tellTooManyWrapped();
  }
  replaceLines(std::move(lines));
}

}  // namespace tintline
