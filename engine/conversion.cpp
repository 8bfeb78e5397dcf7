// See conversion.h. Tested by tests/unit/engine/engine_property_test.cpp.
#include "engine/conversion.h"

#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "engine/call_linker.h"
#include "engine/line_emission.h"

namespace tintline {
namespace {

constexpr std::string_view kFrameOpener = "<div style='border: thin solid #000080;'>";
constexpr std::string_view kNextFrame = "</div><br><div style='border: thin solid #000080;'>";
constexpr std::string_view kFrameCloser = "</div>";

const ProcedureNames kNoNames;

// The marks that tell the kind of a line, looked for without regard to case and
// wherever they stand: in a comment they count like the highlighter's own.
struct LineMarks {
  std::size_t head = std::string_view::npos;  // position of "class='Sub'>"
  bool procedureEnd = false;                  // "class='EndSub'" occurs
};

constexpr std::size_t kValue = 6;  // where the class stands: rarer than "class="
constexpr CaselessText kSub("class='Sub'>", kValue), kEndSub("class='EndSub'", kValue);
constexpr CaselessText kClass("class='");

// Where the source holds nothing like them, only the highlighter's own spans do: those of heads
// and ends open the line.
LineMarks findMarks(std::string_view html, std::string_view source, bool apostropheInSource) {
  constexpr std::string_view kHead = "<span name='";
  if (apostropheInSource && kClass.isIn(source)) return {kSub.findIn(html), kEndSub.isIn(html)};
  if (html.starts_with(kHead)) {
    // The name of a head ends at the next apostrophe, unless it holds one.
    return {apostropheInSource ? kSub.findIn(html) : html.find('\'', kHead.size()) + 2, false};
  }
  return {std::string_view::npos, html.starts_with("<span class='EndSub'")};
}

class Run {
 public:
  Run(const LineList& List1, const ProcedureNames& ProzNamen, const ConversionOptions& options,
      const DocumentFrame& frame, Highlighter& highlighter, ConversionObserver& observer)
      : List1_(List1),
        options_(options),
        highlighter_(highlighter),
        observer_(observer),
        linker_(options.blnPaste ? kNoNames : ProzNamen),
        collector_(List1, frame, observer) {}

  Conversion convertAll() {
    Conversion result;
    for (std::size_t i = 0; i < List1_.size() && !result.aborted; ++i)
      result.aborted = !convertLine(i);
    if (frameOpen_ && !result.aborted) collector_.append(kFrameCloser);
    result.List2 = std::move(collector_).take();
    return result;
  }

 private:
  // False when the user asked to end the run.
  bool convertLine(std::size_t i) {
    observer_.reading(i, List1_.size());
    observer_.yield();
    const std::string_view source = List1_[i];
    const std::string_view all = List1_.text();
    std::string_view html = highlighter_.fkt_ZeileKonvertieren(source, all.data() + all.size());
    const LineMarks marks = findMarks(html, source, highlighter_.lineHoldsApostrophe());
    if (marks.procedureEnd) html = withRule(html);
    if (observer_.abortRequested()) return false;
    observer_.yield();
    if (marks.head != std::string_view::npos)
      emitHead(html, marks.head, source);
    else
      html = emitOther(i, html, source);
    statementStart_ = !continuesInHtml(html);
    observer_.yield();
    return true;
  }

  std::string_view withRule(std::string_view html) {
    ruled_.assign(html).append("<hr>");
    return ruled_;
  }

  void emitHead(std::string_view html, std::size_t mark, std::string_view source) {
    constexpr std::string_view kEmptyCode = "<span class=\"Code\"> </span>";
    decorated_.clear();
    if (options_.lineNumbers)
      decorateNumberedHead(html.substr(0, mark), source);
    else
      decorateHead(html);
    if (decorated_.find(kEmptyCode) != std::string::npos)
      decorated_ = Replace(decorated_, kEmptyCode, " ");
    collector_.emit(decorated_, "<br>");
    bSubUmbruch_ = continuesInSource(source);
    if (!bSubUmbruch_) ++lineCounter_;
  }

  // The number is the anchor and the link back; the whole head takes the
  // procedure colour. The opener ends with a blank, so that two stand in front
  // of HREF: kept on purpose.
  void decorateNumberedHead(std::string_view opener, std::string_view source) {
    const std::size_t number = lineCounter_ + 1;
    decorated_.append(Replace(LTrim(opener), "<span name", "<a name"));
    decorated_.append(" HREF='#Index' class='Marks'>").append(std::to_string(number));
    decorated_.append(":</a><span class='Marks'>").append(numberFill(number));
    decorated_.append("</span><span class='Sub'>").append(Trim(source)).append("</span>");
  }

  // Every span of the head is a link back; the first one's name is the anchor.
  void decorateHead(std::string_view html) {
    constexpr std::string_view kOpening = "<span ", kClosing = "</span>";
    for (std::size_t tag; (tag = html.find('<')) != std::string_view::npos;) {
      decorated_.append(html.substr(0, tag));
      html.remove_prefix(tag);
      const bool opening = html.starts_with(kOpening), closing = html.starts_with(kClosing);
      decorated_.append(opening ? "<a HREF='#Index' " : closing ? "</a>" : "<");
      html.remove_prefix(opening ? kOpening.size() : closing ? kClosing.size() : 1);
    }
    decorated_.append(html);
  }

  // Returns the line's HTML as call linking left it.
  std::string_view emitOther(std::size_t i, std::string_view html, std::string_view source) {
    if (!bSubUmbruch_) html = linker_.link(html, source);
    if (startsModule(i, html, source))
      collector_.append(std::exchange(frameOpen_, true) ? kNextFrame : kFrameOpener);
    const bool continues = continuesInSource(source);
    constexpr std::string_view kContinued = "<br><br>", kDone = "<br>\n";
    collector_.emit(decorated(html, source), continues ? kContinued : kDone, !statementStart_);
    observer_.processed(i, List1_.size());
    if (!continues) {
      bSubUmbruch_ = false;
      ++lineCounter_;
    }
    return html;
  }

  // The upper rule of a module header.
  bool startsModule(std::size_t i, std::string_view html, std::string_view source) const {
    // Neither spans nor links put such a rule together, but they can tear one apart.
    const auto holdsRule = [](std::string_view line) {
      return line.find("'-------") != std::string_view::npos;
    };
    return highlighter_.lineHoldsApostrophe() && i + 1 < List1_.size() && holdsRule(source) &&
           holdsRule(html) && containsIgnoreCase(List1_[i + 1], "Modul:");
  }

  std::string_view decorated(std::string_view html, std::string_view source) {
    decorated_.clear();
    if (bSubUmbruch_) {
      if (options_.lineNumbers) decorated_ = kNumberColumn;
      decorated_ += options_.lineNumbers ? "<a class='Sub'>" : "<a HREF='#Index' class='Sub'>";
      return decorated_.append(Trim(source)).append("</a>");
    }
    if (!options_.lineNumbers) return html;
    decorated_ = statementStart_ ? numberPrefix(lineCounter_ + 1) : kNumberColumn;
    return decorated_.append(html);
  }

  const LineList& List1_;
  const ConversionOptions options_;
  Highlighter& highlighter_;
  ConversionObserver& observer_;
  CallLinker linker_;
  LineCollector collector_;
  std::size_t lineCounter_ = 0;  // completed logical lines
  bool bSubUmbruch_ = false;     // a procedure head is continued
  bool statementStart_ = true;   // the line before did not end in a continuation
  bool frameOpen_ = false;
  std::string ruled_, decorated_;
};

}  // namespace

Conversion Verarbeiten(const LineList& List1, const ProcedureNames& ProzNamen,
                       const ConversionOptions& options, const DocumentFrame& frame,
                       Highlighter& highlighter, ConversionObserver& observer) {
  if (List1.size() > kMaxLines) throw std::length_error("more lines than the counters hold");
  return Run(List1, ProzNamen, options, frame, highlighter, observer).convertAll();
}

}  // namespace tintline
