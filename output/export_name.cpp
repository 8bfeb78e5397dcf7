// See export_name.h. Tested by tests/unit/output/output_test.cpp.
#include "output/export_name.h"

#include <algorithm>

namespace tintline {
namespace {

// Takes every "(…)" out; one that is not closed goes to the end.
void removeBrackets(std::wstring& name) {
  for (std::size_t open; (open = name.find(L'(')) != std::wstring::npos;) {
    const std::size_t close = std::min(name.find(L')', open), name.size() - 1);
    name.erase(open, close - open + 1);
  }
}

std::wstring cleanPart(std::wstring part) {
  std::replace(part.begin(), part.end(), L'\\', L'_');
  removeBrackets(part);
  std::erase(part, L' ');
  return part;
}

}  // namespace

std::wstring defaultExportName(const std::vector<std::wstring>& parts) {
  std::wstring name;
  for (const std::wstring& part : parts) {
    const std::wstring cleaned = cleanPart(part);
    if (cleaned.empty()) continue;
    if (!name.empty()) name += L'_';
    name += cleaned;
  }
  for (const std::wstring_view extension : {L".bas", L".frm", L".cls"})
    if (name.ends_with(extension)) return name.substr(0, name.size() - extension.size());
  return name;
}

std::wstring forceExtension(std::wstring_view chosenName, int filterIndex) {
  constexpr int kHtmlFilter = 2;
  const std::size_t separator = chosenName.find_last_of(L"\\/");
  const std::size_t dot = chosenName.rfind(L'.');
  const bool hasExtension =
      dot != std::wstring_view::npos && (separator == std::wstring_view::npos || dot > separator);
  std::wstring name(chosenName.substr(0, hasExtension ? dot : chosenName.size()));
  return name.append(filterIndex == kHtmlFilter ? L".html" : L".htm");
}

}  // namespace tintline
