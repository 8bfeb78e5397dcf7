// See data.h. Tested by tests/unit/site/site_test.cpp.
#include "site/data.h"

#include <initializer_list>
#include <vector>

#include "listing/data_text.h"
#include "listing/output.h"
#include "site/names_page.h"
#include "site/unused.h"

namespace tintline::site {
namespace {

using listing::dataName;
using listing::Output;
using listing::writeJsonString;
using listing::writeJsonWord;

// Why a declaration is listed as unused, by declaration of each module; empty: it is not.
class UnusedWords {
 public:
  explicit UnusedWords(const Site& site) {
    for (const Project& project : site.projects) {
      auto& modules = words_.emplace_back(project.modules().size());
      for (const UnusedName& name : unusedIn(project, site.names))
        modules[name.module].emplace_back(name.declaration, wordOf(name.group));
    }
  }

  // To be asked for the declarations of a module in their order.
  std::string_view of(std::size_t project, std::uint32_t module, std::uint32_t declaration) {
    const auto& words = words_[project][module];
    if (project != project_ || module != module_) next_ = 0;
    project_ = project;
    module_ = module;
    while (next_ < words.size() && words[next_].first < declaration) ++next_;
    return next_ < words.size() && words[next_].first == declaration ? words[next_].second
                                                                     : std::string_view();
  }

 private:
  static std::string_view wordOf(Unused group) {
    constexpr std::string_view kWords[] = {"private", "public", "local", "onlyInTexts"};
    return kWords[static_cast<std::size_t>(group)];
  }

  std::vector<std::vector<std::vector<std::pair<std::uint32_t, std::string_view>>>> words_;
  std::size_t project_ = 0, module_ = 0, next_ = 0;
};

// Calls visit(projectIndex, project, moduleIndex, module).
template <class Visit>
void forModules(const Site& site, Visit visit) {
  for (std::size_t p = 0; p < site.projects.size(); ++p)
    for (std::uint32_t m = 0; m < site.projects[p].modules().size(); ++m)
      visit(p, site.projects[p], m, site.projects[p].modules()[m]);
}

bool isReferred(const Project& project, const Use& use) {
  return use.declaration != vb::kNone &&
         isNamed(project.modules()[use.module].names[use.declaration].kind);
}

// ---------------------------------------------------------------------------------------- JSON

class JsonWriter {
 public:
  JsonWriter(std::ostream& stream, const Site& site) : out_(stream), site_(site) {
    std::uint32_t modules = 0, names = 0;
    for (const Project& project : site.projects) {
      firstModule_.push_back(modules);
      modules += static_cast<std::uint32_t>(project.modules().size());
      for (const ModuleFacts& module : project.modules())
        for (std::vector<std::uint32_t>& numbers = numbers_.emplace_back();
             const Name& name : module.names) {
          numbers.push_back(isNamed(name.kind) ? names : vb::kNone);
          names += isNamed(name.kind);
        }
    }
  }

  void write() {
    out_ << "{\"modules\":[";
    list([this](auto... at) { module(at...); });
    out_ << "],\n\"names\":[";
    list([this](auto... at) { names(at...); });
    out_ << "],\n\"procedures\":[";
    list([this](auto... at) { procedures(at...); });
    out_ << "],\n\"references\":[";
    list([this](auto... at) { references(at...); });
    out_ << "]}\n";
    out_.flush();
  }

 private:
  template <class Write>
  void list(Write write) {
    first_ = true;
    forModules(site_, [&](std::size_t p, const Project& project, std::uint32_t m,
                          const ModuleFacts& facts) { write(p, &project, m, &facts); });
  }

  void begin() {
    out_ << (first_ ? "\n{" : ",\n{");
    first_ = false;
  }

  void string(std::string_view name, std::u8string_view value) {
    out_ << ",\"" << name << "\":";
    writeJsonString(out_, value);
  }
  void word(std::string_view name, std::string_view value) {
    out_ << ",\"" << name << "\":";
    writeJsonWord(out_, value);
  }
  void number(std::string_view name, std::size_t value) { out_ << ",\"" << name << "\":" << value; }
  // A place in `names` or nothing.
  void place(std::string_view name, std::size_t project, std::uint32_t module,
             std::uint32_t declaration) {
    out_ << ",\"" << name << "\":";
    if (declaration == vb::kNone)
      out_ << "null";
    else
      out_ << numbers_[firstModule_[project] + module][declaration];
  }

  void counts(const LineCounts& counts) {
    number("lines", counts.lines);
    number("commented", counts.commented);
    number("empty", counts.empty);
  }

  void module(std::size_t, const Project* project, std::uint32_t, const ModuleFacts* facts) {
    begin();
    out_ << "\"project\":";
    writeJsonString(out_, project->name());
    string("name", facts->name);
    word("kind", dataName(facts->kind));
    string("file", facts->file);
    string("description", facts->description);
    counts(facts->counts);
    number("declares", facts->declares);
    out_ << "}";
  }

  void names(std::size_t p, const Project* project, std::uint32_t m, const ModuleFacts* facts) {
    for (std::uint32_t i = 0; i < facts->names.size(); ++i) {
      const Name& name = facts->names[i];
      if (!isNamed(name.kind)) continue;
      begin();
      out_ << "\"module\":" << firstModule_[p] + m;
      string("name", facts->nameOf(i));
      word("kind", dataName(name.kind));
      word("accessor", dataName(name.accessor));
      word("visibility", dataName(name.visibility));
      place("scope", p, m, name.scope);
      number("line", name.line);
      number("uses", project->callers().of(m, i).size());
      word("unused", unused_.of(p, m, i));
      out_ << "}";
    }
  }

  void procedures(std::size_t p, const Project*, std::uint32_t m, const ModuleFacts* facts) {
    for (const Procedure& procedure : facts->procedures) {
      begin();
      out_ << "\"name\":" << numbers_[firstModule_[p] + m][procedure.declaration];
      counts(procedure.metrics.counts);
      number("parameters", procedure.metrics.parameters);
      number("nesting", procedure.metrics.nesting);
      number("branches", procedure.metrics.branches);
      number("declares", procedure.declares);
      string("description", procedure.documentation.text);
      out_ << ",\"parameterTexts\":[";
      bool isFirst = true;
      for (const auto& [name, text] : procedure.documentation.parameters) {
        out_ << (isFirst ? "{\"name\":" : ",{\"name\":");
        writeJsonString(out_, name);
        string("text", text);
        out_ << "}";
        isFirst = false;
      }
      out_ << "]";
      string("returns", procedure.documentation.returns);
      out_ << "}";
    }
  }

  void references(std::size_t p, const Project* project, std::uint32_t m, const ModuleFacts*) {
    for (const Use& use : project->uses(m)) {
      if (!isReferred(*project, use)) continue;
      begin();
      out_ << "\"module\":" << firstModule_[p] + m;
      number("line", use.line);
      place("procedure", p, m, use.procedure);
      place("name", p, use.module, use.declaration);
      out_ << "}";
    }
  }

  Output out_;
  const Site& site_;
  UnusedWords unused_{site_};
  std::vector<std::uint32_t> firstModule_;           // by project, in `modules`
  std::vector<std::vector<std::uint32_t>> numbers_;  // by module: of declarations, in `names`
  bool first_ = true;
};

// ----------------------------------------------------------------------------------------- CSV

class CsvWriter {
 public:
  CsvWriter(std::ostream& stream, const Site& site) : out_(stream), site_(site) {}

  void write(Table table) {
    switch (table) {
      case Table::Procedures:
        header({"project", "module", "file", "name", "kind", "accessor", "visibility", "line",
                "lines", "commented", "empty", "parameters", "nesting", "branches", "declares",
                "description"});
        break;
      case Table::Names:
        header({"project", "module", "file", "name", "kind", "accessor", "visibility", "scope",
                "line", "uses", "unused"});
        break;
      case Table::References:
        header({"project", "module", "file", "line", "procedure", "toModule", "toName", "toKind",
                "toAccessor"});
        break;
    }
    forModules(site_, [&](std::size_t p, const Project& project, std::uint32_t m,
                          const ModuleFacts& facts) {
      if (table == Table::Procedures)
        procedures(project, facts);
      else if (table == Table::Names)
        names(p, project, m, facts);
      else
        references(project, m, facts);
    });
    out_.flush();
  }

 private:
  void header(std::initializer_list<std::string_view> columns) {
    for (const std::string_view column : columns) word(column);
    endRow();
  }

  void field(std::u8string_view text) {
    separate();
    const bool formula =
        !text.empty() && std::u8string_view(u8"=+-@\t\r").find(text[0]) != std::u8string_view::npos;
    const bool quoted = text.find_first_of(u8"\",\r\n") != std::u8string_view::npos;
    if (quoted) out_ << "\"";
    if (formula) out_ << "'";
    while (quoted) {  // a quote in it is written twice
      const std::size_t quote = text.find(u8'"');
      if (quote == std::u8string_view::npos) break;
      out_ << text.substr(0, quote + 1) << "\"";
      text.remove_prefix(quote + 1);
    }
    if (!text.empty()) out_ << text;
    if (quoted) out_ << "\"";
  }
  void word(std::string_view text) {
    separate();
    if (!text.empty()) out_ << text;
  }
  void number(std::size_t value) {
    separate();
    out_ << value;
  }
  void separate() {
    if (!first_) out_ << ",";
    first_ = false;
  }
  void endRow() {
    out_ << "\r\n";
    first_ = true;
  }

  void place(const Project& project, const ModuleFacts& facts) {
    field(project.name());
    field(facts.name);
    field(facts.file);
  }

  void declaration(const ModuleFacts& facts, std::uint32_t index) {
    const Name& name = facts.names[index];
    field(facts.nameOf(index));
    word(dataName(name.kind));
    word(dataName(name.accessor));
    word(dataName(name.visibility));
  }

  void procedures(const Project& project, const ModuleFacts& facts) {
    for (const Procedure& procedure : facts.procedures) {
      const Metrics& metrics = procedure.metrics;
      place(project, facts);
      declaration(facts, procedure.declaration);
      for (const std::uint32_t value :
           {facts.names[procedure.declaration].line, metrics.counts.lines, metrics.counts.commented,
            metrics.counts.empty, metrics.parameters, metrics.nesting, metrics.branches,
            procedure.declares})
        number(value);
      field(procedure.documentation.text);
      endRow();
    }
  }

  void names(std::size_t p, const Project& project, std::uint32_t m, const ModuleFacts& facts) {
    for (std::uint32_t i = 0; i < facts.names.size(); ++i) {
      const Name& name = facts.names[i];
      if (!isNamed(name.kind)) continue;
      place(project, facts);
      declaration(facts, i);
      field(name.scope == vb::kNone ? std::u8string_view() : facts.nameOf(name.scope));
      number(name.line);
      number(project.callers().of(m, i).size());
      word(unused_.of(p, m, i));
      endRow();
    }
  }

  void references(const Project& project, std::uint32_t m, const ModuleFacts& facts) {
    for (const Use& use : project.uses(m)) {
      if (!isReferred(project, use)) continue;
      const ModuleFacts& target = project.modules()[use.module];
      place(project, facts);
      number(use.line);
      field(use.procedure == vb::kNone ? std::u8string_view() : facts.nameOf(use.procedure));
      field(target.name);
      field(target.nameOf(use.declaration));
      word(dataName(target.names[use.declaration].kind));
      word(dataName(target.names[use.declaration].accessor));
      endRow();
    }
  }

  Output out_;
  const Site& site_;
  UnusedWords unused_{site_};
  bool first_ = true;  // field of its row
};

}  // namespace

void writeJson(std::ostream& out, const Site& site) { JsonWriter(out, site).write(); }

void writeCsv(Table table, std::ostream& out, const Site& site) {
  CsvWriter(out, site).write(table);
}

}  // namespace tintline::site
