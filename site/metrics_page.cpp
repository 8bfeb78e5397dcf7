// See metrics_page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/metrics_page.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "listing/module_targets.h"

namespace tintline::site {
namespace {

// A module, or one of its procedures.
struct Row {
  std::u8string key;
  const Project* project;
  std::uint32_t module;
  const Procedure* procedure;
  std::uint32_t lines;
};

class MetricsPage {
 public:
  explicit MetricsPage(SitePage& page) : page_(page), out_(page.out()), words_(page.words()) {}

  void write() {
    page_.heading(u8"h2", words_.pages[static_cast<std::size_t>(Page::Metrics)]);
    out_ << "<p>" << words_.metricsRule << "</p>\n";
    std::vector<Row> modules, procedures;
    for (const Project& project : page_.site().projects)
      for (std::uint32_t i = 0; i < project.modules().size(); ++i) {
        const ModuleFacts& module = project.modules()[i];
        modules.push_back(
            {listing::sortKey(module.name), &project, i, nullptr, module.counts.lines});
        for (const Procedure& each : module.procedures)
          procedures.push_back({listing::sortKey(module.nameOf(each.declaration)), &project, i,
                                &each, each.metrics.counts.lines});
      }
    writeBoth(modules, words_.modulesByName, words_.modulesBySize);
    writeBoth(procedures, words_.proceduresByName, words_.proceduresBySize);
  }

 private:
  void writeBoth(std::vector<Row>& rows, std::u8string_view byName, std::u8string_view bySize) {
    if (rows.empty()) return;
    std::ranges::stable_sort(rows, {}, &Row::key);
    writeTable(rows, byName);
    std::ranges::stable_sort(rows, std::greater<>(), &Row::lines);
    writeTable(rows, bySize);
  }

  void writeTable(const std::vector<Row>& rows, std::u8string_view name) {
    page_.heading(u8"h3", name);
    // Too many columns for a phone; by keyboard it is moved, too.
    out_ << "<div class=wide tabindex=0 role=region aria-label=\"" << name << "\">";
    if (rows.front().procedure == nullptr) {
      page_.beginTable(name, {{words_.module},
                              {words_.lines, true},
                              {words_.comments, true},
                              {words_.procedures, true},
                              {words_.nesting, true},
                              {words_.branches, true},
                              {words_.declares, true}});
      for (const Row& row : rows) writeModule(row);
    } else {
      page_.beginTable(name, {{words_.procedure},
                              {words_.lines, true},
                              {words_.comments, true},
                              {words_.parameters, true},
                              {words_.nesting, true},
                              {words_.branches, true},
                              {words_.declares, true}});
      for (const Row& row : rows) writeProcedure(row);
    }
    page_.endTable();
    out_ << "</div>\n";
  }

  // The deepest nesting of its procedures, and all of their branches.
  void writeModule(const Row& row) {
    const ModuleFacts& module = row.project->modules()[row.module];
    std::uint32_t nesting = 0;
    std::size_t branches = 0;
    for (const Procedure& each : module.procedures) {
      nesting = std::max(nesting, each.metrics.nesting);
      branches += each.metrics.branches;
    }
    out_ << "<tr><td>";
    page_.moduleLink(*row.project, row.module);
    out_ << "</td>";
    writeNumbers(module.counts, module.procedures.size(), nesting, branches, module.declares);
  }

  void writeProcedure(const Row& row) {
    const Metrics& metrics = row.procedure->metrics;
    out_ << "<tr><td>";
    page_.nameLink(*row.project, row.module, row.procedure->declaration, SitePage::Title::None);
    out_ << "<span class=note>";
    page_.text(row.project->modules()[row.module].name);
    out_ << "</span></td>";
    writeNumbers(metrics.counts, metrics.parameters, metrics.nesting, metrics.branches,
                 row.procedure->declares);
  }

  void writeNumbers(const LineCounts& counts, std::size_t parts, std::uint32_t nesting,
                    std::size_t branches, std::uint32_t declares) {
    page_.number(counts.lines);
    out_ << "<td class=r>" << commentShare(counts) << " %</td>";
    page_.number(parts);
    page_.number(nesting);
    page_.number(branches);
    page_.number(declares);
    out_ << "</tr>\n";
  }

  SitePage& page_;
  listing::Output& out_;
  const Words& words_;
};

}  // namespace

void writeMetrics(SitePage& page) { MetricsPage(page).write(); }

}  // namespace tintline::site
