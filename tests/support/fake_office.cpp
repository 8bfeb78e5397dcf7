// See fake_office.h.
#include "tests/support/fake_office.h"

#include <fstream>

#include "base/codepage.h"
#include "base/file.h"
#include "base/text.h"

namespace tintline::test {
namespace {

using Arguments = std::span<OfficeValue>;
using Members = std::map<std::wstring, std::function<OfficeValue(Arguments)>, std::less<>>;
using Put = std::function<void(std::wstring_view, const OfficeValue&)>;

class FakeObject final : public OfficeObject {
 public:
  FakeObject(FakeHost& host, std::wstring name, Members members, Put put)
      : host_(host), name_(std::move(name)), members_(std::move(members)), put_(std::move(put)) {
    ++host_.living;
  }
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;
  ~FakeObject() override { --host_.living; }

  OfficeValue get(std::wstring_view member, Arguments arguments) override {
    host_.enter(name_, std::wstring(member));
    const auto known = members_.find(member);
    if (known == members_.end()) throw FakeHost::failure(438, L"Objekt unterstützt das nicht");
    return known->second(arguments);
  }
  void put(std::wstring_view member, OfficeValue value) override {
    host_.enter(name_, std::wstring(member));
    put_(member, value);
  }
  OfficeValue call(std::wstring_view member, Arguments arguments) override {
    return get(member, arguments);
  }

 private:
  FakeHost& host_;
  std::wstring name_;
  Members members_;
  Put put_;  // takes the properties that may be set
};

OfficeObjectPtr make(FakeHost& host, const std::wstring& name, Members members, Put put = {}) {
  return std::make_shared<FakeObject>(host, name, std::move(members), std::move(put));
}

auto constant(OfficeValue value) {
  return [value = std::move(value)](Arguments) { return value; };
}

const std::wstring& text(const OfficeValue& value) { return std::get<std::wstring>(value); }

std::int32_t number(const OfficeValue& value) {
  if (const auto* out = std::get_if<OfficeOut>(&value)) return out->value;
  return std::get<std::int32_t>(value);
}

OfficeError outOfRange() { return FakeHost::failure(9, L"Index außerhalb des gültigen Bereichs"); }

// A collection whose items `makeItem` makes, found by number or by name.
template <class Item, class MakeItem>
OfficeObjectPtr makeList(FakeHost& host, const std::wstring& name, const std::vector<Item>& items,
                         const MakeItem& makeItem) {
  const auto item = [&host, &items, makeItem](Arguments arguments) -> OfficeValue {
    for (std::size_t i = 0; i < items.size(); ++i) {
      const auto* wanted = std::get_if<std::wstring>(arguments.data());
      if (wanted != nullptr ? items[i].name == *wanted
                            : number(arguments[0]) == static_cast<std::int32_t>(i) + 1)
        return makeItem(host, items[i]);
    }
    throw outOfRange();
  };
  const auto count = static_cast<std::int32_t>(items.size());
  return make(host, name, {{L"Count", constant(count)}, {L"Item", item}});
}

// ------------------------------------------------------------------------------ code
struct Procedure {
  std::wstring name;
  std::int32_t kind, start, lines;
};

struct Code {
  std::vector<std::wstring> lines;
  std::int32_t declarations = 0;
  std::vector<Procedure> procedures;

  const Procedure& procedure(Arguments arguments) const {
    for (const Procedure& known : procedures)
      if (known.name == text(arguments[0]) && known.kind == number(arguments[1])) return known;
    throw FakeHost::failure(35, L"Sub oder Function nicht definiert");
  }
};

// As the editor counts: comments and empty lines belong to the procedure behind them, those at
// the end to the last procedure.
Code parse(const std::string& source) {
  static const std::pair<std::wstring_view, std::int32_t> kKinds[] = {{L"Sub ", 0},
                                                                      {L"Function ", 0},
                                                                      {L"Property Let ", 1},
                                                                      {L"Property Set ", 2},
                                                                      {L"Property Get ", 3}};
  Code code;
  const std::string plain = Replace(source, "\r", "");
  for (const std::string_view line : Split(plain, '\n')) code.lines.push_back(fromAnsi(line));
  const auto count = static_cast<std::int32_t>(code.lines.size());
  std::int32_t taken = 0;  // the lines up to here belong to declarations or procedures
  const auto end = [&](std::int32_t last) {
    if (code.procedures.empty())
      code.declarations = last;
    else
      code.procedures.back().lines = last + 1 - code.procedures.back().start;
  };
  for (std::int32_t i = 0; i < count; ++i) {
    const std::wstring& line = code.lines[i];
    std::wstring_view head = line;
    for (const std::wstring_view scope : {L"Public ", L"Private ", L"Static "})
      if (head.starts_with(scope)) head.remove_prefix(scope.size());
    for (const auto& [word, kind] : kKinds) {
      if (!head.starts_with(word)) continue;
      end(taken);
      const std::wstring_view name = head.substr(word.size(), head.find(L'(') - word.size());
      code.procedures.push_back({std::wstring(name), kind, taken + 1, 0});
    }
    const bool comment = line.empty() || line.starts_with(L'\'');
    if (code.procedures.empty() ? !comment : line.starts_with(L"End ")) taken = i + 1;
  }
  end(count);
  return code;
}

OfficeValue procedureOfLine(const Code& code, Arguments arguments) {
  const std::int32_t line = number(arguments[0]);
  for (const Procedure& known : code.procedures) {
    if (line < known.start || line >= known.start + known.lines) continue;
    std::get<OfficeOut>(arguments[1]).value = known.kind;
    return known.name;
  }
  return std::wstring();
}

OfficeValue stretch(const Code& code, Arguments arguments) {
  const std::int32_t start = number(arguments[0]), lines = number(arguments[1]);
  if (start < 1 || start + lines - 1 > static_cast<std::int32_t>(code.lines.size()))
    throw outOfRange();
  std::wstring result;
  for (std::int32_t i = start; i < start + lines; ++i)
    result.append(i > start ? L"\r\n" : L"").append(code.lines[i - 1]);
  return result;
}

OfficeObjectPtr makeCodeModule(FakeHost& host, const FakeComponent& component) {
  const auto code = std::make_shared<const Code>(parse(component.code));
  const auto asked = [code](auto member) {
    return [code, member](Arguments a) { return OfficeValue(code->procedure(a).*member); };
  };
  return make(host, component.name,
              {{L"CountOfLines", constant(static_cast<std::int32_t>(code->lines.size()))},
               {L"CountOfDeclarationLines", constant(code->declarations)},
               {L"Lines", [code](Arguments arguments) { return stretch(*code, arguments); }},
               {L"ProcOfLine", [code](Arguments a) { return procedureOfLine(*code, a); }},
               {L"ProcStartLine", asked(&Procedure::start)},
               {L"ProcCountLines", asked(&Procedure::lines)}});
}

// ------------------------------------------------------------------------- projects
OfficeObjectPtr makeComponent(FakeHost& host, const FakeComponent& component) {
  const auto exportCode = [component](Arguments arguments) {
    std::ofstream(pathFromText(text(arguments[0])), std::ios::binary) << component.code << "\r\n";
    return OfficeValue();
  };
  const auto code = [&host, component](Arguments) { return makeCodeModule(host, component); };
  return make(host, component.name,
              {{L"Name", constant(component.name)},
               {L"Type", constant(component.type)},
               {L"CodeModule", code},
               {L"Export", exportCode}});
}

OfficeObjectPtr makeProject(FakeHost& host, const FakeProject& project) {
  const auto file = [project](Arguments) -> OfficeValue {
    if (project.file.empty()) throw FakeHost::failure(76, L"Pfad nicht gefunden");
    return project.file;
  };
  const auto components = [&](Arguments) -> OfficeValue {
    if (project.protection != 0) throw FakeHost::failure(50289, L"Das Projekt ist geschützt.");
    return makeList(host, L"VBComponents", project.components, makeComponent);
  };
  return make(host, project.name,
              {{L"Name", constant(project.name)},
               {L"Protection", constant(project.protection)},
               {L"BuildFileName", file},
               {L"VBComponents", components}});
}

OfficeObjectPtr makeEditor(FakeHost& host) {
  if (host.refusesAccess)
    throw OfficeError(OfficeError::Kind::AccessRefused, 6068, L"Zugriff nicht vertrauenswürdig",
                      0x800A17B4);
  const auto projects = [&host](Arguments) {
    return makeList(host, L"VBProjects", host.projects, makeProject);
  };
  return make(host, L"VBE", {{L"VBProjects", projects}});
}

// ------------------------------------------------------------------------ documents

// An object of a document that keeps what is put, under its path.
OfficeObjectPtr makePart(FakeHost& host, FakeDocument& document, const std::wstring& path,
                         Members members = {}) {
  const auto put = [&document, path](std::wstring_view member, const OfficeValue& value) {
    const auto* flag = std::get_if<bool>(&value);
    const auto* font = std::get_if<std::wstring>(&value);
    document.properties[path + std::wstring(member)] = flag   ? *flag ? L"True" : L"False"
                                                       : font ? *font
                                                              : std::to_wstring(number(value));
  };
  return make(host, L"Document", std::move(members), put);
}

OfficeObjectPtr addDocument(FakeHost& host) {
  FakeDocument& document = *host.documents.emplace_back(std::make_unique<FakeDocument>());
  const auto part = [&](const wchar_t* path) {
    return [&, path](Arguments) { return makePart(host, document, path); };
  };
  const auto insert = [&](Arguments arguments) {
    document.insertedPath = text(arguments[0]);
    document.inserted = readFile(pathFromText(document.insertedPath));
    return OfficeValue();
  };
  const auto content = [&host, &document, insert, font = part(L"Content.Font.")](Arguments) {
    return makePart(host, document, L"Content.", {{L"InsertFile", insert}, {L"Font", font}});
  };
  const auto close = [&](Arguments arguments) {
    document.closed = number(arguments[0]) == 0;  // else it saves or asks
    return OfficeValue();
  };
  return makePart(host, document, L"",
                  {{L"Content", content}, {L"PageSetup", part(L"PageSetup.")}, {L"Close", close}});
}

OfficeObjectPtr makeApplication(FakeHost& host) {
  const auto documents = [&host](Arguments) {
    return make(host, L"Documents", {{L"Add", [&host](Arguments) { return addDocument(host); }}});
  };
  const auto quit = [&host](Arguments) {
    ++host.quits;
    host.running = false;
    return OfficeValue();
  };
  return make(host, L"Application",
              {{L"Visible", [&host](Arguments) { return OfficeValue(host.visible); }},
               {L"VBE", [&host](Arguments) { return makeEditor(host); }},
               {L"Documents", documents},
               {L"Quit", quit}},
              [&host](std::wstring_view, const OfficeValue& value) {
                host.visible = std::get<bool>(value);
              });
}

}  // namespace

OfficeApplication FakeHost::connect() {
  if (!installed)
    throw OfficeError(OfficeError::Kind::NotInstalled, 429, L"Objekterstellung nicht möglich",
                      0x80040154);
  const bool created = !running;
  starts += created;
  if (created) visible = false;
  running = true;
  return {.object = makeApplication(*this), .created = created};
}

void FakeHost::enter(const std::wstring& object, const std::wstring& member) {
  ++calls;
  ++callsOf[member];
  if (onCall) onCall(member);
  if (calls == diesAt) running = false;
  if (!running)
    throw OfficeError(OfficeError::Kind::ConnectionLost, 462,
                      L"Der Remote-Server-Computer existiert nicht", 0x800706BA);
  for (const std::wstring& name : {object + L"." + member, member})
    if (const auto failing = fails.find(name); failing != fails.end()) throw failing->second;
}

}  // namespace tintline::test
