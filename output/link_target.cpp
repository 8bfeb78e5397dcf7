// See link_target.h. Tested by tests/unit/output/output_test.cpp.
#include "output/link_target.h"

#include <algorithm>

namespace tintline {
namespace {

constexpr std::size_t kLongest = 2000;

bool mayStandInAddress(wchar_t c) {
  constexpr std::wstring_view kRefused = L"\"<>\\^`{|}";
  return c > L' ' && c < 0x7F && kRefused.find(c) == std::wstring_view::npos;
}

// Whether the address begins with `scheme` (lower case) and something follows that can be a
// host or a mailbox.
bool hasScheme(std::wstring_view address, std::wstring_view scheme) {
  const auto sameLetter = [](wchar_t a, wchar_t b) {
    return (a >= L'A' && a <= L'Z' ? a + (L'a' - L'A') : a) == b;
  };
  if (address.size() <= scheme.size()) return false;
  if (!std::equal(scheme.begin(), scheme.end(), address.begin(),
                  [&](wchar_t wanted, wchar_t given) { return sameLetter(given, wanted); }))
    return false;
  const std::wstring_view noBeginning = L"/?#:@.";
  return noBeginning.find(address[scheme.size()]) == std::wstring_view::npos;
}

}  // namespace

LinkTarget classifyLink(std::wstring_view target) {
  if (target.starts_with(L'#')) return {LinkTarget::Kind::Anchor, std::wstring(target.substr(1))};
  const bool external = target.size() <= kLongest &&
                        std::all_of(target.begin(), target.end(), mayStandInAddress) &&
                        (hasScheme(target, L"http://") || hasScheme(target, L"https://") ||
                         hasScheme(target, L"mailto:"));
  if (!external) return {LinkTarget::Kind::Refused, {}};
  return {LinkTarget::Kind::External, std::wstring(target)};
}

}  // namespace tintline
