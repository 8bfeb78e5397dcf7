// See html_module.h. Tested by tests/golden/exact.
#include "listing/html_module.h"

#include "vb/token_cursor.h"

namespace tintline::listing {
namespace {

constexpr std::uint32_t kLongHead = 3;  // lines: a longer one would hide too much if it stayed

}  // namespace

HtmlModule::HtmlModule(Output& out, const Options& options, const Markup& markup,
                       const Targets& targets, const Source& source, std::string_view heading,
                       const Companion* companion)
    : out_(out),
      options_(options),
      source_(source),
      own_(targets[source.index]),
      heading_(heading),
      companion_(companion),
      choice_(source.module, options),
      code_(out, options, markup, targets, source, true),
      parts_(source.module) {}

bool HtmlModule::write() {
  bool skipped = false, hasEnd = false;
  while (!code_.atEnd()) {
    const Part part = parts_.partOf(code_.token());
    if (!choice_.shows(code_.line(), code_.token())) {
      code_.skipLine();
      skipped = part != Part::Header;
      continue;
    }
    // A section is for procedures to which links can lead.
    const Section* section = parts_.section();
    if (section != nullptr && !own_.isShown(section->declaration)) section = nullptr;
    open({section, section == nullptr && part != Part::Header ? Part::Loose : part, skipped});
    skipped = false;
    do {
      hasEnd = code_.writeLine(section == nullptr ? vb::kNone : section->declaration);
      if (hasEnd) out_ << '\n';
    } while (!code_.atEnd() && code_.token() < parts_.end() &&
             choice_.shows(code_.line(), code_.token()));
  }
  close();
  return hasEnd;
}

// Opens what the next line stands in, after closing what it does not.
void HtmlModule::open(const Place& place) {
  const bool sameBlock =
      blockIsOpen_ && place.section == place_.section && place.part == place_.part && !place.gap;
  if (sameBlock) return;
  const bool sameSection = blockIsOpen_ && place.section == place_.section;
  if (blockIsOpen_) closeBlock();
  if (!sameSection) {
    if (blockIsOpen_ && place_.section != nullptr) out_ << "</section>";
    if (place.section != nullptr)
      out_ << "<section id=\"" << own_.htmlId(place.section->declaration) << "\">";
  }
  place_ = place;
  blockIsOpen_ = true;
  openBlock();
}

void HtmlModule::openBlock() {
  if (place_.part == Part::Head) {
    out_ << "<" << heading_ << (isLong(*place_.section) ? " class=long" : "") << "><code>";
    return;
  }
  if (place_.part == Part::Header && options_.header == Header::Fold) {
    const Words& words = wordsOf(options_.language);
    out_ << "<details><summary>" << words.header << " (";
    out_ << std::u8string_view(counted(shownHeaderLines(), words.line, words.lines));
    out_ << ")</summary>";
  }
  out_ << (place_.gap ? "<pre class=gap><code>" : "<pre><code>");
}

void HtmlModule::closeBlock() {
  if (place_.part == Part::Head) {
    out_ << "</code></" << heading_ << ">";
    if (companion_ != nullptr) companion_->writeBelowHead(out_, place_.section->declaration);
    return;
  }
  out_ << "</code></pre>";
  if (place_.part == Part::Header && options_.header == Header::Fold) out_ << "</details>";
}

void HtmlModule::close() {
  if (!blockIsOpen_) return;
  closeBlock();
  if (place_.section != nullptr) out_ << "</section>";
}

bool HtmlModule::isLong(const Section& section) const {
  const vb::Tokens& tokens = source_.module.tokens;
  const std::size_t begin = tokens[section.headLine].begin;
  const auto head = std::u8string_view(source_.module.text)
                        .substr(begin, vb::endOf(tokens, section.headEnd - 1) - begin);
  return vb::lineEndsIn(head) >= kLongHead;
}

std::uint32_t HtmlModule::shownHeaderLines() const {
  std::uint32_t shown = 0;
  SourceLines lines(source_.module);
  for (; !lines.atEnd() && lines.token() < source_.module.header.end; lines.skipLine())
    shown += choice_.shows(lines);
  return shown;
}

}  // namespace tintline::listing
