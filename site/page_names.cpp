// See page_names.h. Tested by tests/unit/site/site_test.cpp.
#include "site/page_names.h"

#include <algorithm>
#include <cstddef>
#include <map>

#include "listing/unique_ids.h"
#include "listing/utf8.h"
#include "vb/fold.h"

namespace tintline::site {
namespace {

constexpr std::size_t kLongestPart = 100;  // bytes: paths have their limits

// Names that some systems keep for devices, whatever their extension.
bool isDevice(std::u8string_view part) {
  constexpr std::u8string_view kDevices[] = {u8"con", u8"prn",    u8"aux",
                                             u8"nul", u8"conin$", u8"conout$"};
  part = part.substr(0, part.find(u8'.'));
  while (part.ends_with(u8' ')) part.remove_suffix(1);
  if (std::ranges::any_of(kDevices, [&](auto each) { return vb::equalFolded(each, part); }))
    return true;
  return part.size() >= 4 && part.size() <= 5 &&
         (vb::equalFolded(part.substr(0, 3), u8"com") ||
          vb::equalFolded(part.substr(0, 3), u8"lpt"));
}

// A part of a path as every system takes it for the same.
std::u8string safePart(std::u8string_view part) {
  std::u8string safe;
  if (isDevice(part)) safe = u8"_";
  for (; !part.empty() && safe.size() < kLongestPart;
       part.remove_prefix(listing::sizeOfFirst(part))) {
    const char32_t c = listing::codePointOf(part);
    const bool forbidden =
        c < 0x20 || c == 0x7F || c == listing::kReplacement ||
        (c < 0x80 && std::u8string_view(u8"<>:\"/\\|?*").find(static_cast<char8_t>(c)) !=
                         std::u8string_view::npos);
    if (forbidden)
      safe += u8'_';
    else
      safe += part.substr(0, listing::sizeOfFirst(part));
  }
  if (safe.empty()) return u8"_";
  if (safe.back() == u8'.' || safe.back() == u8' ') safe.back() = u8'_';  // would be dropped
  return safe;
}

// The page of a module, without its ".htm" and with or without the ending of the module.
std::u8string pageName(std::u8string_view module, bool withEnding) {
  std::u8string name;
  while (true) {
    const std::size_t end = module.find(u8'/');
    std::u8string_view part = module.substr(0, end);
    if (end == std::u8string_view::npos) {
      const std::size_t point = part.rfind(u8'.');  // a name may begin with its only one
      if (!withEnding && point != std::u8string_view::npos && point > 0)
        part = part.substr(0, point);
      return name += safePart(part);
    }
    if (!part.empty() && part != u8".") (name += part == u8".." ? u8"_" : safePart(part)) += u8'/';
    module.remove_prefix(end + 1);
  }
}

}  // namespace

std::vector<std::u8string> pageNames(const std::vector<std::u8string>& modules) {
  std::map<std::u8string, std::size_t> modulesOf;  // that would have a name
  for (const std::u8string& module : modules) ++modulesOf[vb::folded(pageName(module, false))];
  listing::UniqueIds unique;
  std::u8string names;  // one behind another
  std::vector<std::u8string> pages;
  for (const std::u8string& module : modules) {
    const std::size_t begin = names.size();
    names += pageName(module, false);
    if (modulesOf[vb::folded(names.substr(begin))] > 1) {
      names.resize(begin);
      names += pageName(module, true);
    }
    unique.add(names, begin);
    pages.push_back(names.substr(begin) + u8".htm");
  }
  return pages;
}

}  // namespace tintline::site
