// The With blocks that are open at a place in a procedure.
//
// Tested by the cases in tests/golden/language/links.
#pragma once

#include <cstdint>
#include <vector>

#include "vb/module.h"

namespace tintline::vb {

template <typename Value>
class WithBlocks {
 public:
  void open(const Value& value) {
    blocks_.push_back({value, innermost_});
    innermost_ = static_cast<std::uint32_t>(blocks_.size() - 1);
  }
  void close() {
    if (innermost_ != kNone) innermost_ = blocks_[innermost_].outer;
  }
  void clear() {
    blocks_.clear();
    branches_.clear();
    innermost_ = kNone;
  }
  // Of the innermost block; a default value outside of all.
  Value value() const { return innermost_ == kNone ? Value{} : blocks_[innermost_].value; }

  // At "#If", "#Else" and "#End If": all branches begin in the same blocks, and behind them those
  // of the first branch are open.
  void beginBranches() { branches_.push_back({innermost_, kUnset}); }
  void nextBranch() {
    if (branches_.empty()) return;
    if (branches_.back().behindFirst == kUnset) branches_.back().behindFirst = innermost_;
    innermost_ = branches_.back().before;
  }
  void endBranches() {
    if (branches_.empty()) return;
    if (branches_.back().behindFirst != kUnset) innermost_ = branches_.back().behindFirst;
    branches_.pop_back();
  }

 private:
  static constexpr std::uint32_t kUnset = kNone - 1;

  struct Block {
    Value value;
    std::uint32_t outer;
  };
  struct Branches {
    std::uint32_t before, behindFirst;  // innermost blocks
  };

  std::vector<Block> blocks_;  // closed ones, too: a branch can come back to them
  std::uint32_t innermost_ = kNone;
  std::vector<Branches> branches_;
};

}  // namespace tintline::vb
