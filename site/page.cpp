// See page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/page.h"

#include "listing/html_text.h"
#include "listing/module_targets.h"
#include "listing/page_head.h"
#include "listing/style_sheet.h"

namespace tintline::site {
namespace {

using listing::ColorRule;
using listing::Tint;

constexpr std::string_view kMainId = "inhalt";

constexpr std::string_view kLinksStyle = R"(.site{margin-top:6px;font-size:14px}
.site a{display:inline-block;padding:2px 0;margin-right:14px;text-decoration:none}
.site a:hover,.site a:focus,.site a[aria-current]{text-decoration:underline}
.site a[aria-current]{font-weight:600}
@media print{.site{display:none}}
)";
constexpr ColorRule kLinksColors[] = {{".site a", "color", Tint::Name}};

constexpr std::string_view kStyle = R"(main{padding:4px 20px 40px;max-width:75em}
main:focus{outline:0}
h2{margin:22px 0 4px;font-size:17px;line-height:1.3;overflow-wrap:anywhere}
h3{margin:14px 0 2px;font-size:15px;line-height:1.3;overflow-wrap:anywhere}
p,ul{margin:6px 0;max-width:55em}
ul{padding-left:20px}
li{margin:2px 0;overflow-wrap:anywhere}
.wide{overflow-x:auto}
.wide td:first-child{min-width:7em}
table{border-collapse:collapse;width:100%}
th,td{padding:3px 14px 3px 0;text-align:left;vertical-align:top;border-bottom:1px solid;overflow-wrap:anywhere}
th{width:22%;font-size:13px;font-weight:600;white-space:nowrap}
th:first-child{width:30%}
th:first-child:nth-last-child(3){width:80%}
th.r{width:9%}
.r{text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums}
th:last-child,td:last-child{padding-right:0}
.note{display:block;font-size:13px;font-weight:400}
code{font:13px/1.5 Consolas,"Cascadia Mono","DejaVu Sans Mono",Menlo,monospace}
main a{text-decoration:none}
main a:hover,main a:focus,p a{text-decoration:underline}
summary{cursor:pointer;overflow-wrap:anywhere}
summary+ul{margin:0 0 6px}
.letters a{display:inline-block;min-width:24px;padding:2px 4px;text-align:center}
@media(max-width:40em){main{padding-left:12px;padding-right:12px}header{padding-left:12px;padding-right:12px}th,td{padding-right:8px}th{width:27%;font-size:12px}td{font-size:13px}.wide th,.wide td{padding-right:6px;font-size:12px}.wide th{font-size:11px}}
@media print{.skip,.letters{display:none}body{font-size:10pt}main{max-width:none;padding:0}header{padding-left:0}a{text-decoration:none}h2,h3{break-after:avoid}tr,li{break-inside:avoid}}
@page{margin:15mm}
)";
constexpr ColorRule kColors[] = {{"body,.skip:focus", "color", Tint::Text},
                                 {"body,.skip:focus", "background-color", Tint::Page},
                                 {"header,th,td", "border-color", Tint::Border},
                                 {"header p,.note,th", "color", Tint::Quiet},
                                 {"main a", "color", Tint::Name},
                                 {":target", "background-color", Tint::Target}};

}  // namespace

std::u8string_view accessorName(vb::Accessor accessor) {
  constexpr std::u8string_view kNames[] = {u8"", u8"Get", u8"Let", u8"Set"};
  return kNames[static_cast<std::size_t>(accessor)];
}

void writePageLinks(listing::Output& out, const Words& words, std::u8string_view root,
                    std::size_t current) {
  out << "<div class=site role=navigation aria-label=\"" << words.site << "\">";
  for (std::size_t i = 0; i < kPages; ++i)
    out << "<a href=\"" << root << kPageFiles[i] << "\""
        << (i == current ? " aria-current=page>" : ">") << words.pages[i] << "</a> ";
  out << "</div>";
}

std::string pageLinksStyle(const listing::Options& options) {
  return std::string(kLinksStyle) + listing::colorStyle(kLinksColors, options);
}

SitePage::SitePage(std::ostream& stream, const Site& site, const listing::Options& options,
                   Page page)
    : out_(stream),
      site_(site),
      words_(site::wordsOf(options.language)),
      listingWords_(listing::wordsOf(options.language)) {
  const auto index = static_cast<std::size_t>(page);
  std::u8string title = site.title;
  if (page != Page::Index) title = std::u8string(words_.pages[index]) + u8" · " + title;
  writeHead(
      out_, listingWords_, title,
      {listing::kBaseStyle, listing::kFrameStyle, kStyle, listing::colorStyle(kColors, options),
       pageLinksStyle(options), listing::embeddedStyle(options.css)});
  out_ << "<body>\n<a class=skip href=\"#" << kMainId << "\">" << words_.skipLink
       << "</a>\n<header><h1>" << listing::toHtml(site.title) << "</h1>";
  writePageLinks(out_, words_, u8"", index);
  out_ << "</header>\n<main id=\"" << kMainId << "\" tabindex=-1>\n";
}

void SitePage::close() {
  out_ << "</main>\n</body>\n</html>\n";
  out_.flush();
}

void SitePage::text(std::u8string_view text) { out_ << listing::toHtml(text); }

void SitePage::heading(std::u8string_view element, std::u8string_view text) {
  out_ << "<" << element << ">" << listing::toHtml(text) << "</" << element << ">\n";
}

void SitePage::moduleLink(const ModuleFacts& module) {
  out_ << "<a href=\"" << kModuleFolder << "/" << module.page << "\">"
       << listing::toHtml(module.name) << "</a>";
}

void SitePage::moduleLink(const Project& project, std::uint32_t module) {
  moduleLink(project.modules()[module]);
  if (site_.projects.size() > 1)
    out_ << "<span class=note>" << listing::toHtml(project.name()) << "</span>";
}

void SitePage::nameLink(const Project& project, std::uint32_t module, std::uint32_t declaration,
                        Title title) {
  const ModuleFacts& facts = project.modules()[module];
  const listing::ModuleTargets& target = project.targets()[module];
  out_ << "<a href=\"" << kModuleFolder << "/" << facts.page;
  if (target.id(declaration).empty())
    out_ << "#" << facts.names[declaration].line << "\">";
  else if (title == Title::Head)
    out_ << target.link(declaration) << ">";
  else
    out_ << "#" << target.htmlId(declaration) << "\">";
  out_ << listing::toHtml(facts.nameOf(declaration));
  if (const auto accessor = accessorName(facts.names[declaration].accessor); !accessor.empty())
    out_ << " (" << accessor << ")";
  out_ << "</a>";
}

void SitePage::lineLink(const ModuleFacts& module, std::uint32_t line) {
  out_ << "<a href=\"" << kModuleFolder << "/" << module.page << "#" << line << "\">" << line
       << "</a>";
}

void SitePage::beginTable(std::u8string_view label, std::initializer_list<Column> columns) {
  out_ << "<table aria-label=\"" << listing::toHtml(label) << "\"><thead><tr>";
  for (const Column& column : columns)
    out_ << (column.number ? "<th scope=col class=r>" : "<th scope=col>") << column.name << "</th>";
  out_ << "</tr></thead><tbody>\n";
}

void SitePage::endTable() { out_ << "</tbody></table>\n"; }

}  // namespace tintline::site
