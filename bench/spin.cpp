// spin
//
// Keeps a processor busy for about 50 ms, with sums that need neither memory nor one another. Two
// of them at once run at full speed on two cores, and at half of it on two processors that
// share a core.
#include <cstdint>

int main() {
  constexpr std::uint64_t kRounds = 60'000'000;
  std::uint64_t a = 1, b = 2, c = 3, d = 4;
  for (std::uint64_t round = 0; round < kRounds; ++round) {
    a += round ^ (a >> 3);
    b += round ^ (b >> 5);
    c += round ^ (c >> 7);
    d ^= round + (d << 1);
  }
  return (a ^ b ^ c ^ d) == 0 ? 1 : 0;  // so that the sums are needed
}
