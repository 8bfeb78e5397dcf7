// The commands that convert, and what they show while they are at work.
// Tested by tests/app/commands_test.cpp.
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "convert/classic.h"

namespace tintline {
namespace {

// "Lese Zeile: 0 (10)"
std::wstring progressText(std::wstring_view what, std::size_t line, std::size_t count) {
  std::wstring text(what);
  return text.append(std::to_wstring(line)).append(L" (").append(std::to_wstring(count)) + L")";
}

constexpr std::wstring_view kReading = L"Lese Zeile: ";
constexpr std::wstring_view kWorking = L"Bearbeite Zeile: ";
constexpr std::size_t kLong = 1000;  // lines of a run that shows its progress

}  // namespace

// Shows a run in the lists and labels and lets the user's events in.
class frmVBACode::RunObserver : public ConversionObserver {
 public:
  // `firstNumber` is the number of the first line in "Bearbeite Zeile: ".
  RunObserver(frmVBACode& form, std::size_t firstNumber) : form_(form), firstNumber_(firstNumber) {}

  void reading(std::size_t index, std::size_t count) override {
    form_.Label9.Caption = progressText(kReading, index, count);
  }

  void yield() override { form_.ports_.messageLoop.yield(); }

  bool abortRequested() override { return std::exchange(form_.bEsc_, false); }

  void emitted(std::string_view line, Route route) override {
    if (route == Route::Direct)
      form_.List2.AddItem(line);
    else
      form_.hscroll2_.AddItem(line, -1, ListboxHScroll::kGrow);
  }

 protected:
  void showWorking(std::size_t index, std::size_t count) {
    form_.Label10.Caption = progressText(kWorking, index + firstNumber_, count);
    form_.showProgress(index + 1, count, kLong);
  }

  frmVBACode& form_;

 private:
  std::size_t firstNumber_;
};

// A run over all lines: the line at work is selected for a moment in both lists.
class frmVBACode::WholeRun final : public RunObserver {
 public:
  explicit WholeRun(frmVBACode& form) : RunObserver(form, 1) {}

  void processed(std::size_t index, std::size_t count) override {
    const std::size_t last = form_.List2.ListCount() - 1;
    mark(form_.List1, index, true);
    mark(form_.List2, last, true);
    form_.Frame1.Refresh();
    form_.Frame2.Refresh();
    mark(form_.List1, index, false);
    mark(form_.List2, last, false);
    showWorking(index, count);
  }

 private:
  static void mark(ListBox& list, std::size_t index, bool selected) {
    list.setSelected(index, selected);
    list.setListIndex(static_cast<std::ptrdiff_t>(index));
  }
};

// A run over the selected lines, which stay selected.
class frmVBACode::SelectionRun final : public RunObserver {
 public:
  explicit SelectionRun(frmVBACode& form) : RunObserver(form, 0) {}

  void processed(std::size_t index, std::size_t count) override {
    showWorking(index, count);
    form_.List1.setListIndex(static_cast<std::ptrdiff_t>(index));
    form_.Frame1.Refresh();
    form_.Frame2.Refresh();
  }
};

void frmVBACode::Verarbeiten() {
  followMode();
  if (shownSource_ == Mode::Classic && sourceText_.tooManyLines) return refuseToConvert();
  MousePointer = Pointer::Hourglass;
  hscroll2_.setScrollWidth(0);
  clearResult();
  const float start = ports_.clock.timer();
  const std::size_t count = List1.ListCount();
  WholeRun observer(*this);
  const bool complete = convertChosen({}, observer);
  Auswahl_ = false;
  hscroll2_.fit();
  KopierschalterSetzen();
  if (!complete) {
    tellAborted();
  } else {
    const double seconds = double{ports_.clock.timer()} - start;
    if (count > 0) {
      tellStatus(std::to_wstring(count) + L" Zeilen in " +
                 decimal(std::abs(std::floor(seconds * 100) / 100)) + L"s verarbeitet");
    }
    HTMLDateierstellen();
  }
  MousePointer = Pointer::Default;
}

// Fills List2 and the HTML text; false when the user ended the run.
bool frmVBACode::convertChosen(const ChosenLines& chosen, ConversionObserver& observer) {
  result_ = {sourceText_.exact, chosen};
  if (shown_.mode == Mode::Exact) return convertExactly(chosen);
  ClassicResult conversion = convertClassic(sourceText_.classic, ProzNamen_, chosen,
                                            conversionOptions(), frame(), highlighter_, observer);
  HTMLText = conversion.body();
  HTMLTabelle = std::move(conversion.table);
  return !conversion.aborted;
}

ConversionOptions frmVBACode::conversionOptions() const {
  return {.lineNumbers = shown_.lineNumbers, .blnPaste = blnPaste_};
}

frmVBACode::ResultOptions frmVBACode::chosenOptions() const {
  return {.mode = chosenMode(),
          .lineNumbers = Check1.Value,
          .style = optStyle.Value ? StyleMode::Inline : StyleMode::Class,
          .darkPreview = dark_ && chosenMode() == Mode::Exact};
}

// That of the result, whatever is chosen by now.
DocumentFrame frmVBACode::frame() const { return DocumentFrame(application_.colors, shown_.style); }

void frmVBACode::cmdMakro_Click() {
  if (readSourceAnew())
    run([this] { Verarbeiten(); });
  else
    AusgabeschalterSetzen(resultExists());
}

void frmVBACode::tellNotConverted() {
  tellStatus(Dateiname_ + L": mehr als " + std::to_wstring(kMaxLines) +
             L" Zeilen, nicht umgewandelt");
}

// A result of a part of the lines would be taken for that of all.
void frmVBACode::refuseToConvert() {
  DummySeite();
  HTMLText.clear();
  tellNotConverted();
}

// A file may have changed on disk since it was read, a procedure in its application; or
// the lines are those of a whole module now. What the user did to the lines since then is
// done again. What cannot be read any more stays as it is shown, and so does its result.
bool frmVBACode::readSourceAnew() {
  const TreeNode* const node = TreeView1.SelectedItem();
  if (source_ == Source::File) {
    auto module = readModule(Dateipfad_);
    if (!module) return false;
    if (module->classic.tooManyLines && chosenMode() == Mode::Classic) {
      tellNotConverted();
      return false;
    }
    showModule(std::move(*module));
  } else if (source_ == Source::Procedure && node != nullptr && node->path().size() == 3) {
    auto code = readProcedure(*node);
    if (!code) return false;
    showProcedure(std::move(*code));
  } else {
    return true;
  }
  reformatAgain();
  return true;
}

void frmVBACode::cmdAuswahl_Click() {
  if (List1.ListCount() == 0) return;
  selectedLines_ = List1.selection();
  run([this] { convertSelection(); });
}

void frmVBACode::convertSelection() {
  clearResult();
  Label9.Caption = L"";
  MousePointer = Pointer::Hourglass;
  SelectionRun observer(*this);
  const bool complete = convertChosen(selectedLines_, observer);
  Auswahl_ = true;
  hscroll2_.fit();
  if (complete) {
    HTMLDateierstellen();
    tellSelected();
  } else {
    tellAborted();
  }
  MousePointer = Pointer::Default;
}

void frmVBACode::tellSelected() {
  const auto count = std::count(selectedLines_.begin(), selectedLines_.end(), true);
  const std::size_t all = List1.ListCount();
  tellStatus(count == 0 ? L"Keine Zeile ausgewählt"
                        : std::to_wstring(count) + L" von " + std::to_wstring(all) +
                              (all == 1 ? L" Zeile" : L" Zeilen") + L" verarbeitet");
}

void frmVBACode::tellAborted() { tellStatus(L"Abgebrochen"); }

// Buttons and options are off while a run goes on. The preview's box stays as the user set it,
// and clickable: the pane follows it behind the run. After an abort there is no result to hand
// out.
void frmVBACode::run(const std::function<void()>& work) {
  QuellschalterSetzen(false);
  AusgabeschalterSetzen(false);
  OptionenSetzen(false);
  try {
    work();
  } catch (...) {
    clearResult();
    tellAborted();
    endRun();
    throw;
  }
  endRun();
}

// Of what takes no time, having less than `least` steps, nothing is shown.
void frmVBACode::showProgress(std::size_t done, std::size_t all, std::size_t least) {
  Fortschritt.Max = static_cast<int>(all);
  Fortschritt.Value = static_cast<int>(done);
  Fortschritt.Visible = all >= least;
}

void frmVBACode::endRun() {
  Fortschritt.Visible = false;
  QuellschalterSetzen(true);
  AusgabeschalterSetzen(!HTMLText.empty());
  OptionenSetzen(true);
}

// A run that the user did not start himself takes nothing away that he selected, and leaves what
// he looks at.
void frmVBACode::runAside(const std::function<void()>& work) {
  ListBox::Marks source = List1.marks(), html = List2.marks();
  const ListBox::Place sourcePlace = List1.place(), htmlPlace = List2.place();
  keepsPlaces_ = true;  // until the command ends
  run(work);
  List1.setMarks(std::move(source));
  List2.setMarks(std::move(html));
  List1.setPlace(sourcePlace);
  List2.setPlace(htmlPlace);
  KopierschalterSetzen();
}

void frmVBACode::OptionenSetzen(bool enabled) {
  Check1.Enabled = enabled;
  for (OptionButton* option : {&optClass, &optStyle, &optKlassisch, &optGenau})
    option->Enabled = enabled;
}

// Shows the result that is on display once more, with what the user has changed: the same
// lines, whatever is selected by now. When these are no more there, it stays.
void frmVBACode::ErgebnisAuffrischen() {
  if (!resultExists()) return;
  if (!Auswahl_)
    runAside([this] { Verarbeiten(); });
  else if (selectedLines_.size() == List1.ListCount())
    runAside([this] { convertSelection(); });
}

// After an abort there are lines without a result, before a conversion a text without lines.
bool frmVBACode::resultExists() const { return List2.ListCount() > 0 && !HTMLText.empty(); }

// The shortest text that tells the number, with the user's decimal separator.
std::wstring frmVBACode::decimal(double number) const {
  std::array<char, 32> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  std::wstring text(digits.data(), end);
  std::replace(text.begin(), text.end(), L'.', ports_.locale.decimalSeparator());
  return text;
}

void frmVBACode::KopierschalterSetzen() { cmdVBAClp.Enabled = List1.SelCount() > 0; }

void frmVBACode::List1auswerten() {
  KopierschalterSetzen();
  if (const auto line = pairedLine(List1)) List2.selectOnly(*line);
  if (List1.ListIndex() != ListBox::kNone)
    showInPreview(static_cast<std::size_t>(List1.ListIndex()));
}

// The selection in List1 is the user's: of its lines only the current one follows.
void frmVBACode::ListBoxauswerten() {
  if (const auto line = pairedLine(List2)) List1.setListIndex(static_cast<std::ptrdiff_t>(*line));
  if (List2.ListIndex() != ListBox::kNone)
    showInPreview(sourceLineOf(static_cast<std::size_t>(List2.ListIndex())));
}

// The current line, when it has a partner in the other list: a source line and its HTML line
// are shown together, where each line has one.
std::optional<std::size_t> frmVBACode::pairedLine(const ListBox& moved) {
  if (moved.ListIndex() == ListBox::kNone) return {};
  const auto current = static_cast<std::size_t>(moved.ListIndex());
  tellStatus(progressText(kReading, current, moved.ListCount()));
  if (Auswahl_ || List1.ListCount() != List2.ListCount()) return {};
  return current;
}

}  // namespace tintline
