// Runs the cases of tests/golden/language/links and tests/golden/language/declarations.
#include "vb/project.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/unit/vb/language_cases.h"
#include "vb/fold.h"

namespace tintline::vb {
namespace {

constexpr std::u8string_view kDeclarationKinds[] = {
    u8"sub",      u8"function", u8"property", u8"declare",     u8"event",
    u8"type",     u8"field",    u8"enum",     u8"enum member", u8"constant",
    u8"variable", u8"control",  u8"label",    u8"parameter",   u8"local"};
constexpr std::u8string_view kAccessors[] = {u8"", u8"Get", u8"Let", u8"Set"};
constexpr std::u8string_view kVisibilities[] = {u8"public ", u8"private ", u8"friend ", u8""};
constexpr std::u8string_view kModuleKinds[] = {u8"module", u8"class",    u8"form",     u8"control",
                                               u8"page",   u8"document", u8"designer", u8"office"};

std::u8string digits(std::uint32_t number) {
  const std::string text = std::to_string(number);
  return {text.begin(), text.end()};
}

// The modules of a case: their sections are headed by their kind and name.
std::vector<Module> modulesOf(const LanguageCase& one,
                              std::vector<const LanguageCase::Section*>& of) {
  const WordLists words = wordLists(one);
  std::vector<Module> modules;
  for (const LanguageCase::Section& section : one.sections) {
    const std::size_t blank = section.name.find(u8' ');
    const std::u8string kind = section.name.substr(0, blank);
    const auto* const found = std::ranges::find(kModuleKinds, kind);
    if (found == std::end(kModuleKinds)) continue;
    modules.push_back(readModule(withoutMarks(section.text), section.name.substr(blank + 1),
                                 static_cast<ModuleKind>(found - kModuleKinds), words));
    of.push_back(&section);
  }
  return modules;
}

// ------------------------------------------------------------------------------------ links

std::u8string pathOf(const Module& module, const Declaration& declared) {
  std::u8string path(plainName(module.textOf(declared.name)));
  if (declared.scope != kNone)
    path = std::u8string(plainName(module.textOf(module.declarations[declared.scope].name))) +
           u8"." + path;
  if (declared.accessor != Accessor::None)
    path.append(u8".").append(kAccessors[static_cast<std::size_t>(declared.accessor)]);
  return path;
}

// What a mark says: the path of the declaration, with its line where several have that path.
std::u8string markOf(const Module& module, std::uint32_t declaration) {
  if (declaration == kNone) return {};
  const Declaration& declared = module.declarations[declaration];
  if (declared.kind == DeclarationKind::Parameter || declared.kind == DeclarationKind::Local)
    return u8"·";
  const std::u8string path = pathOf(module, declared);
  const auto same = std::ranges::count_if(module.declarations, [&](const Declaration& other) {
    return other.kind != DeclarationKind::Local && equalFolded(pathOf(module, other), path);
  });
  return same > 1 ? path + u8"@" + digits(declared.line) : path;
}

std::u8string withLinks(const std::vector<Module>& modules, std::uint32_t index,
                        const std::vector<Reference>& references) {
  const Module& module = modules[index];
  std::u8string marked;
  std::size_t at = 0;
  for (const Reference& reference : references) {
    const std::size_t begin = module.tokens[reference.token].begin;
    marked.append(module.text, at, begin - at).append(u8"‹");
    const Module& target = modules[reference.module];
    if (reference.module != index || reference.declaration == kNone)
      marked.append(target.name).append(u8"!");
    marked.append(markOf(target, reference.declaration)).append(u8"›");
    at = begin;
  }
  return marked.append(module.text, at);
}

TEST(Language, namesLeadToTheirDeclarations) {
  const std::vector<LanguageCase> cases = languageCases("tests/golden/language/links");
  ASSERT_GT(cases.size(), 20U);
  for (const LanguageCase& one : cases) {
    std::vector<const LanguageCase::Section*> sections;
    const std::vector<Module> modules = modulesOf(one, sections);
    std::u8string name;
    for (const LanguageCase::Section& section : one.sections)
      if (section.name.starts_with(u8"project ")) name = section.name.substr(8);
    Project project(name);
    for (const Module& module : modules) project.add(module);
    project.close();
    for (std::uint32_t i = 0; i < modules.size(); ++i)
      expectLines(withLinks(modules, i, project.resolve(modules[i], i)), sections[i]->text, one);
  }
}

// ----------------------------------------------------------------------------- declarations

std::u8string described(const Module& module, const Declaration& one) {
  std::u8string line(one.scope == kNone ? 0 : 2, u8' ');
  line += digits(one.line);
  if (one.endLine != one.line) line.append(u8"-").append(digits(one.endLine));
  line.append(u8" ").append(kVisibilities[static_cast<std::size_t>(one.visibility)]);
  const struct {
    bool is;
    std::u8string_view word;
  } flags[] = {{one.isStatic, u8"static "},       {one.isConstant, u8"const "},
               {one.withEvents, u8"withevents "}, {one.optional, u8"optional "},
               {one.byValue, u8"byval "},         {one.paramArray, u8"paramarray "},
               {one.defaultMember, u8"default "}, {one.byReDim, u8"redim "}};
  for (const auto& [is, word] : flags)
    if (is) line += word;
  line.append(kDeclarationKinds[static_cast<std::size_t>(one.kind)]).append(u8" ");
  line.append(module.textOf(one.name));
  if (one.accessor != Accessor::None)
    line.append(u8".").append(kAccessors[static_cast<std::size_t>(one.accessor)]);
  if (one.isArray) line += u8"()";
  if (!one.type.empty()) line += one.isNew ? u8" As New " : u8" As ";
  for (std::uint32_t i = one.type.begin; i < one.type.end; ++i) line += module.textOf(i);
  if (!one.lead.empty()) line += u8", behind";
  for (std::uint32_t i = one.lead.begin; i < one.lead.end; ++i)
    line.append(u8" ").append(module.textOf(i));
  return line + u8"\n";
}

TEST(Language, declarationsAreRead) {
  const std::vector<LanguageCase> cases = languageCases("tests/golden/language/declarations");
  ASSERT_GT(cases.size(), 10U);
  for (const LanguageCase& one : cases) {
    std::vector<const LanguageCase::Section*> sections;
    const Module module = modulesOf(one, sections).back();
    std::u8string text(kModuleKinds[static_cast<std::size_t>(module.kind)]);
    text.append(u8" ").append(module.name).append(module.predeclared ? u8", an object" : u8"");
    text.append(u8", ").append(digits(module.lines)).append(u8" lines");
    if (!module.description.empty()) text.append(u8": ").append(module.description);
    text += u8"\n";
    for (const Declaration& declared : module.declarations) text += described(module, declared);
    ASSERT_NE(one.section(u8"declares"), nullptr);
    expectLines(text, *one.section(u8"declares"), one);
  }
}

}  // namespace
}  // namespace tintline::vb
