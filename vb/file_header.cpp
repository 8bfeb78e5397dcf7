// See file_header.h. Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#include "vb/file_header.h"

#include <vector>

#include "vb/fold.h"
#include "vb/name_table.h"

namespace tintline::vb {

namespace {

struct RootType {
  std::u8string_view type;
  ModuleKind kind;
};
constexpr RootType kRootTypes[] = {
    {u8"Form", ModuleKind::Form},
    {u8"MDIForm", ModuleKind::Form},
    {u8"UserControl", ModuleKind::UserControl},
    {u8"PropertyPage", ModuleKind::PropertyPage},
    {u8"UserDocument", ModuleKind::UserDocument},
};

class HeaderReader {
 public:
  HeaderReader(Module& module, TokenCursor& cursor) : module_(module), cursor_(cursor) {}

  void read() {
    while (cursor_.kind() == TokenKind::LineEnd) cursor_.advance();
    if (cursor_.word() != Word::Version) return;
    readVersion();
    while (!cursor_.atEnd() && !closed_ && inHeader()) {
      line();
      nextLine();
    }
    module_.header.end = cursor_.at();
  }

 private:
  void readVersion() {
    for (; !cursor_.atLineEnd(); cursor_.advance())
      if (equalFolded(cursor_.textHere(), u8"class")) module_.kind = ModuleKind::Class;
    nextLine();
  }

  // A header that is not closed ends where code begins (as the tokenizer sees it).
  bool inHeader() const {
    if (cursor_.word() == Word::Attribute || cursor_.word() == Word::Option) return false;
    return !open_.empty() || cursor_.atLineEnd() || cursor_.word() == Word::Begin ||
           cursor_.word() == Word::Object || cursor_.word() == Word::Version;
  }

  void nextLine() {
    cursor_.skipLine();
    if (!cursor_.atEnd()) cursor_.advance();
  }

  void line() {
    switch (cursor_.word()) {
      case Word::Begin:
        return begin();
      case Word::BeginProperty:
        return open_.push_back(kNone);
      case Word::End:
      case Word::EndProperty:
        return end();
      default:
        if (!open_.empty() && open_.back() != kNone && equalFolded(cursor_.textHere(), u8"index"))
          module_.declarations[open_.back()].isArray = true;
    }
  }

  // Begin Library.Type Name, Begin {class id} Name, or BEGIN alone.
  void begin() {
    Declaration object;
    object.kind = DeclarationKind::Control;
    object.visibility = Visibility::Public;
    object.line = object.endLine = cursor_.line();
    object.head.begin = cursor_.at();
    cursor_.advance();
    object.type = {cursor_.at(), cursor_.at()};
    object.name = kNone;
    for (; !cursor_.atLineEnd() && cursor_.kind() != TokenKind::Comment; cursor_.advance())
      object.name = object.type.end = cursor_.at();
    object.head.end = cursor_.behindLast();
    const bool root = open_.empty();
    if (root) setKind(object.type);
    open_.push_back(root || object.name == kNone ? kNone : declare(object));
  }

  void setKind(TokenRange type) {
    if (type.end < type.begin + 3) return;  // not "VB.Form"
    for (const RootType& root : kRootTypes)
      if (equalFolded(module_.textOf(type.begin + 2), root.type)) module_.kind = root.kind;
  }

  // Gives the declaration. An array's elements are one control, the first of them: of others kNone.
  std::uint32_t declare(const Declaration& control) {
    const std::u8string_view name = plainName(module_.textOf(control.name));
    const std::uint32_t number = names_.add(module_.text, name);
    if (number < controls_.size()) {
      module_.declarations[controls_[number]].isArray = true;
      return kNone;
    }
    controls_.push_back(static_cast<std::uint32_t>(module_.declarations.size()));
    module_.declarations.push_back(control);
    return controls_.back();
  }

  void end() {
    if (!open_.empty()) {
      const std::uint32_t control = open_.back();
      open_.pop_back();
      if (control != kNone) module_.declarations[control].endLine = cursor_.line();
    }
    closed_ = open_.empty();
  }

  Module& module_;
  TokenCursor& cursor_;
  std::vector<std::uint32_t> open_;  // controls; the module itself and properties: kNone
  NameTable names_;
  std::vector<std::uint32_t> controls_;  // by the number of their name
  bool closed_ = false;
};

}  // namespace

void readFileHeader(Module& module, TokenCursor& cursor) { HeaderReader(module, cursor).read(); }

}  // namespace tintline::vb
