// An automation server for tests: it stands for Word or Excel, with projects, components and code
// from text files, and refuses, fails, is busy or dies on request.
//
//   tintline_office_server --register FOLDER      COM starts it under both names from now on
//   tintline_office_server --unregister
//   tintline_office_server PROGRAM FOLDER         starts it as the user does: visible
//
// PROGRAM is Word.Application or Excel.Application. It is always known as the running application,
// and lives until its member Quit or a command ends it. Its files lie in FOLDER\PROGRAM:
//
// projects.txt, in UTF-8, read at the start
//   project NAME | file PATH | protection 1     a project; what follows belongs to it
//   component TYPE FILE NAME                    FILE: its code, in the code page
//   procedure KIND START COUNT NAME             KIND: 0 Sub, 1 Let, 2 Set, 3 Get; START: from 1
// inserted.htm: a copy of what was last inserted into a document
//
// Its window, of the class PROGRAM, takes commands as its text, one a line; each text forgets the
// commands before:
//   refuse                      access to the projects is refused
//   busy COUNT CODE             the next COUNT calls are rejected with CODE (80010001)
//   fail MEMBER CODE TEXT       MEMBER (Export, or Kunde.Export) fails with CODE; an application's
//                               own one (800A…) is raised with TEXT
//   die MEMBER COUNT            the process ends within the COUNT-th call of the member
//   slow MILLISECONDS           every call takes that much longer
//   quit                        the server ends
// and tells as its text: "references N", "calls N", "names N" (questions for the numbers of names),
// "rejected N", "visible N", and a line for each property put and method called in documents.
//
// A server that died leaves no entry behind in COM's tables, but one that is ended from outside
// does: never do that. Tests use it by controlled_server.h.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "win32/com_ptr.h"
#include "win32/error.h"
#include "win32/office/variant.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

struct Program {
  const wchar_t* id;
  CLSID classId;
};
constexpr std::array kPrograms = {
    Program{L"Word.Application",
            {0xcb537f6c, 0x7278, 0x4fef, {0xbb, 0xca, 0x75, 0x84, 0xa8, 0x92, 0x3e, 0x59}}},
    Program{L"Excel.Application",
            {0xfc96aada, 0x88b6, 0x455d, {0x92, 0x6f, 0x19, 0x84, 0xdc, 0xe5, 0xd5, 0xbe}}}};

// -------------------------------------------------------------------------------- projects
struct Procedure {
  std::wstring name;
  long kind, start, count;
};

struct Component {
  std::wstring name;
  long type = 1;
  std::vector<std::wstring> lines;
  std::vector<Procedure> procedures;
};

struct Project {
  std::wstring name, file;
  long protection = 0;
  std::vector<Component> components;
};

std::vector<std::wstring> linesOf(const std::wstring& text) {
  std::wistringstream stream(text);
  std::vector<std::wstring> lines;
  for (std::wstring line; std::getline(stream, line); lines.push_back(line))
    if (line.ends_with(L'\r')) line.pop_back();
  return lines;
}

std::vector<Project> readProjects(const fs::path& folder) {
  std::vector<Project> projects;
  for (const std::wstring& line : linesOf(fromUtf8(readFile(folder / L"projects.txt")))) {
    std::wistringstream words(line);
    std::wstring what, file;
    words >> what;
    const auto rest = [&words](std::wstring& text) { std::getline(words >> std::ws, text); };
    if (what == L"project") rest(projects.emplace_back().name);
    if (what == L"file") rest(projects.back().file);
    if (what == L"protection") words >> projects.back().protection;
    if (what == L"procedure") {
      Procedure& procedure = projects.back().components.back().procedures.emplace_back();
      words >> procedure.kind >> procedure.start >> procedure.count;
      rest(procedure.name);
    } else if (what == L"component") {
      Component& component = projects.back().components.emplace_back();
      words >> component.type >> file;
      rest(component.name);
      component.lines = linesOf(fromAnsi(readFile(folder / file)));
    }
  }
  return projects;
}

// ------------------------------------------------------------------------------- behaviour
struct Failure {
  std::wstring member;
  HRESULT code;
  std::wstring text{};
};

// All that is known about the server.
struct Host {
  const Program* program;
  fs::path folder;
  std::vector<Project> projects;
  std::vector<std::wstring> names;  // of members, with their kind of object: their numbers
  std::wstring log;
  bool visible = false, connected = false;
  long objects = 0;  // alive: the application, and what others hold
  long documents = 0, calls = 0, asked = 0, rejected = 0;
  // Commands.
  bool refuse = false, quit = false;
  long busy = 0, deadlyCount = 0;
  HRESULT busyCode = 0;
  DWORD delay = 0;
  std::wstring deadly;
  std::vector<Failure> failures;
  std::function<void()> die;

  long references() const { return objects - 1 + (connected ? 1 : 0); }
} host;

void obey(const std::wstring& text) {
  host.refuse = false;
  host.busy = 0;
  host.delay = 0;
  host.deadly.clear();
  host.failures.clear();
  for (const std::wstring& line : linesOf(text)) {
    std::wistringstream words(line);
    std::wstring what, code;
    words >> what;
    const auto codeOf = [&] { return static_cast<HRESULT>(std::stoul(code, nullptr, 16)); };
    if (what == L"refuse") host.refuse = true;
    if (what == L"quit") host.quit = true;
    if (what == L"slow") words >> host.delay;
    if (what == L"die") words >> host.deadly >> host.deadlyCount;
    if (what == L"busy") words >> host.busy >> code, host.busyCode = codeOf();
    if (what == L"fail") {
      Failure& failure = host.failures.emplace_back();
      words >> failure.member >> code;
      failure.code = codeOf();
      std::getline(words >> std::ws, failure.text);
    }
  }
}

std::wstring status() {
  std::wostringstream text;
  text << L"references " << host.references() << L"\ncalls " << host.calls << L"\nnames "
       << host.asked << L"\nrejected " << host.rejected << L"\nvisible " << host.visible << L'\n'
       << host.log;
  return text.str();
}

// A call begins. Throws Failure when it is rejected or fails. `member`: "" for a question for the
// number of a name.
void begin(const std::wstring& path, const std::wstring& member) {
  if (host.delay != 0) Sleep(host.delay);
  if (host.busy > 0) {
    --host.busy;
    ++host.rejected;
    throw Failure{member, host.busyCode};
  }
  ++(member.empty() ? host.asked : host.calls);
  if (member.empty()) return;
  if (member == host.deadly && --host.deadlyCount == 0) host.die();
  for (const Failure& failure : host.failures)
    if (failure.member == member || failure.member == path + L'.' + member) throw failure;
}

// --------------------------------------------------------------------------------- objects
struct Call {
  std::vector<VARIANT*> in;  // from the first, without those left out at the end
  Variant& out;

  long number(std::size_t index) const {
    Variant number;
    if (index >= in.size()) throw Failure{{}, DISP_E_PARAMNOTOPTIONAL};
    if (FAILED(VariantChangeType(&number, in[index], 0, VT_I4)))
      throw Failure{{}, DISP_E_TYPEMISMATCH};
    return number.lVal;
  }
  std::wstring text(std::size_t index) const {
    if (index >= in.size()) throw Failure{{}, DISP_E_PARAMNOTOPTIONAL};
    if (in[index]->vt != VT_BSTR) throw Failure{{}, DISP_E_TYPEMISMATCH};
    return {in[index]->bstrVal, SysStringLen(in[index]->bstrVal)};
  }
  // Numbers have other types in the two programs.
  void give(std::integral auto value) const {
    out.vt = VT_I4;
    out.lVal = static_cast<LONG>(value);
    if (host.program == &kPrograms[1]) VariantChangeType(&out, &out, 0, VT_R8);
  }
  void give(const std::wstring& value) const { out.setText(value); }
};

std::wstring shown(VARIANT& value) {
  if (value.vt == VT_ERROR) return L"";
  if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE ? L"True" : L"False";
  Variant text;
  return SUCCEEDED(VariantChangeType(&text, &value, 0, VT_BSTR)) ? text.bstrVal : L"?";
}

// Objects of a kind have the same numbers for their members.
class HostObject final : public IDispatch, public IExternalConnection {
 public:
  // `path`: its name in commands and log.
  HostObject(const wchar_t* kind, std::wstring path, const Project* project,
             const Component* component)
      : kind_(kind), path_(std::move(path)), project_(project), component_(component) {
    ++host.objects;
  }
  virtual ~HostObject() { --host.objects; }
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch) *object = static_cast<IDispatch*>(this);
    if (id == IID_IExternalConnection && kind_ == L"Application")
      *object = static_cast<IExternalConnection*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override;

  // The application is told when the first of the others takes hold of it and when the last one
  // lets go: what COM itself holds does not count.
  DWORD STDMETHODCALLTYPE AddConnection(DWORD kind, DWORD) override {
    if ((kind & EXTCONN_STRONG) != 0) host.connected = ++connections_ > 0;
    return connections_;
  }
  DWORD STDMETHODCALLTYPE ReleaseConnection(DWORD kind, DWORD, BOOL) override {
    if ((kind & EXTCONN_STRONG) != 0) host.connected = --connections_ > 0;
    return connections_;
  }

  // For the members.
  const Project& project() const { return *project_; }
  const Component& component() const { return *component_; }
  void giveObject(const Call& call, const wchar_t* kind, const std::wstring& path,
                  const Project* project = nullptr, const Component* component = nullptr) {
    call.out.setObject(
        ComPtr<IDispatch>::adopt(new HostObject(kind, path, project, component)).get());
  }

 private:
  void put(const std::wstring& member, VARIANT& value) const;
  void getOfDocument(const std::wstring& member, const Call& call);

  std::wstring kind_, path_;
  const Project* project_;
  const Component* component_;
  ULONG references_ = 1;
  DWORD connections_ = 0;
};

// The element that an index from 1 or a name chooses.
const auto& choose(const auto& elements, const Call& call) {
  const bool byName = !call.in.empty() && call.in[0]->vt == VT_BSTR;
  for (std::size_t i = 0; i < elements.size(); ++i)
    if (byName ? elements[i].name == call.text(0) : static_cast<long>(i) + 1 == call.number(0))
      return elements[i];
  throw Failure{{}, static_cast<HRESULT>(0x800A0009), L"Index außerhalb des gültigen Bereichs"};
}

const Procedure& findProcedure(const Component& component, const Call& call) {
  for (const Procedure& procedure : component.procedures)
    if (procedure.name == call.text(0) && procedure.kind == call.number(1)) return procedure;
  throw Failure{{}, static_cast<HRESULT>(0x800A0023), L"Sub oder Function nicht definiert"};
}

void giveLines(const Component& component, const Call& call) {
  std::wstring text;
  for (long i = 0; i < call.number(1); ++i)
    text += (i > 0 ? L"\r\n" : L"") +
            component.lines.at(static_cast<std::size_t>(call.number(0) - 1 + i));
  call.give(text);
}

void giveProcedureOfLine(const Component& component, const Call& call) {
  const long line = call.number(0);
  VARIANT& kind = *call.in.at(1);
  if (kind.vt != (VT_BYREF | VT_I4)) throw Failure{{}, DISP_E_TYPEMISMATCH};
  *kind.plVal = 0;
  call.give(std::wstring());
  for (const Procedure& procedure : component.procedures)
    if (line >= procedure.start && line < procedure.start + procedure.count)
      call.give(procedure.name), *kind.plVal = static_cast<LONG>(procedure.kind);
}

void exportCode(const Component& component, const Call& call) {
  std::ofstream file(fs::path(call.text(0)), std::ios::binary);
  for (const std::wstring& line : component.lines) file << toAnsi(line) << "\r\n";
}

void giveVisible(const Call& call) {
  call.out.vt = VT_BOOL;
  call.out.boolVal = host.visible ? VARIANT_TRUE : VARIANT_FALSE;
}

// Each program has a number of its own for what it refuses.
void giveEditor(HostObject& of, const Call& call) {
  const std::uint32_t code = host.program == &kPrograms[0] ? 0x800A17B4 : 0x800A03EC;
  if (host.refuse)
    throw Failure{{}, static_cast<HRESULT>(code), L"Der Zugriff ist nicht sicher\r\n"};
  of.giveObject(call, L"VBE", L"VBE");
}

void giveComponents(HostObject& of, const Call& call) {
  if (of.project().protection != 0)
    throw Failure{{}, static_cast<HRESULT>(0x800AC471), L"Das Projekt ist geschützt."};
  of.giveObject(call, L"VBComponents", L"VBComponents", &of.project());
}

using O = HostObject&;
using C = const Call&;
const std::map<std::wstring, std::function<void(O, C)>> kMembers = {
    {L"Application.Visible", [](O, C call) { giveVisible(call); }},
    {L"Application.Quit", [](O, C) { PostQuitMessage(0); }},
    {L"Application.VBE", giveEditor},
    {L"Application.Documents", [](O o, C call) { o.giveObject(call, L"Documents", L"Documents"); }},
    {L"Documents.Add",
     [](O o, C call) {
       o.giveObject(call, L"Document", L"Document" + std::to_wstring(++host.documents));
     }},
    {L"VBE.VBProjects", [](O o, C call) { o.giveObject(call, L"VBProjects", L"VBProjects"); }},
    {L"VBProjects.Count", [](O, C call) { call.give(host.projects.size()); }},
    {L"VBProjects.Item",
     [](O o, C call) {
       const Project& project = choose(host.projects, call);
       o.giveObject(call, L"Project", project.name, &project);
     }},
    {L"Project.Name", [](O o, C call) { call.give(o.project().name); }},
    {L"Project.BuildFileName", [](O o, C call) { call.give(o.project().file); }},
    {L"Project.Protection", [](O o, C call) { call.give(o.project().protection); }},
    {L"Project.VBComponents", giveComponents},
    {L"VBComponents.Count", [](O o, C call) { call.give(o.project().components.size()); }},
    {L"VBComponents.Item",
     [](O o, C call) {
       const Component& component = choose(o.project().components, call);
       o.giveObject(call, L"Component", component.name, &o.project(), &component);
     }},
    {L"Component.Name", [](O o, C call) { call.give(o.component().name); }},
    {L"Component.Type", [](O o, C call) { call.give(o.component().type); }},
    {L"Component.Export", [](O o, C call) { exportCode(o.component(), call); }},
    {L"Component.CodeModule",
     [](O o, C call) {
       o.giveObject(call, L"CodeModule", o.component().name, &o.project(), &o.component());
     }},
    {L"CodeModule.CountOfLines", [](O o, C call) { call.give(o.component().lines.size()); }},
    {L"CodeModule.CountOfDeclarationLines",
     [](O o, C call) {
       const Component& of = o.component();
       call.give(of.procedures.empty() ? static_cast<long>(of.lines.size())
                                       : of.procedures[0].start - 1);
     }},
    {L"CodeModule.Lines", [](O o, C call) { giveLines(o.component(), call); }},
    {L"CodeModule.ProcOfLine", [](O o, C call) { giveProcedureOfLine(o.component(), call); }},
    {L"CodeModule.ProcStartLine",
     [](O o, C call) { call.give(findProcedure(o.component(), call).start); }},
    {L"CodeModule.ProcCountLines",
     [](O o, C call) { call.give(findProcedure(o.component(), call).count); }},
};

// A part of a document takes whatever is asked.
bool isOfDocument(const std::wstring& kind) {
  return kind == L"Document" || kind == L"Content" || kind == L"Font" || kind == L"PageSetup";
}

HRESULT HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) try {
  begin(path_, {});
  const std::wstring name = kind_ + L'.' + names[0];
  if (!isOfDocument(kind_) && !kMembers.contains(name)) return DISP_E_UNKNOWNNAME;
  const auto known = std::ranges::find(host.names, name);
  ids[0] = static_cast<DISPID>(known - host.names.begin()) + 1;
  if (known == host.names.end()) host.names.push_back(name);
  return S_OK;
} catch (const Failure& failure) {
  return failure.code;
}

HRESULT HostObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT*) try {
  if (id < 1 || static_cast<std::size_t>(id) > host.names.size()) return DISP_E_MEMBERNOTFOUND;
  const std::wstring name = host.names[static_cast<std::size_t>(id - 1)];
  if (!name.starts_with(kind_ + L'.')) return DISP_E_MEMBERNOTFOUND;  // another kind's number
  const auto self = ComPtr<HostObject>::share(this);
  const std::wstring member = name.substr(kind_.size() + 1);
  begin(path_, member);
  if ((flags & DISPATCH_PROPERTYPUT) != 0) return put(member, parameters->rgvarg[0]), S_OK;
  Variant value;
  Call call{{}, value};
  for (UINT i = parameters->cArgs; i-- > 0;) call.in.push_back(&parameters->rgvarg[i]);
  while (!call.in.empty() && call.in.back()->vt == VT_ERROR) call.in.pop_back();
  if (isOfDocument(kind_))
    getOfDocument(member, call);
  else
    kMembers.at(name)(*this, call);
  return result != nullptr ? VariantCopy(result, &value) : S_OK;
} catch (const Failure& failure) {
  if (HRESULT_FACILITY(failure.code) != FACILITY_CONTROL) return failure.code;
  *exception = {};
  exception->scode = failure.code;
  exception->bstrDescription = SysAllocString(failure.text.c_str());
  return DISP_E_EXCEPTION;
}

void HostObject::put(const std::wstring& member, VARIANT& value) const {
  if (!isOfDocument(kind_) && member != L"Visible") throw Failure{{}, DISP_E_MEMBERNOTFOUND};
  if (member == L"Visible") host.visible = value.boolVal != VARIANT_FALSE;
  host.log += path_ + L'.' + member + L" = " + shown(value) + L'\n';
}

void HostObject::getOfDocument(const std::wstring& member, const Call& call) {
  for (const wchar_t* part : {L"Content", L"Font", L"PageSetup"})
    if (member == part) return giveObject(call, part, path_ + L'.' + part);
  std::wstring line = path_ + L'.' + member + L'(';
  for (VARIANT* value : call.in) line += (value == call.in[0] ? L"" : L", ") + shown(*value);
  host.log += line + L")\n";
  // Kept: the file may be gone when somebody looks.
  if (member == L"InsertFile")
    std::ofstream(host.folder / L"inserted.htm", std::ios::binary) << readFile(call.text(0));
}

// ---------------------------------------------------------------------------- registration
void setKey(const std::wstring& key, const std::wstring& value) {
  throwIfFailed(HRESULT_FROM_WIN32(
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str(), nullptr, REG_SZ,
                      value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)))));
}

void registerPrograms(const wchar_t* folder) {
  wchar_t self[MAX_PATH], id[40];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  for (const Program& program : kPrograms) {
    StringFromGUID2(program.classId, id, 40);
    const std::wstring name = program.id, classKey = std::wstring(L"CLSID\\") + id;
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + name).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + classKey).c_str());
    if (folder == nullptr) continue;
    setKey(name + L"\\CLSID", id);
    setKey(classKey + L"\\ProgID", name);
    setKey(classKey + L"\\LocalServer32",
           L'"' + std::wstring(self) + L"\" " + name + L" \"" + folder + L'"');
  }
}

// ----------------------------------------------------------------------------------- server
// Gives out the one application.
struct ClassObject final : IClassFactory {
  IDispatch* application;

  explicit ClassObject(IDispatch* given) : application(given) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    return *object != nullptr ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives as long as the server
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    return application->QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

LRESULT CALLBACK handle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_SETTEXT) return obey(reinterpret_cast<const wchar_t*>(lparam)), TRUE;
  if (message == WM_GETTEXTLENGTH) return static_cast<LRESULT>(status().size());
  if (message != WM_GETTEXT) return DefWindowProcW(window, message, wparam, lparam);
  auto* place = reinterpret_cast<wchar_t*>(lparam);
  const std::size_t length = status().copy(place, wparam - 1);
  place[length] = L'\0';
  return static_cast<LRESULT>(length);
}

void makeControlWindow() {
  WNDCLASSW kind{};
  kind.lpfnWndProc = handle;
  kind.lpszClassName = host.program->id;
  RegisterClassW(&kind);
  CreateWindowW(kind.lpszClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}

// Handles messages until `done`, at most so long.
void serve(const std::function<bool()>& done, ULONGLONG milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (!done() && GetTickCount64() < end) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
      if (message.message == WM_QUIT) return;
      DispatchMessageW(&message);
    }
  }
}

void runServer(bool startedByCom) {
  throwIfFailed(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  host.projects = readProjects(host.folder);
  host.visible = !startedByCom;
  const auto application =
      ComPtr<IDispatch>::adopt(new HostObject(L"Application", L"Application", nullptr, nullptr));
  ClassObject factory(application.get());
  DWORD active = 0, given = 0;
  // Weak, so that the application is told when the last of the others lets go.
  const CLSID& id = host.program->classId;
  throwIfFailed(RegisterActiveObject(application.get(), id, ACTIVEOBJECT_WEAK, &active));
  if (startedByCom)
    throwIfFailed(
        CoRegisterClassObject(id, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &given));
  const auto revoke = [&] {
    RevokeActiveObject(active, nullptr);
    if (given != 0) CoRevokeClassObject(given);
  };
  host.die = [&] {
    revoke();
    TerminateProcess(GetCurrentProcess(), 1);
  };
  makeControlWindow();
  serve([] { return host.quit; }, INFINITE);
  // Who told the application to quit still holds it then; he gets the time to let go.
  if (!host.quit) serve([] { return host.references() == 0; }, 500);
  revoke();
  CoDisconnectObject(application.get(), 0);
}

int run(int count, wchar_t** words) {
  const std::wstring first = count > 1 ? words[1] : L"";
  if (first == L"--unregister" || first == L"--register")
    return registerPrograms(count > 2 ? words[2] : nullptr), 0;
  for (const Program& program : kPrograms) {
    if (first != program.id || count < 3) continue;
    host.program = &program;
    host.folder = fs::path(words[2]) / program.id;
    runServer(count > 3);
    return 0;
  }
  return 2;
}

}  // namespace
}  // namespace tintline::test

int wmain(int count, wchar_t** words) { return tintline::test::run(count, words); }
