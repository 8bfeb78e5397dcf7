// The "#If" blocks that are open at a place in a module.
//
// Tested by the cases in tests/golden/language/declarations.
#pragma once

#include <cstdint>
#include <vector>

#include "vb/word.h"

namespace tintline::vb {

// Where a statement lies in "#If" blocks; outside of all zeros.
struct Branch {
  std::uint32_t block = 0;   // counted from 1
  std::uint32_t branch = 0;  // likewise, in the whole module

  bool isBeside(const Branch& other) const {
    return block != 0 && block == other.block && branch != other.branch;
  }
};

class Branches {
 public:
  Branch current() const { return open_.empty() ? Branch{} : open_.back(); }

  // At a directive; `word` is the one behind its "#".
  void directive(Word word) {
    switch (word) {
      case Word::If:
        open_.push_back({++blocks_, ++last_});
        break;
      case Word::ElseIf:
      case Word::Else:
        if (!open_.empty()) open_.back().branch = ++last_;
        break;
      case Word::End:
      case Word::EndIf:
        if (!open_.empty()) open_.pop_back();
        break;
      default:
        break;
    }
  }

 private:
  std::vector<Branch> open_;
  std::uint32_t blocks_ = 0, last_ = 0;
};

}  // namespace tintline::vb
