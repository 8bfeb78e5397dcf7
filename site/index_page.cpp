// See index_page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/index_page.h"

#include <cstddef>

#include "listing/html_text.h"

namespace tintline::site {
namespace {

struct Totals {
  std::size_t modules = 0, lines = 0, procedures = 0;

  void add(const Project& project) {
    modules += project.modules().size();
    for (const ModuleFacts& module : project.modules()) {
      lines += module.counts.lines;
      procedures += module.procedures.size();
    }
  }
};

class IndexPage {
 public:
  explicit IndexPage(SitePage& page) : page_(page), out_(page.out()), words_(page.words()) {}

  void write() {
    Totals totals;
    for (const Project& project : page_.site().projects) totals.add(project);
    write(totals);
    const bool several = page_.site().projects.size() > 1;
    for (const Project& project : page_.site().projects) {
      if (several) {
        page_.heading(u8"h2", project.name());
        Totals own;
        own.add(project);
        write(own);
      }
      write(project, several ? u8"h3" : u8"h2");
    }
    writeFailures();
  }

 private:
  void write(const Totals& totals) {
    using listing::counted;
    const listing::Words& words = page_.listingWords();
    out_ << "<p>" << counted(totals.modules, words_.oneModule, words_.modules) << " · "
         << counted(totals.lines, words.line, words.lines) << " · "
         << counted(totals.procedures, words.procedure, words.procedures) << "</p>\n";
  }

  void write(const Project& project, std::u8string_view heading) {
    const std::vector<std::uint32_t> order = project.modulesInOrder();
    for (std::size_t i = 0; i < order.size();) {
      const vb::ModuleKind kind = project.modules()[order[i]].kind;
      const std::u8string_view name = words_.kinds[static_cast<std::size_t>(kind)];
      page_.heading(heading, name);
      page_.beginTable(name, {{words_.name}, {words_.lines, true}, {words_.procedures, true}});
      for (; i < order.size() && project.modules()[order[i]].kind == kind; ++i)
        write(project.modules()[order[i]]);
      page_.endTable();
    }
  }

  void write(const ModuleFacts& module) {
    out_ << "<tr><td>";
    page_.moduleLink(module);
    if (!module.description.empty()) writeLines(module.description);
    out_ << "</td>";
    page_.number(module.counts.lines);
    page_.number(module.procedures.size());
    out_ << "</tr>\n";
  }

  // The first lines of a description.
  void writeLines(std::u8string_view text) {
    constexpr int kMostLines = 3;
    out_ << "<span class=note>";
    for (int line = 0; line < kMostLines && !text.empty(); ++line) {
      const std::size_t end = std::min(text.find(u8'\n'), text.size());
      if (line > 0) out_ << " ";
      page_.text(text.substr(0, end));
      text.remove_prefix(std::min(text.size(), end + 1));
    }
    out_ << (text.empty() ? "</span>" : " …</span>");
  }

  void writeFailures() {
    if (page_.site().failures.empty()) return;
    page_.heading(u8"h2", words_.unread);
    out_ << "<ul>\n";
    for (const Failure& failure : page_.site().failures)
      out_ << "<li>" << listing::toHtml(failure.file) << ": " << listing::toHtml(failure.reason)
           << "</li>\n";
    out_ << "</ul>\n";
  }

  SitePage& page_;
  listing::Output& out_;
  const Words& words_;
};

}  // namespace

void writeIndex(SitePage& page) { IndexPage(page).write(); }

}  // namespace tintline::site
