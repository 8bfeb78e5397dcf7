// Whether the links of HTML pages in a folder land: in a file of the folder and, behind "#", at an
// id in it.
//
//     LinkCheck check;
//     check.addFile("style.css");             // all files that are no pages
//     check.addPage("a/b.htm", bytes);        // all pages
//     for (...) check.check("a/b.htm", bytes, [](const BrokenLink& link) { ... });
//
// Names of files are UTF-8 with "/", and case counts, as it does for many servers. Links to other
// places ("https:", "mailto:") are not looked at.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tintline::site {

struct BrokenLink {
  enum class Reason : std::uint8_t { NoFile, NoId, Outside };
  std::size_t line;  // of the page, from 1
  std::string link;  // as a browser reads it
  Reason reason;
};

class LinkCheck {
 public:
  void addFile(std::string file);
  void addPage(std::string file, std::string_view html);

  // Tells of each link of a page that does not land; returns how many there are that do. All pages
  // and files must be known.
  std::size_t check(std::string_view file, std::string_view html,
                    const std::function<void(const BrokenLink&)>& tell) const;

 private:
  bool lands(std::string_view from, std::string_view link, BrokenLink::Reason& reason) const;

  std::unordered_map<std::string, std::vector<std::size_t>> ids_;  // by file: hashes, in order
};

}  // namespace tintline::site
