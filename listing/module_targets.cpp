// See module_targets.h. Tested by tests/golden/exact.
#include "listing/module_targets.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>
#include <tuple>
#include <utility>

#include "base/block.h"
#include "listing/html_text.h"
#include "listing/line_choice.h"
#include "listing/unique_ids.h"
#include "listing/utf8.h"
#include "vb/fold.h"
#include "vb/name_table.h"

namespace tintline::listing {
namespace {

using vb::DeclarationKind;

constexpr std::size_t kLongestName = 255;  // characters, as in the language
constexpr std::size_t kLongestHead = 200;  // characters: a head is written at each link to it
constexpr std::size_t kUsualText = 32;     // bytes that a declaration has in the text of all

// Parameters and locals stay inside their procedure.
bool canBeLinked(DeclarationKind kind) {
  return kind != DeclarationKind::Parameter && kind != DeclarationKind::Local;
}

std::u8string_view accessorText(vb::Accessor accessor) {
  constexpr std::u8string_view kTexts[] = {u8"", u8"Get", u8"Let", u8"Set"};
  return kTexts[static_cast<std::size_t>(accessor)];
}

constexpr std::array<bool, 256> kWordCharacter = [] {
  std::array<bool, 256> word{};
  for (unsigned c = 0; c < 0x80; ++c)
    word[c] =
        c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  return word;
}();

// Blanks, controls and what else cannot be seen, and what no address may hold.
bool canStandInId(char32_t c) {
  if (c < 0x80)
    return kWordCharacter[c] ||
           std::u8string_view(u8"!$()*+,-./:;=?@").find(static_cast<char8_t>(c)) !=
               std::u8string_view::npos;
  const bool invisible = c <= 0xA0 || (c >= 0x2000 && c <= 0x200F) ||
                         (c >= 0x2028 && c <= 0x202F) || (c >= 0x205F && c <= 0x206F) ||
                         c == 0x1680 || c == 0x3000 || c == 0xFEFF;
  const bool noncharacter = (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
  return !invisible && !noncharacter;
}

// Where the text has to be cut to have at most `limit` characters.
std::size_t cutAt(std::u8string_view text, std::size_t limit) {
  if (text.size() <= limit) return text.size();
  std::size_t at = 0;
  for (std::size_t count = 0; count < limit && at < text.size(); ++count)
    at += sizeOfFirst(text.substr(at));
  return at;
}

// What a head in one line leaves out.
bool isLayout(vb::TokenKind kind) {
  return kind == vb::TokenKind::Continuation || kind == vb::TokenKind::Comment ||
         kind == vb::TokenKind::LineEnd || kind == vb::TokenKind::Blank;
}

// The head of a declaration as it stands in the text.
struct WrittenHead {
  std::u8string_view text;  // empty: that is not the head in one line
  bool isHtml = true;       // means the same there
};

// In nearly all texts of heads blanks stand alone, and everything else is visible ASCII.
WrittenHead writtenHead(const vb::Module& module, const vb::Declaration& declaration) {
  const vb::TokenRange range = declaration.head;
  if (range.empty() || !declaration.lead.empty() || isLayout(module.tokens[range.end - 1].kind))
    return {};
  const std::size_t begin = module.tokens[range.begin].begin;
  const std::size_t size = vb::endOf(module.tokens, range.end - 1) - begin;
  if (size > kLongestHead || module.text.size() - begin <= size + sizeof(Block)) return {};
  const char8_t* const text = module.text.data() + begin;
  WrittenHead head{{text, size}};
  for (std::size_t at = 0; at < size; at += sizeof(Block)) {
    const Block piece = loadBlock(text + at), next = loadBlock(text + at + 1);
    const BlockMarks layout =
        (static_cast<Block>(piece - ' ') > '~' - ' ') | ((piece == ' ') & (next == ' '));
    if (at + firstMarked(layout) < std::min(size, at + sizeof(Block))) return {};
    const BlockMarks markup = ((piece & 0xFB) == '"') | ((piece & 0xFD) == '<');  // and "&", ">"
    head.isHtml = head.isHtml && at + firstMarked(markup) >= std::min(size, at + sizeof(Block));
  }
  return head;
}

// ------------------------------------------------------------------------------------ index

// Appends what an index calls a declaration: "Waehrung (Get)".
void appendLabel(std::u8string& text, const vb::Module& module,
                 const vb::Declaration& declaration) {
  const std::u8string_view name = vb::plainName(module.textOf(declaration.name));
  text += name.substr(0, cutAt(name, kLongestName));
  if (declaration.accessor != vb::Accessor::None)
    (text += u8" (").append(accessorText(declaration.accessor)) += u8')';
}

// The vowel that stands for a folded umlaut in the order of a German index.
std::u8string_view vowelOf(char32_t umlaut) {
  switch (umlaut) {
    case U'ä':
      return u8"a";
    case U'ö':
      return u8"o";
    case U'ü':
      return u8"u";
    case U'ß':
      return u8"ss";
    default:
      return {};
  }
}

// Makes a sort key of the text from `begin` on.
void makeSortKey(std::u8string& text, std::size_t begin) {
  char8_t bits = 0;
  for (char8_t& c : std::span(text).subspan(begin)) {
    bits |= c;
    c |= c >= 'A' && c <= 'Z' ? 0x20 : 0;
  }
  if (bits < 0x80) return;  // ASCII
  const std::u8string folded = vb::folded(std::u8string_view(text).substr(begin));
  text.resize(begin);
  for (std::u8string_view rest = folded; !rest.empty(); rest.remove_prefix(sizeOfFirst(rest))) {
    const std::u8string_view vowel = vowelOf(codePointOf(rest));
    text += vowel.empty() ? rest.substr(0, sizeOfFirst(rest)) : vowel;
  }
}

// The objects whose events a module can handle without declaring them.
constexpr std::u8string_view kOwnObjects[] = {
    u8"Form",         u8"MDIForm",         u8"UserForm",   u8"Class",     u8"UserControl",
    u8"PropertyPage", u8"UserDocument",    u8"Workbook",   u8"Worksheet", u8"Chart",
    u8"Document",     u8"DataEnvironment", u8"DataReport", u8"Report",    u8"AddinInstance"};

// Events of controls that a form keeps in a file beside its text.
constexpr std::u8string_view kControlEvents[] = {u8"Click",          u8"DblClick",
                                                 u8"Change",         u8"GotFocus",
                                                 u8"LostFocus",      u8"Enter",
                                                 u8"Exit",           u8"KeyDown",
                                                 u8"KeyPress",       u8"KeyUp",
                                                 u8"MouseDown",      u8"MouseMove",
                                                 u8"MouseUp",        u8"Scroll",
                                                 u8"SpinUp",         u8"SpinDown",
                                                 u8"AddControl",     u8"BeforeUpdate",
                                                 u8"AfterUpdate",    u8"DropButtonClick",
                                                 u8"BeforeDragOver", u8"BeforeDropOrPaste",
                                                 u8"Error"};

bool holds(std::span<const std::u8string_view> words, std::u8string_view word) {
  return std::ranges::any_of(words, [&](auto each) { return vb::equalFolded(each, word); });
}

// Tells procedures that handle events by their names: "cmdOk_Click". Standard modules have none.
class EventSources {
 public:
  explicit EventSources(const vb::Module& module) : module_(module) {
    if (module.kind == vb::ModuleKind::Standard) return;
    for (const vb::Declaration& declaration : module.declarations)
      if (declaration.kind == DeclarationKind::Control || declaration.withEvents) {
        const auto name = vb::plainName(module.textOf(declaration.name));
        names_.add(module.text, name);
      }
  }

  bool isHandler(const vb::Declaration& declaration) const {
    if (module_.kind == vb::ModuleKind::Standard || declaration.kind != DeclarationKind::Sub ||
        declaration.visibility != vb::Visibility::Private)
      return false;
    const auto name = vb::plainName(module_.textOf(declaration.name));
    const std::size_t split = name.rfind('_');
    if (split == 0 || split == std::u8string_view::npos) return false;
    const auto object = name.substr(0, split);
    return holds(kOwnObjects, object) ||
           names_.find(module_.text, vb::NameKey(object)) != vb::NameTable::kUnknown ||
           (module_.kind != vb::ModuleKind::Class && holds(kControlEvents, name.substr(split + 1)));
  }

 private:
  const vb::Module& module_;
  vb::NameTable names_;
};

std::optional<Group> groupOf(const vb::Declaration& declaration, const EventSources& events) {
  switch (declaration.kind) {
    case DeclarationKind::Sub:
    case DeclarationKind::Function:
    case DeclarationKind::Property:
      if (events.isHandler(declaration)) return Group::EventProcedures;
      return declaration.visibility == vb::Visibility::Private ? Group::Private : Group::Public;
    case DeclarationKind::Event:
      return Group::Events;
    case DeclarationKind::Type:
    case DeclarationKind::Enum:
      return Group::Types;
    case DeclarationKind::Declare:
      return Group::Declares;
    case DeclarationKind::Constant:
      return Group::Constants;
    default:
      return {};
  }
}

}  // namespace

std::u8string sortKey(std::u8string_view name) {
  std::u8string key(name);
  makeSortKey(key, 0);
  return key;
}

void appendIdText(std::u8string& id, std::u8string_view name) {
  name = name.substr(0, cutAt(name, kLongestName));
  if (name.empty() || (name[0] >= '0' && name[0] <= '9')) id += u8'_';
  appendText(id, name, kWordCharacter, [&](std::u8string_view character) {
    if (canStandInId(codePointOf(character)))
      id += character;
    else
      id += u8'_';
  });
}

void headOf(std::u8string& head, const vb::Module& module, const vb::Declaration& declaration) {
  head = writtenHead(module, declaration).text;
  if (!head.empty()) return;
  for (const vb::TokenRange range : {declaration.lead, declaration.head}) {
    bool blank = true;
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
      blank = blank || module.tokens[i].gap > 0;
      if (isLayout(module.tokens[i].kind)) continue;
      if (blank && !head.empty()) head += u8' ';
      blank = isLayout(module.tokens[i + 1].kind);
      const auto text = module.textOf(i);
      head += text.substr(0, cutAt(text, kLongestHead + 1));
      const std::size_t end = cutAt(head, kLongestHead);
      if (end == head.size()) continue;
      head.resize(end);
      head += u8"…";
      return;
    }
  }
}

// ------------------------------------------------------------------------------------ targets

struct ModuleTargets::Builder {
  ModuleTargets& targets;
  const vb::Module& module;
  const Options& options;
  UniqueIds ids;
  std::u8string head;

  void build() {
    targets.targets_.resize(module.declarations.size());
    targets.text_.reserve(kUsualText * module.declarations.size());
    const LineChoice choice(module, options);
    std::vector<std::uint32_t> lines;
    if (!options.lines.empty()) lines = linesOfNames(module);
    for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
      const vb::Declaration& declaration = module.declarations[i];
      Target& target = targets.targets_[i];
      target.kind = declaration.kind;
      // Nothing can lead to lines that are not shown.
      target.shown = choice.shows(lines.empty() ? 1 : lines[i], declaration.name);
      if (!canBeLinked(declaration.kind)) continue;
      target.begin = static_cast<std::uint32_t>(targets.text_.size());
      appendId(target, declaration);
      if (options.titles && declaration.kind != DeclarationKind::Label) appendTitle(declaration);
      target.size = static_cast<std::uint16_t>(targets.text_.size() - target.begin);
    }
    addIndex();
  }

  // Appends "#", the prefix and the id, which no other declaration has, and the closing quote.
  void appendId(Target& target, const vb::Declaration& declaration) {
    std::u8string& text = targets.text_;
    (text += u8'#') += targets.prefix_;
    const std::size_t begin = text.size();
    if (declaration.scope != vb::kNone)
      text.append(text, targets.idBegin(declaration.scope), targets.id(declaration.scope).size()) +=
          u8'.';
    appendIdText(text, vb::plainName(module.textOf(declaration.name)));
    if (declaration.accessor != vb::Accessor::None)
      (text += u8'.') += accessorText(declaration.accessor);
    ids.add(text, begin);
    target.idSize = static_cast<std::uint16_t>(text.size() - begin);
    text += u8'"';
  }

  void appendTitle(const vb::Declaration& declaration) {
    WrittenHead written = writtenHead(module, declaration);
    if (written.text.empty()) {
      headOf(head, module, declaration);
      written = {head, false};
    }
    if (written.text.empty()) return;
    std::u8string& text = targets.text_;
    text += u8" title=\"";
    if (written.isHtml)
      text += written.text;
    else
      appendHtml(text, written.text);
    text += u8'"';
  }

  // What is indexed, by group, and in the order of the alphabet.
  void addIndex() {
    struct Entry {
      std::uint64_t rank;          // nearly always decides alone
      std::uint32_t key, keySize;  // in keys
      IndexEntry shown;
    };
    std::vector<Entry> entries;
    entries.reserve(module.declarations.size());
    std::array<std::uint32_t, kGroups> sizes{};
    std::u8string keys;
    const EventSources events(module);
    for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
      const auto group = groupOf(module.declarations[i], events);
      if (!group || !targets.isShown(i)) continue;
      ++sizes[static_cast<std::size_t>(*group)];
      const std::size_t begin = keys.size();
      appendLabel(keys, module, module.declarations[i]);
      const IndexEntry shown = entryOf(i, std::u8string_view(keys).substr(begin));
      makeSortKey(keys, begin);
      const auto key = std::u8string_view(keys).substr(begin);
      entries.push_back({rankOf(*group, key), offset(begin), offset(key.size()), shown});
    }
    std::ranges::sort(entries, {}, [&](const Entry& entry) {
      const auto key = std::u8string_view(keys).substr(entry.key, entry.keySize);
      return std::tuple(entry.rank, key, entry.shown.declaration);
    });
    targets.index_.reserve(entries.size());
    for (const Entry& entry : entries) targets.index_.push_back(entry.shown);
    std::partial_sum(sizes.begin(), sizes.end(), targets.groupEnds_.begin());
  }

  // An id that is the label is HTML as well; else that is appended.
  IndexEntry entryOf(std::uint32_t declaration, std::u8string_view label) {
    if (targets.id(declaration) == label)
      return {declaration, offset(targets.idBegin(declaration)), offset(label.size())};
    const std::size_t begin = targets.text_.size();
    appendHtml(targets.text_, label);
    return {declaration, offset(begin), offset(targets.text_.size() - begin)};
  }

  // Orders as group and key do, by the first letters of that.
  static std::uint64_t rankOf(Group group, std::u8string_view key) {
    auto rank = static_cast<std::uint64_t>(group);
    for (std::size_t i = 0; i < 7; ++i) rank = rank << 8 | (i < key.size() ? key[i] : 0U);
    return rank;
  }

  static std::uint32_t offset(std::size_t place) { return static_cast<std::uint32_t>(place); }
};

ModuleTargets::ModuleTargets(const vb::Module& module, const Options& options, std::u8string prefix,
                             std::u8string page)
    : prefix_(std::move(prefix)),
      page_(std::move(page)),
      name_(module.name),
      isClass_(module.kind != vb::ModuleKind::Standard) {
  for (const char8_t c : page_)
    if (c == u8'/') toRoot_ += u8"../";
  Builder{*this, module, options, {}, {}}.build();
}

}  // namespace tintline::listing
