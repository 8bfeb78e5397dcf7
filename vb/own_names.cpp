// See own_names.h. Tested by the cases in tests/golden/language/declarations.
#include "vb/own_names.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "vb/name_table.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

namespace {

class OwnNames {
 public:
  OwnNames(Module& module, const WordLists& words) : module_(module), words_(words) {}

  void release() {
    for (std::uint32_t i = 0; i < module_.declarations.size(); ++i) collect(i);
    if (places_.empty()) return;
    Word before = Word::None;
    for (std::uint32_t i = module_.header.end; i < module_.tokens.size(); ++i) {
      Token& token = module_.tokens[i];
      if (isGap(token.kind)) continue;
      const bool namesType = before == Word::As || before == Word::New;
      if (kindOfName(token) != token.kind && !namesType && isOwn(i)) {
        token.kind = TokenKind::Name;
        token.word = Word::None;
      }
      before = token.word;
    }
  }

 private:
  // Where declarations of one name count.
  struct Place {
    bool everywhere = false;
    std::vector<TokenRange> procedures;  // ascending
    std::size_t next = 0;                // the first that has not ended yet
  };

  void collect(std::uint32_t index) {
    const Declaration& declared = module_.declarations[index];
    switch (declared.kind) {
      case DeclarationKind::Type:
      case DeclarationKind::Field:
      case DeclarationKind::Enum:
      case DeclarationKind::Event:
      case DeclarationKind::Label:
        return;
      default:
        break;
    }
    if (isNumbered(module_.tokens[declared.name].word)) return;  // in no list
    const std::u8string_view name = plainName(module_.textOf(declared.name));
    if (!isOfLibrary(words_.find(NameKey(name)).word)) return;
    Place& place = placeOf(name);
    if (declared.kind != DeclarationKind::Parameter && declared.kind != DeclarationKind::Local) {
      place.everywhere = true;
      return;
    }
    const Declaration& holder = module_.declarations[declared.scope];
    place.procedures.push_back({holder.head.begin, std::max(holder.head.end, holder.body.end)});
  }

  Place& placeOf(std::u8string_view name) {
    const std::uint32_t number = names_.add(module_.text, name);
    if (number == places_.size()) places_.emplace_back();
    return places_[number];
  }

  // Asked for in ascending order.
  bool isOwn(std::uint32_t token) {
    const std::u8string_view name = plainName(module_.textOf(token));
    const std::uint32_t number = names_.find(module_.text, NameKey(name));
    if (number == NameTable::kUnknown) return false;
    Place& place = places_[number];
    while (place.next < place.procedures.size() && place.procedures[place.next].end <= token)
      ++place.next;
    return place.everywhere ||
           (place.next < place.procedures.size() && place.procedures[place.next].begin <= token);
  }

  Module& module_;
  const WordLists& words_;
  NameTable names_;
  std::vector<Place> places_;  // by the number of the name
};

}  // namespace

void releaseOwnNames(Module& module, const WordLists& words) { OwnNames(module, words).release(); }

}  // namespace tintline::vb
