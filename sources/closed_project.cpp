// See closed_project.h. Tested by tests/unit/sources/closed_project_test.cpp and
// tests/app/office_files_test.cpp.
#include "sources/closed_project.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "sources/editor_procedures.h"
#include "sources/office_file/module_file.h"
#include "sources/office_file/module_text.h"
#include "sources/office_project.h"

namespace tintline {
namespace {

using Arguments = std::span<OfficeValue>;

OfficeError failure(long number, std::wstring description) {
  constexpr std::uint32_t kOfHosts = 0x800A0000;  // as hosts number what their members say
  return {OfficeError::Kind::Failed, number, std::move(description),
          kOfHosts + static_cast<std::uint32_t>(number)};
}
OfficeError outOfRange() { return failure(9, L"Index außerhalb des gültigen Bereichs"); }

std::int32_t number(const OfficeValue& value) {
  if (const auto* out = std::get_if<OfficeOut>(&value)) return out->value;
  if (const auto* plain = std::get_if<std::int32_t>(&value)) return *plain;
  throw wrongType();
}
const std::wstring& text(const OfficeValue& value) {
  if (const auto* known = std::get_if<std::wstring>(&value)) return *known;
  throw wrongType();
}

// An object with these members, all of which are only read.
class ReadObject final : public OfficeObject {
 public:
  using Members = std::map<std::wstring_view, std::function<OfficeValue(Arguments)>>;

  explicit ReadObject(Members members) : members_(std::move(members)) {}

  OfficeValue get(std::wstring_view member, Arguments arguments) override {
    const auto known = members_.find(member);
    if (known == members_.end()) throw unknown();
    return known->second(arguments);
  }
  void put(std::wstring_view, OfficeValue) override { throw unknown(); }
  OfficeValue call(std::wstring_view member, Arguments arguments) override {
    return get(member, arguments);
  }

 private:
  static OfficeError unknown() {
    return failure(438, L"Objekt unterstützt diese Eigenschaft oder Methode nicht");
  }

  Members members_;
};

OfficeObjectPtr object(ReadObject::Members members) {
  return std::make_shared<ReadObject>(std::move(members));
}

auto constant(OfficeValue value) {
  return [value = std::move(value)](Arguments) { return value; };
}

// ---------------------------------------------------------------------------------- code
// The lines of a module, and its procedures once they were asked for.
class Code {
 public:
  Code(const office_file::Module& module, vb::CodePage page)
      : text_(vb::decode(office_file::editorText(module.source), page).text) {
    for (std::size_t at = 0; (at = text_.find(u8'\n', at)) != text_.npos;) ends_.push_back(++at);
  }

  std::int32_t lines() const { return static_cast<std::int32_t>(ends_.size()); }

  const EditorProcedures& layout() {
    if (!layout_) layout_ = editorProcedures(text_, lines());
    return *layout_;
  }

  // Without the line end behind the last one.
  std::wstring stretch(std::int32_t start, std::int32_t count) const {
    if (start < 1 || count < 1 || count > lines() || start - 1 > lines() - count)
      throw outOfRange();
    const auto first = static_cast<std::size_t>(start) - 1;
    const std::size_t begin = first == 0 ? 0 : ends_[first - 1];
    const std::size_t end = ends_[first + static_cast<std::size_t>(count) - 1];
    constexpr std::size_t kLineEnd = 2;
    return fromUtf8(std::u8string_view(text_).substr(begin, end - begin - kLineEnd));
  }

  OfficeValue procedureOfLine(Arguments arguments) {
    const std::int32_t line = number(arguments[0]);
    const auto& all = layout().procedures;
    const auto behind = std::ranges::upper_bound(all, line, {}, &EditorProcedure::start);
    if (behind == all.begin()) return std::wstring();
    std::get<OfficeOut>(arguments[1]).value = static_cast<std::int32_t>(std::prev(behind)->kind);
    return std::prev(behind)->name;
  }

  // The first of that name and kind, as in an application.
  const EditorProcedure& procedure(Arguments arguments) {
    if (byName_.empty())
      for (const EditorProcedure& known : layout().procedures)
        byName_.try_emplace({static_cast<std::int32_t>(known.kind), known.name}, &known);
    const auto found = byName_.find({number(arguments[1]), text(arguments[0])});
    if (found == byName_.end()) throw failure(35, L"Sub, Function oder Property nicht definiert");
    return *found->second;
  }

 private:
  std::u8string text_;
  std::vector<std::size_t> ends_;  // behind each line
  std::optional<EditorProcedures> layout_;
  std::map<std::pair<std::int32_t, std::wstring>, const EditorProcedure*> byName_;
};

OfficeObjectPtr codeModule(const office_file::Module& module, vb::CodePage page) {
  const auto code = std::make_shared<Code>(module, page);
  const auto asked = [code](auto member) {
    return [code, member](Arguments a) { return OfficeValue(code->procedure(a).*member); };
  };
  return object(
      {{L"CountOfLines", constant(code->lines())},
       {L"CountOfDeclarationLines",
        [code](Arguments) { return OfficeValue(code->layout().declarationLines); }},
       {L"Lines",
        [code](Arguments a) { return OfficeValue(code->stretch(number(a[0]), number(a[1]))); }},
       {L"ProcOfLine", [code](Arguments a) { return code->procedureOfLine(a); }},
       {L"ProcStartLine", asked(&EditorProcedure::start)},
       {L"ProcCountLines", asked(&EditorProcedure::lines)}});
}

// ---------------------------------------------------------------------------- components
ComponentType typeOf(vb::ModuleKind kind) {
  switch (kind) {
    case vb::ModuleKind::Class:
      return kClassModule;
    case vb::ModuleKind::Form:
      return kFormModule;
    case vb::ModuleKind::Document:
      return kDocumentModule;
    default:
      return kStandardModule;
  }
}

void write(const std::filesystem::path& target, std::string_view bytes) {
  AtomicFile file(target);
  file.stream() << bytes;
  file.commit();
}

// With the .frx of a form beside it.
void exportModule(const office_file::Module& module, std::filesystem::path target) {
  try {
    write(target, office_file::moduleFile(module));
    if (const auto resource = office_file::formResource(module))
      write(target.replace_extension(".frx"), *resource);
  } catch (const FileError& error) {
    throw failure(75, reasonText(error.reason()).german);
  }
}

class ClosedProject : public std::enable_shared_from_this<ClosedProject> {
 public:
  // A name counts for the first component that has it.
  explicit ClosedProject(office_file::Project project) : project_(std::move(project)) {
    for (std::size_t i = 0; i < project_.modules.size(); ++i)
      byName_.try_emplace(fromUtf8(project_.modules[i].name), i);
  }

  OfficeObjectPtr components() {
    const auto self = shared_from_this();
    return object({{L"Count", constant(static_cast<std::int32_t>(project_.modules.size()))},
                   {L"Item", [self](Arguments a) { return self->component(self->index(a[0])); }}});
  }

 private:
  std::size_t index(const OfficeValue& wanted) const {
    if (const auto* name = std::get_if<std::wstring>(&wanted)) {
      const auto found = byName_.find(*name);
      if (found == byName_.end()) throw outOfRange();
      return found->second;
    }
    const std::int32_t index = number(wanted);
    if (index < 1 || static_cast<std::size_t>(index) > project_.modules.size()) throw outOfRange();
    return static_cast<std::size_t>(index) - 1;
  }

  OfficeObjectPtr component(std::size_t index) {
    const auto self = shared_from_this();
    const office_file::Module& module = project_.modules[index];
    return object({{L"Name", constant(fromUtf8(module.name))},
                   {L"Type", constant(std::int32_t{typeOf(module.kind)})},
                   {L"CodeModule",
                    [self, &module](Arguments) {
                      return OfficeValue(codeModule(module, self->project_.codePage));
                    }},
                   {L"Export", [self, &module](Arguments a) {
                      exportModule(module, pathFromText(text(a[0])));
                      return OfficeValue();
                    }}});
  }

  const office_file::Project project_;
  std::map<std::wstring, std::size_t> byName_;
};

}  // namespace

OfficeObjectPtr closedProject(office_file::Project project, const std::wstring& title) {
  const std::wstring name = fromUtf8(project.name);
  const auto shared = std::make_shared<ClosedProject>(std::move(project));
  return object(
      {{L"Protection", constant(std::int32_t{0})},
       {L"Name", constant(name)},
       {L"BuildFileName", constant(title + L".DLL")},  // as a path of an application ends
       {L"VBComponents", [shared](Arguments) { return OfficeValue(shared->components()); }}});
}

}  // namespace tintline
