// See fake_office.h.
#include "tests/support/fake_office.h"

#include <utility>

#include "base/codepage.h"
#include "base/file.h"

namespace tintline::test {
namespace {

using Arguments = std::span<OfficeValue>;
using Member = std::function<OfficeValue(Arguments)>;
using Members = std::map<std::wstring, Member, std::less<>>;

OfficeError lost() {
  return {OfficeError::Kind::ConnectionLost, 462, L"Der Remote-Server-Computer existiert nicht",
          0x800706BA};
}

class FakeObject final : public OfficeObject {
 public:
  // `put` takes the properties that may be set.
  FakeObject(FakeHost& host, std::wstring name, Members members,
             std::function<void(std::wstring_view, const OfficeValue&)> put = {})
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
    if (!put_) throw FakeHost::failure(438, L"Objekt unterstützt das nicht");
    put_(member, value);
  }

  OfficeValue call(std::wstring_view member, Arguments arguments) override {
    return get(member, arguments);
  }

 private:
  FakeHost& host_;
  std::wstring name_;
  Members members_;
  std::function<void(std::wstring_view, const OfficeValue&)> put_;
};

Member constant(OfficeValue value) {
  return [value = std::move(value)](Arguments) { return value; };
}

Member count(std::size_t number) { return constant(static_cast<std::int32_t>(number)); }

std::int32_t number(Arguments arguments, std::size_t index) {
  if (const auto* out = std::get_if<OfficeOut>(&arguments[index])) return out->value;
  return std::get<std::int32_t>(arguments[index]);
}

// ------------------------------------------------------------------------------ code
struct Procedure {
  std::wstring name;
  std::int32_t kind;
  std::int32_t start, lines;
};

struct Code {
  std::vector<std::wstring> lines;
  std::int32_t declarations = 0;
  std::vector<Procedure> procedures;
};

bool isComment(const std::wstring& line) {
  const std::size_t first = line.find_first_not_of(L' ');
  return first == std::wstring::npos || line[first] == L'\'';
}

// The procedure that the line is the head of, without its place.
std::optional<Procedure> headIn(const std::wstring& line) {
  std::wstring_view rest = line;
  const auto take = [&rest](std::wstring_view word) {
    if (!rest.starts_with(word)) return false;
    rest.remove_prefix(word.size());
    return true;
  };
  while (take(L"Private ") || take(L"Public ") || take(L"Friend ") || take(L"Static ")) {
  }
  const std::pair<std::wstring_view, std::int32_t> kinds[] = {{L"Sub ", 0},
                                                              {L"Function ", 0},
                                                              {L"Property Let ", 1},
                                                              {L"Property Set ", 2},
                                                              {L"Property Get ", 3}};
  for (const auto& [word, kind] : kinds)
    if (take(word)) return Procedure{std::wstring(rest.substr(0, rest.find(L'('))), kind, 0, 0};
  return {};
}

bool isEnd(const std::wstring& line) {
  return line.starts_with(L"End Sub") || line.starts_with(L"End Function") ||
         line.starts_with(L"End Property");
}

std::vector<std::wstring> linesOf(const std::string& code) {
  std::vector<std::wstring> lines;
  const std::wstring text = fromAnsi(code);
  for (std::wstring_view rest = text; !text.empty();) {
    const std::size_t end = rest.find(L"\r\n");
    lines.emplace_back(rest.substr(0, end));
    if (end == std::wstring_view::npos) break;
    rest.remove_prefix(end + 2);
  }
  return lines;
}

// As the editor counts: comments and empty lines belong to the procedure behind them, those at
// the end to the last procedure.
Code parse(const std::string& text) {
  Code code{.lines = linesOf(text), .declarations = 0, .procedures = {}};
  std::int32_t taken = 0;  // the lines up to here belong to declarations or procedures
  bool inside = false;
  for (std::size_t i = 0; i < code.lines.size(); ++i) {
    const std::wstring& line = code.lines[i];
    if (auto head = inside ? std::nullopt : headIn(line)) {
      head->start = taken + 1;
      code.procedures.push_back(*head);
      inside = true;
    }
    if (inside || (code.procedures.empty() && !isComment(line)))
      taken = static_cast<std::int32_t>(i) + 1;
    inside = inside && !isEnd(line);
  }
  auto behind = static_cast<std::int32_t>(code.lines.size()) + 1;
  for (std::size_t i = code.procedures.size(); i-- > 0;) {
    code.procedures[i].lines = behind - code.procedures[i].start;
    behind = code.procedures[i].start;
  }
  code.declarations = behind - 1;
  return code;
}

const Procedure& procedure(const Code& code, Arguments arguments) {
  for (const Procedure& known : code.procedures)
    if (known.name == std::get<std::wstring>(arguments[0]) && known.kind == number(arguments, 1))
      return known;
  throw FakeHost::failure(35, L"Sub oder Function nicht definiert");
}

OfficeValue procedureOfLine(const Code& code, Arguments arguments) {
  const std::int32_t line = number(arguments, 0);
  for (const Procedure& known : code.procedures) {
    if (line < known.start || line >= known.start + known.lines) continue;
    std::get<OfficeOut>(arguments[1]).value = known.kind;
    return known.name;
  }
  return std::wstring();
}

OfficeValue stretch(const Code& code, Arguments arguments) {
  const std::int32_t start = number(arguments, 0), lines = number(arguments, 1);
  if (start < 1 || start + lines - 1 > static_cast<std::int32_t>(code.lines.size()))
    throw FakeHost::failure(9, L"Index außerhalb des gültigen Bereichs");
  std::wstring text;
  for (std::int32_t i = start; i < start + lines; ++i)
    text.append(i > start ? L"\r\n" : L"").append(code.lines[i - 1]);
  return text;
}

OfficeObjectPtr makeCodeModule(FakeHost& host, const FakeComponent& component) {
  const auto code = std::make_shared<const Code>(parse(component.code));
  return std::make_shared<FakeObject>(
      host, component.name,
      Members{
          {L"CountOfLines", count(code->lines.size())},
          {L"CountOfDeclarationLines", constant(code->declarations)},
          {L"Lines", [code](Arguments arguments) { return stretch(*code, arguments); }},
          {L"ProcOfLine",
           [code](Arguments arguments) { return procedureOfLine(*code, arguments); }},
          {L"ProcStartLine",
           [code](Arguments arguments) { return OfficeValue(procedure(*code, arguments).start); }},
          {L"ProcCountLines",
           [code](Arguments arguments) { return OfficeValue(procedure(*code, arguments).lines); }},
      });
}

// ------------------------------------------------------------------------- projects
OfficeObjectPtr makeComponent(FakeHost& host, const FakeComponent& component) {
  const auto exportCode = [component](Arguments arguments) {
    AtomicFile file(pathFromText(std::get<std::wstring>(arguments[0])));
    file.stream() << component.code << "\r\n";
    file.commit();
    return OfficeValue();
  };
  return std::make_shared<FakeObject>(
      host, component.name,
      Members{{L"Name", constant(component.name)},
              {L"Type", constant(component.type)},
              {L"CodeModule",
               [&host, component](Arguments) { return makeCodeModule(host, component); }},
              {L"Export", exportCode}});
}

template <class Item>
const Item& itemOf(const std::vector<Item>& items, Arguments arguments) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto* name = std::get_if<std::wstring>(arguments.data());
    const auto* index = std::get_if<std::int32_t>(arguments.data());
    if ((name != nullptr && items[i].name == *name) ||
        (index != nullptr && *index == static_cast<std::int32_t>(i) + 1))
      return items[i];
  }
  throw FakeHost::failure(9, L"Index außerhalb des gültigen Bereichs");
}

OfficeObjectPtr makeComponents(FakeHost& host, const FakeProject& project) {
  return std::make_shared<FakeObject>(host, L"VBComponents",
                                      Members{{L"Count", count(project.components.size())},
                                              {L"Item", [&](Arguments arguments) {
                                                 return makeComponent(
                                                     host, itemOf(project.components, arguments));
                                               }}});
}

OfficeObjectPtr makeProject(FakeHost& host, const FakeProject& project) {
  const auto file = [project](Arguments) -> OfficeValue {
    if (project.file.empty()) throw FakeHost::failure(76, L"Pfad nicht gefunden");
    return project.file;
  };
  const auto components = [&](Arguments) -> OfficeValue {
    if (project.protection != 0) throw FakeHost::failure(50289, L"Das Projekt ist geschützt.");
    return makeComponents(host, project);
  };
  return std::make_shared<FakeObject>(host, project.name,
                                      Members{{L"Name", constant(project.name)},
                                              {L"Protection", constant(project.protection)},
                                              {L"BuildFileName", file},
                                              {L"VBComponents", components}});
}

OfficeObjectPtr makeProjects(FakeHost& host) {
  return std::make_shared<FakeObject>(host, L"VBProjects",
                                      Members{{L"Count", count(host.projects.size())},
                                              {L"Item", [&host](Arguments arguments) {
                                                 return makeProject(
                                                     host, itemOf(host.projects, arguments));
                                               }}});
}

OfficeObjectPtr makeEditor(FakeHost& host) {
  if (host.refusesAccess)
    throw OfficeError(OfficeError::Kind::AccessRefused, 6068, L"Zugriff nicht vertrauenswürdig",
                      0x800A17B4);
  return std::make_shared<FakeObject>(
      host, L"VBE", Members{{L"VBProjects", [&host](Arguments) { return makeProjects(host); }}});
}

// ------------------------------------------------------------------------ documents
std::wstring text(const OfficeValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? L"True" : L"False";
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_wstring(*number);
  return std::get<std::wstring>(value);
}

// An object of a document that keeps what is put, under its path.
OfficeObjectPtr makePart(FakeHost& host, FakeDocument& document, const std::wstring& path,
                         Members members) {
  return std::make_shared<FakeObject>(
      host, L"Document", std::move(members),
      [&document, path](std::wstring_view member, const OfficeValue& value) {
        document.properties[path + std::wstring(member)] = text(value);
      });
}

OfficeValue insertFile(FakeDocument& document, Arguments arguments) {
  document.insertedPath = std::get<std::wstring>(arguments[0]);
  document.inserted = readFile(pathFromText(document.insertedPath));
  return {};
}

OfficeObjectPtr makeContent(FakeHost& host, FakeDocument& document) {
  return makePart(
      host, document, L"Content.",
      {{L"InsertFile", [&](Arguments arguments) { return insertFile(document, arguments); }},
       {L"Font",
        [&](Arguments) { return makePart(host, document, L"Content.Font.", Members{}); }}});
}

OfficeObjectPtr addDocument(FakeHost& host) {
  FakeDocument& document = *host.documents.emplace_back(std::make_unique<FakeDocument>());
  return makePart(host, document, L"",
                  {{L"Content", [&](Arguments) { return makeContent(host, document); }},
                   {L"PageSetup",
                    [&](Arguments) { return makePart(host, document, L"PageSetup.", Members{}); }},
                   {L"Close", [&](Arguments) {
                      document.closed = true;
                      return OfficeValue();
                    }}});
}

OfficeObjectPtr makeApplication(FakeHost& host) {
  const auto documents = [&host](Arguments) -> OfficeValue {
    return std::make_shared<FakeObject>(
        host, L"Documents", Members{{L"Add", [&host](Arguments) { return addDocument(host); }}});
  };
  const auto quit = [&host](Arguments) {
    ++host.quits;
    host.running = false;
    return OfficeValue();
  };
  return std::make_shared<FakeObject>(
      host, L"Application",
      Members{{L"Visible", [&host](Arguments) { return OfficeValue(host.visible); }},
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
  ++connections;
  if (created) visible = false;
  running = true;
  return {.object = makeApplication(*this), .created = created};
}

void FakeHost::enter(const std::wstring& object, const std::wstring& member) {
  ++calls;
  ++callsOf[member];
  if (onCall) onCall(member);
  if (calls == diesAt) running = false;
  if (!running) throw lost();
  for (const std::wstring& name : {object + L"." + member, member})
    if (const auto failing = fails.find(name); failing != fails.end()) throw failing->second;
}

}  // namespace tintline::test
