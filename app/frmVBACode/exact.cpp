// The exact mode in the main window: its choice, its conversion, and code copied with colours.
// Tested by tests/app/exact_test.cpp.
#include "convert/exact.h"

#include <algorithm>
#include <utility>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "output/html_format.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

constexpr std::string_view kExact = "genau", kClassic = "klassisch";

}  // namespace

void frmVBACode::loadMode() {
  const bool exact =
      modIniSave::fkt_IniWertLesen(application_.settingsFile, modIniSave::kModeKey) == kExact;
  optGenau.Value = exact;
  optKlassisch.Value = !exact;
  shownSource_ = chosenMode();
}

// List1 shows the lines as the chosen mode reads them.
void frmVBACode::followMode() {
  if (shownSource_ == chosenMode()) return;
  shownSource_ = chosenMode();
  showSource();
  const std::string_view name = shownSource_ == Mode::Exact ? kExact : kClassic;
  modIniSave::IniWertSchreiben(application_.settingsFile, modIniSave::kModeKey,
                               std::string(name) + ",");
}

// Does what takes its time with long texts, while the user sees how far it is and may end it:
// false then.
bool frmVBACode::watched(const std::function<void(const Progress&)>& work) {
  constexpr std::size_t kLong = 200'000;  // steps, which take about a second
  struct Ended {};
  bool complete = true;
  try {
    work([this](std::size_t done, std::size_t all) {
      showProgress(done, all, kLong);
      ports_.messageLoop.yield();
      if (std::exchange(bEsc_, false)) throw Ended{};
    });
  } catch (const Ended&) {
    complete = false;
  }
  Fortschritt.Visible = false;
  return complete;
}

// Fills List2 and the HTML text; false when the user ended the run.
bool frmVBACode::convertExactly(const ChosenLines& chosen) {
  ExactResult result;
  const bool complete = watched([&](const Progress& progress) {
    result = convertExact(sourceText_.exact, chosen, exactOptions(shown_), exactWords_,
                          exactText(title()), progress, shown_.darkPreview);
  });
  if (!complete) return false;
  List2.setLines(std::move(result.lines), TextEncoding::Utf8);
  HTMLText = std::move(result.page);
  exactPreview_ = std::move(result.preview);
  lineAnchors_ = std::move(result.anchors);
  return true;
}

// The source line that a line of List2 was made of.
std::size_t frmVBACode::sourceLineOf(std::size_t htmlLine) const {
  if (!result_.chosen) return htmlLine;
  std::size_t line = 0;
  for (std::size_t shown = 0; line < result_.chosen->size(); ++line)
    if ((*result_.chosen)[line] && shown++ == htmlLine) break;
  return line;
}

// Whether the lines of List1 are those that the page of the exact mode was made of.
bool frmVBACode::pageHasSourceLines() const {
  return resultExists() && shown_.mode == Mode::Exact && shownSource_ == Mode::Exact &&
         lineAnchors_.lines() == List1.ListCount();
}

void frmVBACode::showInPreview(std::size_t sourceLine) {
  if (!pageHasSourceLines()) return;
  if (const auto anchor = lineAnchors_.anchorOf(sourceLine)) wBrowser.showAnchor(*anchor);
}

// A click on the number of a line. Of the user's selection nothing but a single line is replaced.
void frmVBACode::anchorFollowed(const std::wstring& anchor) {
  const auto line = pageHasSourceLines() ? lineAnchors_.lineOf(anchor) : std::nullopt;
  if (!line) return;
  if (List1.SelCount() <= 1)
    List1.selectOnly(*line);
  else
    List1.setListIndex(static_cast<std::ptrdiff_t>(*line));
  List1auswerten();
}

listing::Options frmVBACode::exactOptions(const ResultOptions& result) const {
  listing::Options options;
  options.lineNumbers = result.lineNumbers;
  options.colors = exactColors(application_.colors);
  if (result.style == StyleMode::Inline) {  // to be pasted into other pages
    options.style = listing::Style::Inline;
    options.links = listing::Links::None;
  }
  return options;
}

// What a browser shows as the name of the page.
std::wstring frmVBACode::title() const {
  if (source_ == Source::File) return Dateiname_;
  const std::vector<ExactModule>& modules = sourceText_.exact.modules();
  if (modules.size() == 1 && !modules.front().name.empty()) return fromUtf8(modules.front().name);
  const TreeNode* const node = TreeView1.SelectedItem();
  if (modules.size() < 2 || node == nullptr) return L"VB(A)-Code";
  const std::wstring document = node->path().front();
  return document.substr(0, document.rfind(L" ("));  // the number of its modules stands behind it
}

// The lines of the result's source that these lines of List2 stand for.
ChosenLines frmVBACode::chosenOf(const std::vector<bool>& htmlLines) const {
  if (!result_.chosen) return htmlLines;
  std::vector<bool> chosen(result_.chosen->size());
  std::size_t shown = 0;
  for (std::size_t i = 0; i < chosen.size() && shown < htmlLines.size(); ++i)
    if ((*result_.chosen)[i]) chosen[i] = htmlLines[shown++];
  return chosen;
}

// What the user has marked in the list that he works in, or all of it; in neither of them what the
// preview shows.
void frmVBACode::FormatiertKopieren() {
  const bool source = ActiveControl == &List1 || !resultExists();
  const ListBox& list = source ? List1 : List2;
  ChosenLines chosen = source ? ChosenLines() : result_.chosen;
  if (ActiveControl == &list && list.SelCount() > 0)
    chosen = source ? list.selection() : chosenOf(list.selection());
  FormattedCopy copy;
  const bool complete = watched([&](const Progress& progress) {
    copy = formattedCopy(source ? sourceText_.exact : result_.source, chosen,
                         exactOptions(chosenOptions()), exactWords_, progress);
  });
  if (!complete) return tellAborted();
  const auto count = std::count(copy.text.begin(), copy.text.end(), L'\n');
  ports_.clipboard.setFormats(
      {.html = htmlFormat(copy.html), .rtf = std::move(copy.rtf), .text = std::move(copy.text)});
  tellStatus(std::to_wstring(count) + (count == 1 ? L" Zeile" : L" Zeilen") +
             L" mit Farben kopiert");
}

}  // namespace tintline
