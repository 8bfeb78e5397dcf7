// See names_page.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/names_page.h"

#include <algorithm>
#include <tuple>
#include <vector>

#include "listing/module_targets.h"
#include "listing/utf8.h"

namespace tintline::site {
namespace {

struct Entry {
  std::u8string key;
  std::uint32_t project, module, declaration;
};

std::vector<Entry> entriesOf(const Site& site) {
  std::vector<Entry> entries;
  for (std::uint32_t p = 0; p < site.projects.size(); ++p)
    for (std::uint32_t m = 0; m < site.projects[p].modules().size(); ++m) {
      const ModuleFacts& module = site.projects[p].modules()[m];
      for (std::uint32_t i = 0; i < module.names.size(); ++i)
        if (isNamed(module.names[i].kind))
          entries.push_back({listing::sortKey(module.nameOf(i)), p, m, i});
    }
  std::ranges::stable_sort(entries, {}, &Entry::key);
  return entries;
}

// The letter under which a key stands; "#" for what begins with none.
std::u8string_view letterOf(const Entry& entry) {
  const std::u8string_view key = entry.key;
  if (key.empty() || key[0] < u8'a' || (key[0] > u8'z' && key[0] < 0x80)) return u8"#";
  return key.substr(0, listing::sizeOfFirst(key));
}

class NamesPage {
 public:
  explicit NamesPage(SitePage& page) : page_(page), out_(page.out()), words_(page.words()) {}

  void write() {
    const std::vector<Entry> entries = entriesOf(page_.site());
    std::vector<std::size_t> begins;
    for (std::size_t i = 0; i < entries.size(); ++i)
      if (i == 0 || letterOf(entries[i]) != letterOf(entries[i - 1])) begins.push_back(i);
    page_.heading(u8"h2", words_.pages[static_cast<std::size_t>(Page::Names)]);
    if (begins.empty()) out_ << "<p>" << words_.nothing << "</p>\n";
    writeLetters(entries, begins);
    for (std::size_t letter = 0; letter < begins.size(); ++letter) {
      const std::size_t end = letter + 1 < begins.size() ? begins[letter + 1] : entries.size();
      out_ << "<h3 id=\"b" << letter << "\">" << shown(entries[begins[letter]]) << "</h3>\n";
      page_.beginTable(shown(entries[begins[letter]]),
                       {{words_.name}, {words_.kind}, {words_.module}, {words_.uses, true}});
      for (std::size_t i = begins[letter]; i < end; ++i) write(entries[i]);
      page_.endTable();
    }
  }

 private:
  void writeLetters(const std::vector<Entry>& entries, const std::vector<std::size_t>& begins) {
    if (begins.size() < 2) return;
    out_ << "<p class=letters>";
    for (std::size_t letter = 0; letter < begins.size(); ++letter)
      out_ << "<a href=\"#b" << letter << "\">" << shown(entries[begins[letter]]) << "</a> ";
    out_ << "</p>\n";
  }

  static std::u8string shown(const Entry& entry) {
    std::u8string letter(letterOf(entry));
    if (letter.size() == 1 && letter[0] >= u8'a')
      letter[0] = static_cast<char8_t>(letter[0] - 0x20);
    return letter;
  }

  void write(const Entry& entry) {
    const Project& project = page_.site().projects[entry.project];
    const ModuleFacts& module = project.modules()[entry.module];
    out_ << "<tr><td>";
    page_.nameLink(project, entry.module, entry.declaration);
    if (const Procedure* const procedure = module.procedure(entry.declaration))
      if (const std::u8string_view text = procedure->documentation.text; !text.empty()) {
        out_ << "<span class=note>";
        page_.text(text.substr(0, text.find(u8'\n')));
        out_ << "</span>";
      }
    const Name& name = module.names[entry.declaration];
    out_ << "</td><td>" << words_.declarations[static_cast<std::size_t>(name.kind)];
    if (name.scope != vb::kNone) {  // the type of a field, the enumeration of a value
      out_ << "<span class=note>";
      page_.text(module.nameOf(name.scope));
      out_ << "</span>";
    }
    out_ << "</td><td>";
    page_.moduleLink(project, entry.module);
    out_ << "</td>";
    page_.number(project.callers().of(entry.module, entry.declaration).size());
    out_ << "</tr>\n";
  }

  SitePage& page_;
  listing::Output& out_;
  const Words& words_;
};

}  // namespace

bool isNamed(vb::DeclarationKind kind) {
  return kind != vb::DeclarationKind::Label && kind != vb::DeclarationKind::Parameter &&
         kind != vb::DeclarationKind::Local;
}

void writeNames(SitePage& page) { NamesPage(page).write(); }

}  // namespace tintline::site
