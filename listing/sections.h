// How a module's lines are divided: into the file header, procedures with their comments, and
// what stands between them. All parts begin and end with a line.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstdint>
#include <vector>

#include "vb/module.h"

namespace tintline::listing {

struct Section {
  std::uint32_t declaration;  // the procedure
  std::uint32_t begin;        // tokens: the first of its first line, also of its comment block
  std::uint32_t headLine;     // the first of the head's line
  std::uint32_t headEnd;      // behind the head
  std::uint32_t end;          // behind its End
};

// The sections of the procedures that begin in a line of their own, in their order. Of two that
// share a line only the first has one.
std::vector<Section> sectionsOf(const vb::Module& module);

enum class Part : std::uint8_t { Header, Loose, Comment, Head, Body };

// Tells in which part each line lies. To be asked in the order of the lines.
class Parts {
 public:
  explicit Parts(const vb::Module& module) : module_(module), sections_(sectionsOf(module)) {}

  // The part of the line whose first token is `token`.
  Part partOf(std::uint32_t token);

  // The section of that line; nothing when it lies in none.
  const Section* section() const { return section_; }

  // Where that part ends: the lines whose first tokens are in front of it lie in it, too.
  std::uint32_t end() const { return end_; }

 private:
  const vb::Module& module_;
  std::vector<Section> sections_;
  std::size_t next_ = 0;
  const Section* section_ = nullptr;
  std::uint32_t end_ = 0;
};

}  // namespace tintline::listing
