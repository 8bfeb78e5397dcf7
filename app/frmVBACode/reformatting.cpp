// The commands that change the source lines in place.
// Tested by tests/app/commands_test.cpp.
#include <algorithm>
#include <utility>

#include "app/frmVBACode/frmVBACode.h"
#include "reformat/wrapping.h"

namespace tintline {

void frmVBACode::Formatieren() {
  if (List1.ListCount() == 0) return;
  narrowable_ = true;
  indent({.pass = Reformatting::Pass::Formatieren, .unit = einzug_ + 1});
}

void frmVBACode::Formatieren2() {
  if (List1.ListCount() > 0)
    indent({.pass = Reformatting::Pass::Formatieren2, .unit = std::max(einzug_ - 1, 0)});
}

void frmVBACode::indent(const Reformatting& pass) {
  SourceText text = *reformatted(sourceText_, pass);  // may throw: then nothing has changed
  einzug_ = pass.unit;
  Frame1.Caption = std::wstring(kSourceCaption) + L" (Tab=" + std::to_wstring(einzug_) + L")";
  List1.Enabled = false;
  replaceSource(std::move(text));
  // The last of several passes alone gives what all of them give.
  if (!reformatting_.empty() && reformatting_.back().width == 0) reformatting_.pop_back();
  reformatting_.push_back(pass);
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
  const Reformatting pass{
      .pass = Reformatting::Pass::Umbruch, .unit = einzug_, .width = zeilenbreite_};
  auto text = reformatted(sourceText_, pass);
  if (!text) return tellTooManyWrapped();
  replaceSource(std::move(*text));
  if (zeilenbreite_ != 0) reformatting_.push_back(pass);
}

void frmVBACode::tellTooManyWrapped() {
  ports_.dialogs.message(L"Umbrochen wären es mehr als " + std::to_wstring(kMaxLines) +
                             L" Zeilen. Der Quellcode bleibt, wie er ist.",
                         MessageIcon::Critical, {});
}

// Whether there is something to wrap.
void frmVBACode::Pruefen() {
  const auto kind = shownSource_ == Mode::Exact ? LineText::Utf8 : LineText::Ansi;
  wrappable_ = hasLongerLine(List1.lines(), zeilenbreite_, kind);
}

// In both readings; nothing when there were too many lines in the classic one.
std::optional<frmVBACode::SourceText> frmVBACode::reformatted(const SourceText& text,
                                                              const Reformatting& pass) {
  auto classic = tintline::reformatted(text.classic, pass);
  if (!classic) return {};
  SourceText result{std::move(*classic), text.tooManyLines, text.exact};
  result.exact.reformat(pass);
  return result;
}

void frmVBACode::replaceSource(SourceText text) {
  sourceText_ = std::move(text);
  showSource();
}

// Lines that keep their places keep their selection.
void frmVBACode::showSource() {
  ListBox::Marks marks = List1.marks();
  const bool shownBefore = List1.ListCount() > 0;
  const ListBox::Place place = List1.place();
  List1.setLines(shownSource_ == Mode::Exact ? sourceText_.exact.lines() : sourceText_.classic,
                 encodingOf(shownSource_));
  List1.setMarks(std::move(marks));
  if (shownBefore) List1.setPlace(place);
  hscroll1_.fit();
  Pruefen();
  KopierschalterSetzen();
}

// Lines that were read anew get what the user did to the lines before them.
void frmVBACode::reformatAgain() {
  if (reformatting_.empty()) return;
  SourceText text = sourceText_;
  for (const Reformatting& pass : reformatting_) {
    if (auto next = reformatted(text, pass))
      text = std::move(*next);
    else
      tellTooManyWrapped();
  }
  replaceSource(std::move(text));
}

}  // namespace tintline
