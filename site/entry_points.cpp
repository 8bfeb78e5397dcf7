// See entry_points.h. Tested by tests/unit/site/site_test.cpp.
#include "site/entry_points.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "listing/module_targets.h"
#include "vb/fold.h"
#include "vb/name_table.h"
#include "vb/token_cursor.h"

namespace tintline::site {
namespace {

using vb::DeclarationKind;
using vb::ModuleKind;
using vb::TokenKind;

// Procedures that hosts and the language itself start in any module.
constexpr std::u8string_view kStarted[] = {
    u8"Main",      u8"NewEnum",          u8"AutoExec",        u8"AutoExit",   u8"AutoNew",
    u8"AutoOpen",  u8"AutoClose",        u8"Auto_Open",       u8"Auto_Close", u8"Auto_Activate",
    u8"Auto_Add",  u8"Auto_Remove",      u8"Auto_Deactivate", u8"Auto_Exec",  u8"Auto_Exit",
    u8"Auto_New",  u8"OnConnection",     u8"OnDisconnection", u8"FileSave",   u8"FileSaveAs",
    u8"FilePrint", u8"FilePrintDefault", u8"FileOpen",        u8"FileNew",    u8"FileClose"};

// Objects whose events can be handled, as procedures are called that do.
constexpr std::u8string_view kHandled[] = {
    u8"Workbook",    u8"Worksheet",     u8"Chart",        u8"Document",         u8"App",
    u8"Application", u8"Class",         u8"Form",         u8"MDIForm",          u8"UserForm",
    u8"UserControl", u8"PropertyPage",  u8"UserDocument", u8"DataEnvironment",  u8"DataReport",
    u8"Report",      u8"AddinInstance", u8"ThisDocument", u8"Session",          u8"Explorer",
    u8"Inspector",   u8"Slide",         u8"Presentation", u8"IDTExtensibility2"};

// Whether a shortcut is what the value of VB_Invoke_Func says: a letter in front of "\n".
bool isShortcut(std::u8string_view value) { return value.size() > 2 && value[1] > u8' '; }

class EntryPoints {
 public:
  explicit EntryPoints(const vb::Module& module)
      : module_(module), entry_(module.declarations.size()) {}

  std::vector<bool> run() {
    for (const vb::Declaration& declaration : module_.declarations)
      if (declaration.kind == DeclarationKind::Control || declaration.withEvents)
        add(sources_, vb::plainName(module_.textOf(declaration.name)));
    for (std::uint32_t i = 0; i + 1 < module_.tokens.size(); ++i)
      if (module_.tokens[i].word == vb::Word::Implements)
        implemented(i);
      else if (module_.tokens[i].word == vb::Word::Attribute)
        attributed(i);
    for (std::uint32_t i = 0; i < entry_.size(); ++i) entry_[i] = isEntry(module_.declarations[i]);
    return std::move(entry_);
  }

 private:
  void add(vb::NameTable& names, std::u8string_view name) const { names.add(module_.text, name); }
  bool isIn(const vb::NameTable& names, std::u8string_view name) const {
    return names.find(module_.text, vb::NameKey(name)) != vb::NameTable::kUnknown;
  }

  bool isLineEnd(std::uint32_t token) const {
    return module_.tokens[token].kind == TokenKind::LineEnd ||
           module_.tokens[token].kind == TokenKind::End;
  }

  void implemented(std::uint32_t token) {
    for (; !isLineEnd(token); ++token)
      if (vb::isNameKind(module_.tokens[token].kind))
        add(sources_, vb::plainName(module_.textOf(token)));
  }

  // A member to which an attribute gives a number, or a macro with a shortcut.
  void attributed(std::uint32_t token) {
    const std::uint32_t name = token + 1;
    bool number = false, shortcut = false;
    std::u8string_view value;
    for (; !isLineEnd(token); ++token) {
      const auto text = module_.textOf(token);
      number = number || vb::equalFolded(text, u8"VB_UserMemId");
      shortcut = shortcut || vb::equalFolded(text, u8"VB_Invoke_Func");
      if (module_.tokens[token].kind == TokenKind::String) value = text;
    }
    if (number || (shortcut && isShortcut(value)))
      add(attributed_, vb::plainName(module_.textOf(name)));
  }

  bool isEntry(const vb::Declaration& declaration) const {
    const auto name = vb::plainName(module_.textOf(declaration.name));
    switch (declaration.kind) {
      case DeclarationKind::Sub:
      case DeclarationKind::Function:
      case DeclarationKind::Property:
        return vb::isOneOf(kStarted, name) || isIn(attributed_, name) || isHandler(name) ||
               isRibbonCallback(declaration);
      case DeclarationKind::Variable:
        return declaration.withEvents || isIn(attributed_, name);
      case DeclarationKind::Local:
        return declaration.byReDim;
      case DeclarationKind::Declare:
      case DeclarationKind::Constant:
      case DeclarationKind::Type:
      case DeclarationKind::Enum:
        return false;
      default:
        return true;
    }
  }

  // "Object_Event", for each "_" of the name. Modules with a designer can hold objects that the
  // text does not show.
  bool isHandler(std::u8string_view name) const {
    const bool designed = module_.predeclared || (module_.kind != ModuleKind::Standard &&
                                                  module_.kind != ModuleKind::Class);
    for (std::size_t at = name.find(u8'_'); at != std::u8string_view::npos;
         at = name.find(u8'_', at + 1)) {
      const auto object = name.substr(0, at);
      if (at > 0 && at + 1 < name.size() &&
          (designed || vb::isOneOf(kHandled, object) || isIn(sources_, object)))
        return true;
    }
    return false;
  }

  // Named in a part of the document that is no code: told by the types of its parameters.
  bool isRibbonCallback(const vb::Declaration& declaration) const {
    for (std::uint32_t i = declaration.head.begin; i < declaration.head.end; ++i)
      if (vb::equalFolded(module_.textOf(i), u8"IRibbonControl") ||
          vb::equalFolded(module_.textOf(i), u8"IRibbonUI"))
        return true;
    return false;
  }

  const vb::Module& module_;
  std::vector<bool> entry_;
  vb::NameTable sources_;     // of events: controls, WithEvents variables, interfaces
  vb::NameTable attributed_;  // members that an attribute makes reachable
};

}  // namespace

std::vector<bool> entryPointsOf(const vb::Module& module) { return EntryPoints(module).run(); }

}  // namespace tintline::site
