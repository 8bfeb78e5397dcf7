// See page_text.h. Tested by tests/unit/output/rendered_page_test.cpp.
#include "output/page_text.h"

#include <algorithm>
#include <utility>

namespace tintline {

void PageText::append(std::wstring_view text, const TextLooks& looks) {
  if (text.empty()) return;
  if (page_.runs.empty() || page_.runs.back().looks != looks)
    page_.runs.push_back({size(), 0, looks});
  page_.runs.back().length += text.size();
  page_.text += text;
}

std::uint32_t PageText::addTarget(std::string_view target) {
  const auto [entry, added] =
      targets_.try_emplace(target, static_cast<std::uint32_t>(page_.targets.size()));
  if (added) page_.targets.push_back(attributeText(target, encoding_));
  return entry->second;
}

RenderedPage PageText::take() && {
  page_.text.resize(page_.text.find_last_not_of(L'\n') + 1);
  while (!page_.runs.empty() && page_.runs.back().start >= size()) page_.runs.pop_back();
  if (!page_.runs.empty()) page_.runs.back().length = size() - page_.runs.back().start;
  for (Anchor& anchor : page_.anchors) anchor.position = std::min(anchor.position, size());
  return std::move(page_);
}

}  // namespace tintline
