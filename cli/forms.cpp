// See forms.h. Tested by tests/unit/cli/cli_test.cpp.
#include "cli/forms.h"

#include <string>
#include <vector>

#include "cli/messages.h"
#include "cli/option_table.h"
#include "cli/options.h"

namespace tintline {
namespace {

const wchar_t* modeName(Mode mode) { return mode == Mode::Exact ? L"exact" : L"classic"; }

std::wstring nameOf(Format format) { return L"--format " + argumentText(formatName(format)); }

// What the run makes.
Forms formsOf(const Options& options) {
  const Forms office =
      (options.list ? kListForm : 0) | (options.exportModules.empty() ? 0 : kFilesForm);
  return office != 0 ? office : formOf(options.mode, options.format, options.style);
}

std::wstring nameOfRun(const Options& options) {
  if (options.list) return L"--list";
  if (!options.exportModules.empty()) return L"--export-modules";
  return nameOf(options.format) + (options.style == StyleMode::Inline ? L" --style inline" : L"");
}

// The forms of the mode that are in the set.
Message namesOf(Forms forms, Mode mode) {
  if (forms == kFilesForm) return messages::kJust(L"--export-modules");
  std::vector<std::wstring> names;
  for (Format format = Format::Page; !formatName(format).empty();
       format = static_cast<Format>(static_cast<unsigned>(format) + 1)) {
    const bool asClass = (forms & formOf(mode, format, StyleMode::Class)) != 0;
    const bool asInline = (forms & formOf(mode, format, StyleMode::Inline)) != 0;
    if (!has(mode, format) || (!asClass && !asInline)) continue;
    names.push_back(argumentText(formatName(format)) + (asClass ? L"" : L" --style inline"));
  }
  names.front().insert(0, L"--format ");
  return messages::oneOf(names);
}

}  // namespace

void checkForms(const Options& options) {
  const Mode other = options.mode == Mode::Exact ? Mode::Classic : Mode::Exact;
  const auto needsOther = [&](const std::wstring& what) {
    throw UsageError(messages::kOnlyInMode(what, modeName(other)));
  };
  if (!has(options.mode, options.format)) needsOther(nameOf(options.format));
  const Forms ofMode = options.mode == Mode::Exact ? kExactForms : kClassicForms;
  for (const OptionRow* option : options.given) {
    if ((option->forms & formsOf(options)) != 0) continue;
    const std::wstring name = L"--" + argumentText(option->name);
    if ((option->forms & (ofMode | kFilesForm)) == 0) needsOther(name);
    throw UsageError(
        messages::kNoEffect(name, nameOfRun(options), namesOf(option->forms, options.mode)));
  }
  if (options.list && options.format != Format::Page && options.format != Format::Json)
    throw UsageError(messages::kNoEffect(nameOf(options.format), L"--list", nameOf(Format::Json)));
}

}  // namespace tintline
