// Links calls in highlighted lines to the anchors of the procedures they name.
//
// The names are looked for as plain substrings, one after the other in the order of the list,
// in the line as the links before left it. To keep lines that hold no name cheap, however many
// names there are, a filter over all names finds the few that occur at all: in the source of the
// line, which is shorter, where that tells the same.
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

// Finds which of many names occur in a text, without regard to case. It looks at the text
// through a window as long as the shortest name. The characters at the window's end, its key, say
// how far the next window can be at least.
class NameFilter {
 public:
  // Looks for those names (none empty) whose indexes are wanted. They must live as long as the
  // filter.
  NameFilter(const std::vector<std::string_view>& names, const std::vector<std::uint32_t>& wanted);

  // Whether it looks for no name.
  bool empty() const { return groups_.empty(); }

  // Adds to `found` the index of each name that occurs in the text, for every occurrence.
  void find(std::string_view text, std::vector<std::size_t>& found) const;

 private:
  // Names with a key of that size: those of one length below kKeySize, or all from there on.
  struct Group {
    std::size_t keySize;
    std::size_t window;
    std::uint32_t mask;                // of a hash, for the number of steps
    std::vector<std::uint8_t> steps;   // by the hash of a key; 0: names may begin in this window
    std::vector<std::uint32_t> heads;  // for a part of the hash, the first name of its chain
  };

  // A name in its chain.
  struct Entry {
    std::uint64_t start;   // its first characters, up to eight, folded, in the highest bytes
    std::uint32_t unused;  // bits of `start` below them
    std::uint32_t next;    // the next name of the chain
  };

  static constexpr std::size_t kKeySize = 3;

  template <std::size_t kSize>
  void addGroup(const std::vector<std::uint32_t>& indexes);
  template <std::size_t kSize>
  void findInGroup(const Group& group, std::string_view text,
                   std::vector<std::size_t>& found) const;
  void collect(std::uint32_t chain, std::string_view text, std::vector<std::size_t>& found) const;

  const std::vector<std::string_view>& names_;
  std::vector<Entry> entries_;  // of each name
  std::vector<Group> groups_;
};

class CallLinker {
 public:
  // The names must live as long as the linker.
  explicit CallLinker(const ProcedureNames& ProzNamen);
  CallLinker(const CallLinker&) = delete;

  // The line with its calls linked, `html` being what the highlighter made of `source`; it lives
  // until the next call, or as long as `html` when nothing was linked. Throws std::length_error
  // when links add more than kMaxGrowth characters to a line.
  std::string_view link(std::string_view html, std::string_view source);

  // Every link holds its name again, so many names of one letter multiply a line
  // without end. No real line comes near this.
  static constexpr std::size_t kMaxGrowth = std::size_t{1} << 24;

 private:
  void sortFound();
  bool linkName(std::string_view name);
  bool replaceName(std::string_view name, std::size_t end, std::string_view close);

  std::vector<std::string_view> names_;  // trimmed, in order, none empty or twice
  NameFilter inSource_;                  // those that the HTML holds only where the source does
  NameFilter inHtml_;                    // the others
  std::vector<std::size_t> found_;
  std::string html_, linked_, link_;
  std::size_t longest_ = 0;  // what html_ may grow to
};

}  // namespace tintline
