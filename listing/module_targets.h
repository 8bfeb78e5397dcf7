// Where links can lead in one module, and what its index shows.
//
// Tested by tests/golden/exact.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "listing/options.h"
#include "vb/module.h"

namespace tintline::listing {

// The groups of an index, in their order.
enum class Group : std::uint8_t {
  Public,
  EventProcedures,
  Private,
  Events,
  Types,
  Declares,
  Constants
};
inline constexpr std::size_t kGroups = 7;

// The id of the code in each page: no other begins with a digit and is no line number.
inline constexpr std::u8string_view kCodeId = u8"0";

struct IndexEntry {
  std::uint32_t declaration;
  std::uint32_t label, labelSize;  // in the text of its ModuleTargets
};

class ModuleTargets {
 public:
  // `prefix` stands in front of each id ("Modul1."), `page` in front of a link's "#".
  ModuleTargets(const vb::Module& module, const Options& options, std::u8string prefix,
                std::u8string page);

  // The id without prefix; empty when nothing can lead there: parameters and locals.
  std::u8string_view id(std::uint32_t declaration) const {
    return view(idBegin(declaration), targets_[declaration].idSize);
  }
  // The id in an HTML document.
  std::u8string_view htmlId(std::uint32_t declaration) const {
    const Target& target = targets_[declaration];
    return view(target.begin + 1, target.idSize == 0 ? 0 : prefix_.size() + target.idSize);
  }
  // What stands in a link's tag behind `href="` and the page: `#Name" title="Sub Name()"`.
  std::u8string_view link(std::uint32_t declaration) const {
    const Target& target = targets_[declaration];
    return view(target.begin, target.size);
  }
  // Whether the line of its name is shown, so that links to it land.
  bool isShown(std::uint32_t declaration) const { return targets_[declaration].shown; }
  vb::DeclarationKind kind(std::uint32_t declaration) const { return targets_[declaration].kind; }

  const std::u8string& prefix() const { return prefix_; }
  // The id of the whole module in a document of several.
  std::u8string_view topId() const {
    return std::u8string_view(prefix_).substr(0, prefix_.empty() ? 0 : prefix_.size() - 1);
  }
  const std::u8string& page() const { return page_; }
  // What leads from the folder of the page to that from which all pages are named: "../".
  const std::u8string& toRoot() const { return toRoot_; }
  const std::u8string& name() const { return name_; }
  bool isClass() const { return isClass_; }

  // The index: declarations that are shown, those of a group in the order of the alphabet.
  std::span<const IndexEntry> group(Group group) const {
    const auto i = static_cast<std::size_t>(group);
    const std::size_t begin = i == 0 ? 0 : groupEnds_[i - 1];
    return std::span(index_).subspan(begin, groupEnds_[i] - begin);
  }
  std::u8string_view label(const IndexEntry& entry) const {  // HTML
    return view(entry.label, entry.labelSize);
  }

 private:
  struct Target {
    std::uint32_t begin = 0;  // of its link in text_
    std::uint16_t size = 0;
    std::uint16_t idSize = 0;
    vb::DeclarationKind kind{};
    bool shown = false;
  };
  struct Builder;
  friend struct Builder;

  std::size_t idBegin(std::uint32_t declaration) const {
    return targets_[declaration].begin + 1 + prefix_.size();
  }
  std::u8string_view view(std::size_t begin, std::size_t size) const {
    return std::u8string_view(text_).substr(begin, size);
  }

  std::u8string prefix_;
  std::u8string page_, toRoot_;
  std::u8string name_;
  bool isClass_;  // or a form ...: a type
  std::u8string text_;
  std::vector<Target> targets_;                     // by declaration
  std::vector<IndexEntry> index_;                   // group by group ...
  std::array<std::uint32_t, kGroups> groupEnds_{};  // which end there
};

// A text that orders names as a German index does: without case, umlauts as their vowels.
std::u8string sortKey(std::u8string_view name);

// The head of a declaration in one line, without comments, cut where it is very long:
// "Public Sub Demo()".
void headOf(std::u8string& head, const vb::Module& module, const vb::Declaration& declaration);

// Appends the text of a name as (a part of) an id: of letters, digits and marks that mean nothing
// in HTML and addresses. Any other character becomes "_".
void appendIdText(std::u8string& id, std::u8string_view name);

}  // namespace tintline::listing
