// The members that the automation server of the tests knows, object by object.
// See host_objects.h. Tested by tests/win32/office/office_test.cpp.
#include <cwctype>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/codepage.h"
#include "tests/win32/office/host_objects.h"

namespace tintline::test {
namespace {

using enum MemberKind;
using Object = ComPtr<IDispatch>;

Object make(Host& host, const std::wstring& path, const std::wstring& name,
            std::vector<Member> members) {
  return Object::adopt(new HostObject(host, path, name, std::move(members)));
}

Member stored(std::wstring_view name, long value = 0) {
  return {name, Stored, 0, 0, [value](const Call& call) { call.set(value); }};
}

Member value(std::wstring_view name, const auto& what) {
  return {name, Property, 0, 0, [&what](const Call& call) { call.set(what); }};
}

const HostError kIndexError{9, L"Index außerhalb des gültigen Bereichs"};

bool equalNames(const std::wstring& a, const std::wstring& b) {
  return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, a.data(), static_cast<int>(a.size()),
                        b.data(), static_cast<int>(b.size())) == CSTR_EQUAL;
}

// The element that an index from 1 or a name chooses.
const auto& choose(const auto& elements, const Call& call) {
  if (call.arguments[0]->vt == VT_BSTR) {
    const std::wstring name = call.text(0);
    for (const auto& element : elements)
      if (equalNames(element.name, name)) return element;
  } else if (const long index = call.number(0);
             index >= 1 && index <= static_cast<long>(elements.size())) {
    return elements[static_cast<std::size_t>(index - 1)];
  }
  throw kIndexError;
}

// -------------------------------------------------------------------------------- projects
void giveLines(const Component& component, const Call& call) {
  const long start = call.number(0), count = call.number(1);
  if (start < 1 || count < 0 || start + count - 1 > static_cast<long>(component.lines.size()))
    throw kIndexError;
  std::wstring text;
  for (long i = start; i < start + count; ++i)
    text += (i > start ? L"\r\n" : L"") + component.lines[static_cast<std::size_t>(i - 1)];
  call.set(std::wstring_view(text));
}

void giveProcedureOfLine(const Component& component, const Call& call) {
  const VARIANT& kind = *call.arguments[1];
  if (kind.vt != (VT_BYREF | VT_I4)) throw HostError{13, L"Typen unverträglich"};
  const long line = call.number(0);
  if (line < 1 || line > static_cast<long>(component.lines.size())) throw kIndexError;
  *kind.plVal = 0;
  std::wstring_view name;
  for (const Procedure& procedure : component.procedures) {
    if (line < procedure.start || line >= procedure.start + procedure.count) continue;
    name = procedure.name;
    *kind.plVal = procedure.kind;
  }
  call.set(name);
}

const Procedure& findProcedure(const Component& component, const Call& call) {
  const std::wstring name = call.text(0);
  const long kind = call.number(1);
  for (const Procedure& procedure : component.procedures)
    if (equalNames(procedure.name, name) && procedure.kind == kind) return procedure;
  throw HostError{35, L"Sub oder Function nicht definiert"};
}

Object makeCodeModule(Host& host, const Component& component) {
  return make(host, component.name + L".CodeModule", component.name,
              {{L"CountOfLines", Property, 0, 0,
                [&](const Call& call) { call.set(static_cast<long>(component.lines.size())); }},
               value(L"CountOfDeclarationLines", component.declarationLines),
               {L"Lines", Property, 2, 2, [&](const Call& call) { giveLines(component, call); }},
               {L"ProcOfLine", Property, 2, 2,
                [&](const Call& call) { giveProcedureOfLine(component, call); }},
               {L"ProcStartLine", Property, 2, 2,
                [&](const Call& call) { call.set(findProcedure(component, call).start); }},
               {L"ProcCountLines", Property, 2, 2,
                [&](const Call& call) { call.set(findProcedure(component, call).count); }}});
}

void exportCode(const Component& component, const Call& call) {
  std::ofstream file(std::filesystem::path(call.text(0)), std::ios::binary);
  for (const std::wstring& line : component.lines) file << toAnsi(line) << "\r\n";
  file.close();
  if (!file) throw HostError{76, L"Pfad nicht gefunden"};
}

Object makeComponent(Host& host, const Component& component) {
  return make(host, component.name, component.name,
              {value(L"Name", component.name),
               value(L"Type", component.type),
               {L"CodeModule", Property, 0, 0,
                [&](const Call& call) { call.set(makeCodeModule(host, component)); }},
               {L"Export", Method, 1, 1, [&](const Call& call) { exportCode(component, call); }}});
}

Object makeComponents(Host& host, const Project& project) {
  return make(host, project.name + L".VBComponents", project.name,
              {{L"Count", Property, 0, 0,
                [&](const Call& call) { call.set(static_cast<long>(project.components.size())); }},
               {L"Item", Method, 1, 1, [&](const Call& call) {
                  call.set(makeComponent(host, choose(project.components, call)));
                }}});
}

Object makeProject(Host& host, const Project& project) {
  return make(host, project.name, project.name,
              {value(L"Name", project.name),
               value(L"BuildFileName", project.file),
               value(L"Protection", project.protection),
               {L"VBComponents", Property, 0, 0, [&](const Call& call) {
                  if (project.protection != 0)
                    throw HostError{50289,
                                    L"Der Vorgang kann nicht ausgeführt werden, da das "
                                    L"Projekt geschützt ist."};
                  call.set(makeComponents(host, project));
                }}});
}

Object makeProjects(Host& host) {
  const auto& projects = host.folder.projects();
  return make(host, L"VBProjects", L"VBProjects",
              {{L"Count", Property, 0, 0,
                [&](const Call& call) { call.set(static_cast<long>(projects.size())); }},
               {L"Item", Method, 1, 1,
                [&](const Call& call) { call.set(makeProject(host, choose(projects, call))); }}});
}

// The editor, unless access to it is refused: each host has a number of its own for that.
Object makeEditor(Host& host) {
  if (host.folder.refuses())
    throw HostError{static_cast<std::uint16_t>(host.programId == L"Word.Application" ? 6068 : 1004),
                    L"Der programmatische Zugriff auf das Visual Basic-Projekt ist nicht sicher\n"};
  return make(
      host, L"VBE", L"VBE",
      {{L"VBProjects", Property, 0, 0, [&](const Call& call) { call.set(makeProjects(host)); }}});
}

// ------------------------------------------------------------------------------- documents
Member object(std::wstring_view name, std::function<Object()> maker) {
  return {name, Property, 0, 0, [maker](const Call& call) { call.set(maker()); }};
}

// Keeps what is inserted: its file may be gone when somebody looks.
void insertFile(const Host& host, const Call& call) {
  const std::filesystem::path from(call.text(0));
  const auto copy = host.folder.path() / (L"inserted" + from.extension().wstring());
  std::error_code failure;
  std::filesystem::remove(copy, failure);  // copy_file itself overwrites nothing here
  copy_file(from, copy, failure);
  if (failure) throw HostError{5174, L"Diese Datei wurde nicht gefunden."};
}

Object makeFont(Host& host, const std::wstring& path) {
  return make(host, path, path, {stored(L"Name"), stored(L"Size", 11)});
}

Object makeRange(Host& host, const std::wstring& path) {
  return make(host, path, path,
              {{L"InsertFile", Method, 1, 5, [&](const Call& call) { insertFile(host, call); }},
               object(L"Font", [&host, path] { return makeFont(host, path + L".Font"); }),
               stored(L"NoProofing")});
}

Object makePageSetup(Host& host, const std::wstring& path) {
  return make(host, path, path,
              {stored(L"LeftMargin", 71), stored(L"RightMargin", 71), stored(L"TopMargin", 71),
               stored(L"BottomMargin", 57), stored(L"Orientation"), stored(L"PageWidth", 595),
               stored(L"PageHeight", 842)});
}

Object makeWindow(Host& host, const std::wstring& path) {
  const std::wstring view = path + L".View";
  return make(
      host, path, path,
      {object(L"View", [&host, view] { return make(host, view, view, {stored(L"Type")}); })});
}

Object makeDocument(Host& host, const std::wstring& path) {
  return make(
      host, path, path,
      {object(L"Content", [&host, path] { return makeRange(host, path + L".Content"); }),
       {L"Range", Method, 0, 2,
        [&host, path](const Call& call) { call.set(makeRange(host, path + L".Range")); }},
       object(L"PageSetup", [&host, path] { return makePageSetup(host, path + L".PageSetup"); }),
       object(L"ActiveWindow", [&host, path] { return makeWindow(host, path + L".ActiveWindow"); }),
       {L"Activate", Method, 0, 0, [](const Call&) {}},
       {L"Close", Method, 0, 3, [](const Call&) {}},
       stored(L"ShowSpellingErrors", -1),
       stored(L"ShowGrammaticalErrors", -1),
       stored(L"Saved")});
}

Object makeDocuments(Host& host) {
  const auto add = [&](const Call& call) {
    call.set(makeDocument(host, L"Document" + std::to_wstring(++host.documents)));
  };
  return make(host, L"Documents", L"Documents",
              {{L"Count", Property, 0, 0, [&](const Call& call) { call.set(host.documents); }},
               {L"Add", Method, 0, 4, add}});
}

// ----------------------------------------------------------------------------- application
std::vector<Member> applicationMembers(Host& host) {
  std::vector<Member> members = {
      {L"Visible", Stored, 0, 0, [&](const Call& call) { call.set(host.visible); }},
      {L"Quit", Method, 0, 3, [](const Call&) { PostQuitMessage(0); }},
      object(L"VBE", [&] { return makeEditor(host); })};
  if (host.programId != L"Word.Application") return members;
  members.push_back(object(L"Documents", [&] { return makeDocuments(host); }));
  members.push_back(object(L"ActiveWindow", [&] { return makeWindow(host, L"ActiveWindow"); }));
  members.push_back(object(L"Options", [&] {
    return make(host, L"Options", L"Options",
                {stored(L"CheckSpellingAsYouType", -1), stored(L"CheckGrammarAsYouType", -1)});
  }));
  members.push_back({L"Activate", Method, 0, 0, [](const Call&) {}});
  return members;
}

// The application is told when the first of the others takes hold of it and when the last one
// lets go: what COM itself holds does not count.
class Application final : public HostObject, public IExternalConnection {
 public:
  explicit Application(Host& host)
      : HostObject(host, L"Application", L"Application", applicationMembers(host)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (id != IID_IExternalConnection) return HostObject::QueryInterface(id, object);
    *object = static_cast<IExternalConnection*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return HostObject::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return HostObject::Release(); }

  DWORD STDMETHODCALLTYPE AddConnection(DWORD kind, DWORD) override {
    if ((kind & EXTCONN_STRONG) != 0) ++connections_;
    host().connected = connections_ > 0;
    return connections_;
  }
  DWORD STDMETHODCALLTYPE ReleaseConnection(DWORD kind, DWORD, BOOL) override {
    if ((kind & EXTCONN_STRONG) != 0) --connections_;
    host().connected = connections_ > 0;
    return connections_;
  }

 private:
  DWORD connections_ = 0;
};

}  // namespace

ComPtr<IDispatch> makeApplication(Host& host) {
  return ComPtr<IDispatch>::adopt(static_cast<HostObject*>(new Application(host)));
}

}  // namespace tintline::test
