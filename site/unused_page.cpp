// See unused_page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/unused_page.h"

#include <algorithm>
#include <vector>

#include "site/unused.h"

namespace tintline::site {
namespace {

class UnusedPage {
 public:
  explicit UnusedPage(SitePage& page) : page_(page), out_(page.out()), words_(page.words()) {}

  void write() {
    page_.heading(u8"h2", words_.pages[static_cast<std::size_t>(Page::Unused)]);
    out_ << words_.unusedRule << "\n";
    for (const Project& project : page_.site().projects)
      unused_.push_back(unusedIn(project, page_.site().names));
    for (std::size_t group = 0; group < kUnusedGroups; ++group) write(static_cast<Unused>(group));
  }

 private:
  void write(Unused group) {
    std::size_t count = 0;
    for (const auto& each : unused_) count += std::ranges::count(each, group, &UnusedName::group);
    const std::u8string_view heading = words_.unused[static_cast<std::size_t>(group)];
    out_ << "<h3>" << heading << " (" << count << ")</h3>\n";
    if (count == 0) {
      out_ << "<p>" << words_.nothing << "</p>\n";
      return;
    }
    page_.beginTable(heading, {{words_.name}, {words_.kind}, {words_.module}, {words_.line, true}});
    for (std::size_t i = 0; i < unused_.size(); ++i)
      for (const UnusedName& name : unused_[i])
        if (name.group == group) write(page_.site().projects[i], name);
    page_.endTable();
  }

  void write(const Project& project, const UnusedName& unused) {
    const ModuleFacts& module = project.modules()[unused.module];
    const Name& name = module.names[unused.declaration];
    out_ << "<tr><td>";
    page_.nameLink(project, unused.module, unused.declaration);
    if (name.scope != vb::kNone) {
      out_ << "<span class=note>";
      page_.text(module.nameOf(name.scope));
      out_ << "</span>";
    }
    out_ << "</td><td>" << words_.declarations[static_cast<std::size_t>(name.kind)] << "</td><td>";
    page_.moduleLink(project, unused.module);
    out_ << "</td><td class=r>";
    page_.lineLink(module, name.line);
    out_ << "</td></tr>\n";
  }

  SitePage& page_;
  listing::Output& out_;
  const Words& words_;
  std::vector<std::vector<UnusedName>> unused_;  // by project
};

}  // namespace

void writeUnused(SitePage& page) { UnusedPage(page).write(); }

}  // namespace tintline::site
