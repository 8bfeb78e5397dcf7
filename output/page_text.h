// The text of a rendered page with its runs while it grows.
//
// Tested by tests/unit/output/rendered_page_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/codepage.h"
#include "output/rendered_page.h"

namespace tintline {

class PageText {
 public:
  // `encoding` is that of the page, whose text must live as long as this.
  explicit PageText(TextEncoding encoding = TextEncoding::Ansi) : encoding_(encoding) {}

  std::size_t size() const { return page_.text.size(); }
  bool atLineStart() const { return page_.text.empty() || page_.text.back() == L'\n'; }

  void append(std::wstring_view text, const TextLooks& looks);
  void addAnchor(std::wstring name) { page_.anchors.push_back({std::move(name), size()}); }

  // The number of a link's target, as the page writes it.
  std::uint32_t addTarget(std::string_view target);

  // The page without the line ends behind its last line.
  RenderedPage take() &&;

 private:
  TextEncoding encoding_;
  RenderedPage page_;
  std::unordered_map<std::string_view, std::uint32_t> targets_;
};

}  // namespace tintline
