// The page of a module: its exact page, with links to the site and, below the head of each
// procedure, what is said of it and who calls it.
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include <algorithm>
#include <string>

#include "listing/html_text.h"
#include "listing/module_targets.h"
#include "listing/style_sheet.h"
#include "site/page.h"
#include "site/pages.h"

namespace tintline::site {
namespace {

using listing::ColorRule;
using listing::Output;
using listing::Tint;

// As far to the right as the code.
constexpr std::string_view kAboutStyle =
    R"(.about{padding:2px 16px 2px 76px;font-size:13px;-webkit-user-select:none;-ms-user-select:none;user-select:none;overflow-wrap:anywhere}
.about summary{padding:0}
.about p{margin:2px 0;padding:0;white-space:pre-line}
.about ul{margin:0 0 4px;padding-left:20px}
.about dl{margin:2px 0}
.about dt{float:left;clear:left;margin-right:8px;font-weight:600}
.about dd{margin:0 0 0 1em}
.about a{text-decoration:none}
.about a:hover,.about a:focus{text-decoration:underline}
@media(max-width:40em){.about{padding-left:52px;padding-right:8px}}
@media print{.about{display:none}}
)";
constexpr ColorRule kAboutColors[] = {{".about", "color", Tint::Quiet},
                                      {".about p,.about dl", "color", Tint::Text},
                                      {".about a", "color", Tint::Name}};

class ModulePage : public listing::Companion {
 public:
  ModulePage(const Project& project, std::uint32_t index, const listing::Options& options)
      : project_(project),
        index_(index),
        facts_(project.modules()[index]),
        toRoot_(project.targets()[index].toRoot()),
        options_(options),
        words_(site::wordsOf(options.language)) {}

  std::string style() const override {
    return pageLinksStyle(options_) + std::string(kAboutStyle) +
           listing::colorStyle(kAboutColors, options_);
  }

  void writeHeader(Output& out) const override {
    writePageLinks(out, words_, u8"../" + toRoot_, kPages);
  }

  void writeBelowHead(Output& out, std::uint32_t procedure) const override {
    const Procedure* const facts = facts_.procedure(procedure);
    const bool documented = facts != nullptr && facts->documentation.structured;
    const auto callers = project_.callers().of(index_, procedure);
    if (!documented && callers.empty()) return;
    out << "<div class=about>";
    if (documented) writeDocumentation(out, facts->documentation);
    if (!callers.empty()) writeCallers(out, callers);
    out << "</div>";
  }

 private:
  void writeDocumentation(Output& out, const Documentation& documentation) const {
    if (!documentation.text.empty()) out << "<p>" << lines(documentation.text) << "</p>";
    if (documentation.parameters.empty() && documentation.returns.empty()) return;
    out << "<dl>";
    for (const auto& [name, text] : documentation.parameters)
      out << "<dt>" << listing::toHtml(name) << "</dt><dd>" << listing::toHtml(text) << "</dd>";
    if (!documentation.returns.empty())
      out << "<dt>" << words_.returns << "</dt><dd>" << listing::toHtml(documentation.returns)
          << "</dd>";
    out << "</dl>";
  }

  // Line ends as they are: the style shows them.
  static std::u8string lines(std::u8string_view text) {
    std::u8string html;
    for (bool first = true; !text.empty(); first = false) {
      const std::size_t end = std::min(text.find(u8'\n'), text.size());
      if (!first) html += u8'\n';
      listing::appendHtml(html, text.substr(0, end));
      text.remove_prefix(std::min(text.size(), end + 1));
    }
    return html;
  }

  // Those of one procedure follow each other.
  void writeCallers(Output& out, std::span<const Callers::Place> callers) const {
    out << "<details><summary>" << words_.calledBy << " (" << callers.size() << ")</summary><ul>";
    for (std::size_t i = 0; i < callers.size();) {
      const std::uint32_t module = callers[i].module;
      const std::uint32_t procedure = use(callers[i]).procedure;
      out << "<li>";
      writeCaller(out, module, procedure);
      for (std::size_t line = 0; i < callers.size() && callers[i].module == module &&
                                 use(callers[i]).procedure == procedure;
           ++i, ++line) {
        out << (line == 0 ? ": " : ", ") << "<a href=\"";
        writeAddress(out, module);
        out << "#" << use(callers[i]).line << "\">" << use(callers[i]).line << "</a>";
      }
      out << "</li>";
    }
    out << "</ul></details>";
  }

  void writeCaller(Output& out, std::uint32_t module, std::uint32_t procedure) const {
    const ModuleFacts& facts = project_.modules()[module];
    const bool own = module == index_;
    if (procedure == vb::kNone) {
      if (!own) out << listing::toHtml(facts.name) << ", ";
      out << words_.outside;
      return;
    }
    out << "<a href=\"";
    writeAddress(out, module);
    out << "#" << project_.targets()[module].htmlId(procedure) << "\">";
    if (!own) out << listing::toHtml(facts.name) << ".";
    out << listing::toHtml(facts.nameOf(procedure));
    if (const auto accessor = accessorName(facts.names[procedure].accessor); !accessor.empty())
      out << " (" << accessor << ")";
    out << "</a>";
  }

  // Of a module's page, from this one: nothing for this one itself.
  void writeAddress(Output& out, std::uint32_t module) const {
    if (module != index_) out << toRoot_ << project_.modules()[module].page;
  }

  const Use& use(Callers::Place place) const { return project_.uses(place.module)[place.use]; }

  const Project& project_;
  const std::uint32_t index_;
  const ModuleFacts& facts_;
  const std::u8string toRoot_;
  const listing::Options& options_;
  const Words& words_;
};

}  // namespace

void writeModulePage(std::ostream& out, const Project& project, std::uint32_t index,
                     const vb::Module& module, std::span<const vb::Reference> references,
                     const listing::DocumentMaker& maker) {
  const ModulePage companion(project, index, maker.options());
  const auto document =
      maker.make(out, project.targets(), module.name + u8" · " + project.name(), &companion);
  document->add({.module = module, .references = references, .index = index});
  document->close();
}

}  // namespace tintline::site
