// See style_sheet.h. Tested by tests/browser/run.py.
//
// Neither custom properties nor light-dark(): browser objects of old systems show these pages, too.
#include "listing/style_sheet.h"

#include <string_view>
#include <utility>

#include "base/text.h"
#include "listing/token_names.h"

namespace tintline::listing {
namespace {

// Of these, $H is the heading of a procedure.
constexpr std::string_view kCodeFont =
    R"(pre,code,main $H{font:13px/1.5 Consolas,"Cascadia Mono","DejaVu Sans Mono",Menlo,monospace}
)";
constexpr std::string_view kLayout =
    R"(nav{padding:4px 16px 12px 20px;max-height:40vh;overflow:auto;border-bottom:1px solid}
nav h2,nav h3{margin:10px 0 2px;font-size:13px;font-weight:600}
nav h2 a{font-size:15px}
nav ul{list-style:none;margin:0;padding:0;columns:13em;column-gap:20px}
nav li{white-space:nowrap;overflow:hidden;text-overflow:ellipsis}
nav a{text-decoration:none}
nav a:hover,nav a:focus{text-decoration:underline}
main{padding:8px 0 40px;min-width:0}
main:focus{outline:0}
.end{height:1px}
main pre,main $H{position:relative;margin:0;padding:0 16px;white-space:pre-wrap;word-wrap:break-word;overflow-wrap:anywhere;-moz-tab-size:4;tab-size:4}
main $H{z-index:1;padding-top:2px;padding-bottom:2px;page-break-after:avoid;break-after:avoid}
main $H .nf{font-weight:700}
pre.gap{margin-top:8px;border-top:1px dashed;padding-top:8px}
summary{padding:4px 16px;font-size:13px;cursor:pointer;-webkit-user-select:none;-ms-user-select:none;user-select:none}
.c{font-style:italic}
.err{text-decoration:underline;text-decoration-style:wavy}
code a{text-decoration:underline;text-decoration-style:dotted;text-decoration-thickness:1px;text-underline-offset:3px}
code a.v{text-decoration:none}
code a:hover,code a:focus{text-decoration:underline}
code span[title]{outline:1px dotted}
code span[style]:before{content:attr(title)}
:target{scroll-margin-top:4em}
)";

// The heads stay in view where there is room for them.
constexpr std::string_view kSticky =
    R"(@media screen and (min-height:30em){main $H{position:-webkit-sticky;position:sticky;top:0}main $H.long{position:relative}}
@media(min-width:60em){.lay{display:flex;align-items:flex-start}nav{flex:0 0 18em;position:-webkit-sticky;position:sticky;top:0;max-height:none;height:100vh;border:0;border-right:1px solid}main{flex:1 1 0%}}
)";

// Numbers are neither text nor in the way of it: they are not copied, and lines wrap as without
// them. $N is the attribute that holds them.
constexpr std::string_view kNumbers = R"(main pre,main $H{padding-left:76px}
summary{padding-left:76px}
a[id]:empty{visibility:hidden;text-decoration:none}
a[id]:empty:before{visibility:visible;position:absolute;left:0;width:60px;text-align:right;font-style:normal;font-weight:400;cursor:pointer;content:attr($N)}
a[id]:empty:hover:before{text-decoration:underline}
a[id]:empty:target:after{visibility:visible;content:"";position:absolute;left:0;right:0;height:1.5em;z-index:-1}
@media(max-width:40em){main pre,main $H{padding-left:52px;padding-right:8px}summary{padding-left:52px}a[id]:empty:before{width:42px}}
)";

constexpr std::string_view kHiddenNumbers = "a[id]:empty{visibility:hidden}\n";

constexpr std::string_view kModules =
    R"(main h2{margin:0;padding:20px 16px 4px;font-size:18px;line-height:1.3;overflow-wrap:anywhere}
main p{margin:0;padding:0 16px 8px;font-size:13px}
main h2,main p{-webkit-user-select:none;-ms-user-select:none;user-select:none}
)";

constexpr std::string_view kPrint =
    R"(@media print{nav,.skip,summary{display:none}body{font-size:11pt}pre,code,main $H{font-size:9pt}main pre,main $H{padding-right:0}section{margin-top:3px;border-top:1px solid #d5d9e2;padding-top:3px}code a{text-decoration:none}code{orphans:3;widows:3}}
@page{margin:15mm}
)";

constexpr ColorRule kRules[] = {
    {"body,.skip:focus", "color", Tint::Text},
    {"body,nav,.skip:focus", "background-color", Tint::Page},
    {"header,nav,pre", "border-color", Tint::Border},
    {"header p,main p,summary,nav h2,nav h3", "color", Tint::Quiet},
    {"main $H", "background-color", Tint::Head},
    {"main $H", "border-color", Tint::Border},
    {"nav a", "color", Tint::Name},
    {"a[id]:empty:before", "color", Tint::LineNumber},
    {".k,.kt,.kc,.ow,.nb", "color", Tint::Word},
    {".nf,.nc,.nl", "color", Tint::Name},
    {".no,.na", "color", Tint::Parameter},
    {".s,.ld", "color", Tint::String},
    {".m", "color", Tint::Number},
    {".c", "color", Tint::Comment},
    {".cp", "color", Tint::Directive},
    {".err,code span[title]", "color", Tint::Error},
    {"code span:target,section:target>$H,a[id]:empty:target:after", "background-color",
     Tint::Target},
};

// Appends rules with what stands for their $H and $N.
class StyleWriter {
 public:
  explicit StyleWriter(bool severalModules)
      : heading_(severalModules ? "h3" : "h2"), number_(severalModules ? "data-n" : "id") {
    css.reserve(kUsualSize);
  }

  void rules(std::string_view text) {
    for (std::size_t at; (at = text.find('$')) != std::string_view::npos;
         text.remove_prefix(at + 2))
      css.append(text, 0, at).append(text[at + 1] == 'H' ? heading_ : number_);
    css += text;
  }
  void colors(std::span<const ColorRule> colorRules, const Palette& palette) {
    for (const ColorRule& rule : colorRules) {
      rules(rule.selectors);
      ((((css += '{') += rule.property) += ':') += colorText(palette, rule.tint)) += '}';
    }
  }

  // In light colours, dark ones where the theme says so; paper stays white.
  void themes(std::span<const ColorRule> colorRules, const Options& options) {
    colors(colorRules, lightPalette(options.colors));
    css += '\n';
    if (options.theme == Theme::Light) return;
    css += options.theme == Theme::Auto ? "@media screen and (prefers-color-scheme:dark)"
                                        : "@media screen";
    css += "{:root{color-scheme:dark}";
    colors(colorRules, darkPalette(options.colors));
    css += "}\n";
  }

  std::string css;

 private:
  static constexpr std::size_t kUsualSize = 8192;

  std::string_view heading_, number_;
};

}  // namespace

std::string colorText(const Palette& palette, Tint tint) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4)
    text += kDigits[palette[static_cast<std::size_t>(tint)] >> shift & 0xF];
  return text;
}

std::string embeddedStyle(std::u8string_view css) {
  const std::string text(css.begin(), css.end());
  return Replace(text, "</", "<\\/") + (text.empty() || text.ends_with('\n') ? "" : "\n");
}

const std::string_view kBaseStyle = R"(*{box-sizing:border-box}
html{-webkit-text-size-adjust:100%;text-size-adjust:100%}
body{margin:0;font:15px/1.5 "Segoe UI",system-ui,sans-serif}
header,nav,main,section,details,summary{display:block}
summary{display:list-item}
)";

const std::string_view kFrameStyle = R"(a{color:inherit}
:focus-visible{outline:2px solid #3b82f6;outline-offset:1px}
.skip{position:absolute;left:-999px}
.skip:focus{left:8px;top:8px;padding:4px 8px;z-index:3}
header{padding:12px 20px;border-bottom:1px solid}
h1{margin:0;font-size:20px;line-height:1.3;overflow-wrap:anywhere}
header p{margin:2px 0 0;font-size:13px;overflow-wrap:anywhere}
)";

std::string colorStyle(std::span<const ColorRule> rules, const Options& options) {
  StyleWriter writer(false);
  writer.themes(rules, options);
  return std::move(writer.css);
}

std::string styleSheet(const Options& options, bool severalModules) {
  StyleWriter writer(severalModules);
  writer.rules(kBaseStyle);
  writer.rules(kCodeFont);
  writer.rules(kFrameStyle);
  writer.rules(kLayout);
  writer.rules(kSticky);
  if (options.lineNumbers)
    writer.rules(kNumbers);
  else if (options.lineAnchors)
    writer.rules(kHiddenNumbers);
  if (severalModules) writer.rules(kModules);
  writer.themes(kRules, options);
  writer.rules(kPrint);
  return std::move(writer.css);
}

}  // namespace tintline::listing
