// What the pages of a site have in common: frame, links, tables.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include <concepts>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "listing/options.h"
#include "listing/output.h"
#include "site/site.h"
#include "site/words.h"

namespace tintline::site {

// The links from a page to those of the site. `root` is what leads to their folder: "", "../".
// `current` is the page itself, kPages when it is none of them.
void writePageLinks(listing::Output& out, const Words& words, std::u8string_view root,
                    std::size_t current);

// The rules for these links; `selector` is what they are for on pages of modules.
std::string pageLinksStyle(const listing::Options& options);

// A page beside those of the modules, while it is written.
class SitePage {
 public:
  SitePage(std::ostream& stream, const Site& site, const listing::Options& options, Page page);
  SitePage(const SitePage&) = delete;
  SitePage& operator=(const SitePage&) = delete;

  listing::Output& out() { return out_; }
  const Words& words() const { return words_; }
  const listing::Words& listingWords() const { return listingWords_; }
  const Site& site() const { return site_; }

  // Writes the end.
  void close();

  // All text that is given to these may be any text.
  void text(std::u8string_view text);
  void heading(std::u8string_view element, std::u8string_view text);
  void moduleLink(const ModuleFacts& module);
  // "Modul1", with the project's name where there are several.
  void moduleLink(const Project& project, std::uint32_t module);
  // The name of a declaration, as a link to it; of a property with its accessor. With its head as
  // title where the page is not full of figures.
  enum class Title : std::uint8_t { Head, None };
  void nameLink(const Project& project, std::uint32_t module, std::uint32_t declaration,
                Title title = Title::Head);
  // A line of a module's page.
  void lineLink(const ModuleFacts& module, std::uint32_t line);

  struct Column {
    std::u8string_view name;
    bool number = false;
  };
  // `label` tells those who hear the page which table it is; it is a heading's text.
  void beginTable(std::u8string_view label, std::initializer_list<Column> columns);
  void endTable();
  void number(std::unsigned_integral auto number) { out_ << "<td class=r>" << number << "</td>"; }

 private:
  listing::Output out_;
  const Site& site_;
  const Words& words_;
  const listing::Words& listingWords_;
};

// "Get" ... of an accessor.
std::u8string_view accessorName(vb::Accessor accessor);

}  // namespace tintline::site
