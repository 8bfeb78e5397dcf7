// See nearest.h. Tested by tests/cli/run.py.
#include "cli/nearest.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/text.h"

namespace tintline {
namespace {

constexpr std::size_t kLongest = 32;  // no word that is known is longer
constexpr std::size_t kLettersPerError = 3;

// The least number of letters left out, added, replaced or swapped with their neighbour, each once
// at most (optimal string alignment). Both words have kLongest letters at most.
std::size_t distance(std::string_view a, std::string_view b) {
  std::array<std::array<std::size_t, kLongest + 1>, kLongest + 1> errors{};
  for (std::size_t i = 0; i <= a.size(); ++i) errors[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) errors[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = equalsIgnoreCase(a.substr(i - 1, 1), b.substr(j - 1, 1));
      errors[i][j] = std::min(
          {errors[i - 1][j] + 1, errors[i][j - 1] + 1, errors[i - 1][j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        errors[i][j] = std::min(errors[i][j], errors[i - 2][j - 2] + 1);
    }
  return errors[a.size()][b.size()];
}

}  // namespace

std::string_view nearest(std::string_view typed, std::span<const std::string_view> words) {
  std::string_view found;
  if (typed.empty() || typed.size() > kLongest) return found;
  std::size_t fewest = std::max<std::size_t>(1, typed.size() / kLettersPerError) + 1;
  for (const std::string_view word : words) {
    const std::size_t errors = distance(typed, word.substr(0, kLongest));
    if (errors >= fewest) continue;
    fewest = errors;
    found = word;
  }
  if (!found.empty() || typed.size() < 2) return found;
  const auto begun =
      std::ranges::find_if(words, [&](std::string_view word) { return word.starts_with(typed); });
  return begun == words.end() ? found : *begun;
}

}  // namespace tintline
