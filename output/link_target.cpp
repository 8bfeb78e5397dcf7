// See link_target.h. Tested by tests/unit/output/output_test.cpp.
#include "output/link_target.h"

#include <algorithm>

#include "base/codepage.h"
#include "base/text.h"

namespace tintline {
namespace {

constexpr std::size_t kLongest = 2000;

bool mayStandInAddress(wchar_t c) {
  constexpr std::wstring_view kRefused = L"\"<>\\^`{|}";
  return c > L' ' && c < 0x7F && kRefused.find(c) == std::wstring_view::npos;
}

// Whether the address begins with `scheme` and something follows that can be a
// host or a mailbox.
bool hasScheme(std::string_view address, std::string_view scheme) {
  constexpr std::string_view kNoBeginning = "/?#:@.";
  return address.size() > scheme.size() && startsWithIgnoreCase(address, scheme) &&
         kNoBeginning.find(address[scheme.size()]) == kNoBeginning.npos;
}

bool isAddress(std::string_view text) {
  return hasScheme(text, "http://") || hasScheme(text, "https://") || hasScheme(text, "mailto:");
}

}  // namespace

LinkTarget classifyLink(std::wstring_view target) {
  if (target.starts_with(L'#')) return {LinkTarget::Kind::Anchor, std::wstring(target.substr(1))};
  const bool external = target.size() <= kLongest &&
                        std::ranges::all_of(target, mayStandInAddress) && isAddress(toUtf8(target));
  if (!external) return {LinkTarget::Kind::Refused, {}};
  return {LinkTarget::Kind::External, std::wstring(target)};
}

}  // namespace tintline
