// See html_document.h. Tested by tests/golden/exact.
#include "listing/html_document.h"

#include "listing/html_module.h"
#include "listing/html_text.h"
#include "listing/page_head.h"
#include "listing/style_sheet.h"
#include "listing/token_names.h"

namespace tintline::listing {
namespace {

// Browsers copy the end of the last line only when there is something behind it.
constexpr std::string_view kCopiedEnd = "<div class=\"end\"></div>";

constexpr std::string_view kPreStyle =
    "font-family:Consolas,'Cascadia Mono','DejaVu Sans Mono',Menlo,monospace;font-size:13px;"
    "line-height:1.5;margin:0;white-space:pre-wrap;word-wrap:break-word;overflow-wrap:anywhere";

constexpr std::string_view kBodyStyle = "margin:16px;font-family:system-ui,sans-serif";

}  // namespace

HtmlLook::HtmlLook(Format documents, const Options& chosen, Place place)
    : format(documents), options(chosen), markup(chosen) {
  if (format != Format::Page || options.style == Style::Inline) return;
  style = styleSheet(options, place == Place::OnePage);
  userStyle = embeddedStyle(options.css);
}

HtmlDocument::HtmlDocument(const HtmlLook& look, std::ostream& out, const Targets& targets,
                           std::u8string_view title, const Companion* companion)
    : look_(look),
      out_(out),
      targets_(targets),
      title_(title),
      words_(wordsOf(look.options.language)),
      companion_(companion) {}

void HtmlDocument::add(const Source& source) {
  if (!begun_) begin(&source);
  if (look_.format == Format::Lines) return writeLines(source);
  if (isInline()) return writeInline(source);
  const ModuleTargets& own = targets_[source.index];
  if (several()) {
    out_ << "<section id=\"" << own.topId() << "\"><h2>" << toHtml(source.module.name) << "</h2><p>"
         << summaryOf(source.module, words_) << "</p>\n";
  }
  HtmlModule module(out_, look_.options, look_.markup, targets_, source, several() ? "h3" : "h2",
                    companion_);
  if (module.write()) out_ << kCopiedEnd;
  if (several()) out_ << "</section>\n";
}

void HtmlDocument::close() {
  if (!begun_) begin(nullptr);
  if (look_.format == Format::Page)
    out_ << (isInline() ? "</main>\n</body>\n</html>\n" : "</main>\n</div>\n</body>\n</html>\n");
  else if (look_.format == Format::Body && !isInline())
    out_ << "</div>\n";
  out_.flush();
}

// `first` is the first module, if there is one.
void HtmlDocument::begin(const Source* first) {
  begun_ = true;
  if (look_.format == Format::Page) {
    writeHead();
    writePageHeader(first);
    if (isInline()) {
      out_ << "<main>\n";
      return;
    }
    out_ << "<div class=\"lay\">\n";
    writeIndex(first);
    out_ << "<main id=\"" << kCodeId << "\" tabindex=\"-1\" translate=\"no\">";
  } else if (look_.format == Format::Body && !isInline()) {
    out_ << "<div class=\"highlight\" id=\"" << kCodeId << "\" translate=\"no\">";
  }
}

void HtmlDocument::writeHead() {
  const std::string ofCompanion = companion_ != nullptr ? companion_->style() : std::string();
  listing::writeHead(out_, words_, title_, {look_.style, ofCompanion, look_.userStyle});
  if (isInline())
    out_ << "<body style=\"" << kBodyStyle << "\">\n";
  else
    out_ << "<body>\n";
}

void HtmlDocument::writePageHeader(const Source* first) {
  if (!isInline())
    out_ << "<a class=\"skip\" href=\"#" << kCodeId << "\">" << words_.skipLink << "</a>\n";
  const bool isOne = !several() && first != nullptr;
  out_ << "<header><h1>" << toHtml(isOne ? first->module.name : title_) << "</h1>";
  if (isOne) out_ << "<p>" << summaryOf(first->module, words_) << "</p>";
  if (isOne && !first->module.description.empty())
    out_ << "<p>" << toHtml(first->module.description) << "</p>";
  if (companion_ != nullptr) companion_->writeHeader(out_);
  out_ << "</header>\n";
}

void HtmlDocument::writeIndex(const Source* first) {
  std::size_t shown = several() ? targets_.size() : 0;
  if (!several() && first != nullptr)
    for (std::size_t group = 0; group < kGroups; ++group)
      shown += targets_[first->index].group(static_cast<Group>(group)).size();
  if (shown == 0) return;  // an index of nothing
  out_ << "<nav aria-label=\"" << words_.index << "\">";
  if (!several()) {
    writeGroups(targets_[first->index]);
  } else {
    for (std::uint32_t i = 0; i < targets_.size(); ++i) {
      out_ << "<h2><a href=\"#" << targets_[i].topId() << "\">" << toHtml(targets_[i].name())
           << "</a></h2>\n";
      writeGroups(targets_[i]);
    }
  }
  out_ << "</nav>\n";
}

void HtmlDocument::writeGroups(const ModuleTargets& module) {
  const std::string_view heading = several() ? "h3" : "h2";
  for (std::size_t i = 0; i < kGroups; ++i) {
    const auto entries = module.group(static_cast<Group>(i));
    if (entries.empty()) continue;
    out_ << "<" << heading << ">" << words_.groups[i] << "</" << heading << "><ul>\n";
    for (const IndexEntry& entry : entries)
      out_ << "<li><a href=\"" << module.link(entry.declaration) << ">" << module.label(entry)
           << "</a></li>\n";
    out_ << "</ul>";
  }
}

void HtmlDocument::writeInline(const Source& source) {
  if (several()) out_ << "<h2>" << toHtml(source.module.name) << "</h2>\n";
  const Palette palette = lightPalette(look_.options.colors);
  out_ << "<pre style=\"" << kPreStyle << ";color:" << colorText(palette, Tint::Text)
       << ";background-color:" << colorText(palette, Tint::Page) << "\"><code>";
  writeLines(source);
  out_ << "</code></pre>\n";
}

void HtmlDocument::writeLines(const Source& source) {
  const LineChoice choice(source.module, look_.options);
  HtmlCode code(out_, look_.options, look_.markup, targets_, source, false);
  while (!code.atEnd())
    if (!choice.shows(code.line(), code.token()))
      code.skipLine();
    else if (code.writeLine() || look_.format == Format::Lines)
      out_ << "\n";
}

}  // namespace tintline::listing
