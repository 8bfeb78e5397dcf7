// See html_format.h. Tested by tests/unit/output/output_test.cpp.
#include "output/html_format.h"

namespace tintline {
namespace {

constexpr std::string_view kBefore = "<html><body>\r\n<!--StartFragment-->";
constexpr std::string_view kBehind = "<!--EndFragment-->\r\n</body></html>";
constexpr std::size_t kDigits = 10;

// A line of the head: its name and a place, in bytes from the first of all.
std::string place(std::string_view name, std::size_t offset) {
  const std::string digits = std::to_string(offset);
  return std::string(name) + std::string(kDigits - digits.size(), '0') + digits + "\r\n";
}

std::string head(std::size_t html, std::size_t fragment) {
  const std::size_t begin = html + kBefore.size(), end = begin + fragment;
  return "Version:1.0\r\n" + place("StartHTML:", html) + place("EndHTML:", end + kBehind.size()) +
         place("StartFragment:", begin) + place("EndFragment:", end);
}

}  // namespace

std::string htmlFormat(std::string_view fragment) {
  const std::size_t html = head(0, 0).size();  // whatever the places are
  return head(html, fragment.size()).append(kBefore).append(fragment).append(kBehind);
}

}  // namespace tintline
