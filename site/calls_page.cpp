// See calls_page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/calls_page.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "listing/links.h"

namespace tintline::site {
namespace {

struct Call {
  std::uint32_t module, declaration;
  std::uint32_t line;
  auto target() const { return std::tie(module, declaration); }
};

class CallsPage {
 public:
  explicit CallsPage(SitePage& page) : page_(page), out_(page.out()), words_(page.words()) {}

  void write() {
    page_.heading(u8"h2", words_.pages[static_cast<std::size_t>(Page::Calls)]);
    out_ << "<p>" << words_.callsRule << "</p>\n";
    for (const Project& project : page_.site().projects) {
      project_ = &project;
      findCalling();
      for (const std::uint32_t module : project.modulesInOrder()) write(module);
      ++number_;
    }
  }

 private:
  bool isCall(const Use& use) const {
    return use.procedure != vb::kNone && use.declaration != vb::kNone &&
           listing::isCallable(project_->modules()[use.module].names[use.declaration].kind);
  }

  // Which procedures call anything, so that links can lead to their calls.
  void findCalling() {
    calling_.assign(project_->modules().size(), {});
    for (std::uint32_t i = 0; i < calling_.size(); ++i) {
      calling_[i].resize(project_->modules()[i].names.size());
      for (const Use& use : project_->uses(i))
        if (isCall(use)) calling_[i][use.procedure] = true;
    }
  }

  void write(std::uint32_t module) {
    const std::vector<Use>& uses = project_->uses(module);
    bool any = false;
    for (std::size_t i = 0; i < uses.size();) {
      const std::uint32_t procedure = uses[i].procedure;
      std::vector<Call> calls;
      for (; i < uses.size() && uses[i].procedure == procedure; ++i)
        if (isCall(uses[i])) calls.push_back({uses[i].module, uses[i].declaration, uses[i].line});
      if (calls.empty()) continue;
      if (!any) {
        out_ << "<h3>";
        page_.moduleLink(*project_, module);
        out_ << "</h3>\n";
      }
      any = true;
      write(module, procedure, calls);
    }
  }

  void write(std::uint32_t module, std::uint32_t procedure, std::vector<Call>& calls) {
    std::ranges::stable_sort(calls, {}, &Call::target);
    out_ << "<details id=\"";
    writeId(module, procedure);
    out_ << "\"><summary>";
    writeName(module, procedure);
    out_ << " (" << calls.size() << ")</summary><ul>";
    for (auto call = calls.begin(); call != calls.end();) {
      const Call first = *call;
      out_ << "<li>";
      if (first.module != module) {
        page_.text(project_->modules()[first.module].name);
        out_ << ".";
      }
      page_.nameLink(*project_, first.module, first.declaration, SitePage::Title::None);
      for (bool begins = true; call != calls.end() && call->target() == first.target(); ++call) {
        out_ << (begins ? ": " : ", ");
        page_.lineLink(project_->modules()[module], call->line);
        begins = false;
      }
      if (calling_[first.module][first.declaration]) {
        out_ << " → <a href=\"#";
        writeId(first.module, first.declaration);
        out_ << "\">" << words_.itsCalls << "</a>";
      }
      out_ << "</li>";
    }
    out_ << "</ul></details>\n";
  }

  void writeName(std::uint32_t module, std::uint32_t procedure) {
    const ModuleFacts& facts = project_->modules()[module];
    page_.text(facts.nameOf(procedure));
    if (const auto accessor = accessorName(facts.names[procedure].accessor); !accessor.empty())
      out_ << " (" << accessor << ")";
  }

  void writeId(std::uint32_t module, std::uint32_t procedure) {
    out_ << "p" << number_ << "." << module << "." << procedure;
  }

  SitePage& page_;
  listing::Output& out_;
  const Words& words_;
  const Project* project_ = nullptr;
  std::uint32_t number_ = 0;                // of the project
  std::vector<std::vector<bool>> calling_;  // by module and declaration
};

}  // namespace

void writeCalls(SitePage& page) { CallsPage(page).write(); }

}  // namespace tintline::site
