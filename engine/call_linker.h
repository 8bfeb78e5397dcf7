// Links calls in highlighted lines to the anchors of the procedures they name.
//
// The names are looked for as plain substrings, one after the other in the
// order of the list, in the line as the links before left it. To keep lines
// that hold no name cheap, however many names there are, a filter over all
// names finds the few that occur at all.
//
// Tested by tests/unit/engine/engine_test.cpp and engine_property_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/document_frame.h"

namespace tintline {

// Finds which of many names occur in a text, without regard to case.
class NameFilter {
 public:
  // The names (none empty) must live as long as the filter.
  explicit NameFilter(const std::vector<std::string_view>& names);

  // Replaces `found` by the indexes of the names at or behind index `from` that
  // occur in the text, in ascending order; the first index of a name that stands
  // twice.
  void find(std::string_view text, std::size_t from, std::vector<std::size_t>& found) const;

 private:
  // The names of one length below kWindow, or of all lengths from there on. They
  // are reached by a key: their first characters, folded, as one number.
  struct Group {
    std::size_t length = 0;            // of the key in characters
    std::vector<std::uint64_t> seen;   // one bit for every hash of a key
    std::vector<std::uint32_t> heads;  // for a part of the hash, the first name of its chain
  };

  // A name in its chain.
  struct Entry {
    std::uint64_t start;   // its first characters, up to eight, folded, in the highest bytes
    std::uint32_t unused;  // bits of `start` below them
    std::uint32_t next;    // the next name of the chain, by ascending index
  };

  static constexpr std::size_t kWindow = 4;

  Group& groupOf(std::size_t length);
  void findInGroup(const Group& group, std::string_view text, std::size_t from,
                   std::vector<std::size_t>& found) const;
  void collect(const Group& group, std::uint32_t hash, std::string_view text, std::size_t from,
               std::vector<std::size_t>& found) const;

  const std::vector<std::string_view>& names_;
  std::vector<Entry> entries_;  // of each name
  std::vector<Group> groups_;
  bool skipTags_ = false;  // no name can occur in a tag, so that tags need not be searched
};

class CallLinker {
 public:
  // The names must live as long as the linker.
  explicit CallLinker(const ProcedureNames& ProzNamen);
  CallLinker(const CallLinker&) = delete;

  // The line with its calls linked; it lives until the next call, or as long as
  // `html` when nothing was linked. Throws std::length_error when links add more
  // than kMaxGrowth characters to a line.
  std::string_view link(std::string_view html);

  // Every link holds its name again, so many names of one letter multiply a line
  // without end. No real line comes near this.
  static constexpr std::size_t kMaxGrowth = std::size_t{1} << 24;

 private:
  bool linkName(std::string_view name);
  bool replaceName(std::string_view name, std::size_t end, std::string_view close);

  std::vector<std::string_view> names_;  // trimmed, in order, none empty
  NameFilter filter_;
  std::vector<std::size_t> found_;
  std::string html_;
  std::size_t longest_ = 0;  // what html_ may grow to
};

}  // namespace tintline
