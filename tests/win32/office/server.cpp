// An automation server for tests: the stand-in for Word and Excel (tests/support/fake_office.h),
// given out by COM. It refuses, fails, is busy or dies on request.
//
//   tintline_office_server --register FOLDER      COM starts it under both names from now on
//   tintline_office_server --unregister
//   tintline_office_server PROGRAM FOLDER         starts it as the user does: visible
//
// PROGRAM is Word.Application or Excel.Application. It is always known as the running application,
// and lives until its member Quit or a command ends it. Its files lie in FOLDER\PROGRAM, first of
// all projects.txt, in UTF-8, read at the start:
//   project NAME | file PATH | protection 1     a project; what follows belongs to it
//   component TYPE FILE NAME                    FILE: its code, in the code page
//
// Its window, of the class PROGRAM, takes as its text a command in place of the one before:
//   refuse                      access to the projects is refused
//   busy COUNT CODE             the next COUNT calls are rejected with CODE (80010001)
//   fail MEMBER CODE TEXT       MEMBER (Export, or Kunde.Export) fails with CODE; an application's
//                               own one (800A…) is raised with TEXT
//   die MEMBER COUNT            the process ends within the COUNT-th call of the member
//   slow MILLISECONDS           every call takes that much longer
//   quit                        the server ends
// and tells as its text what status() writes; "names" are questions for the numbers of names.
//
// A server that died leaves no entry behind in COM's tables, but one that is ended from outside
// does: never do that. Tests use it by controlled_server.h.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/support/fake_office.h"
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

// All that is known about the server.
struct Server {
  const Program* program = nullptr;
  FakeHost host;
  std::vector<std::wstring> names;  // of members, behind what gave their objects: their numbers
  bool connected = false;
  long asked = 0, rejected = 0;
  std::function<void()> die;
  // The command.
  bool quit = false;
  long busy = 0, deadlyCount = 0;
  HRESULT busyCode = S_OK;
  DWORD delay = 0;
  std::wstring deadly;

  // What others hold; the application itself is the server's own.
  long references() const { return host.living - 1 + (connected ? 1 : 0); }
} server;

std::vector<FakeProject> readProjects(const fs::path& folder) {
  std::vector<FakeProject> projects;
  std::wistringstream lines(fromUtf8(readFile(folder / L"projects.txt")));
  for (std::wstring what, file; lines >> what;) {
    const auto rest = [&lines](std::wstring& text) { std::getline(lines >> std::ws, text); };
    if (what == L"project") rest(projects.emplace_back().name);
    if (what == L"file") rest(projects.back().file);
    if (what == L"protection") lines >> projects.back().protection;
    if (what != L"component") continue;
    FakeComponent& component = projects.back().components.emplace_back();
    lines >> component.type >> file;
    rest(component.name);
    component.code = readFile(folder / file);
    if (component.code.ends_with("\r\n")) component.code.resize(component.code.size() - 2);
  }
  return projects;
}

void obey(const std::wstring& command) {
  std::wistringstream words(command);
  std::wstring what, member, code, text;
  const auto codeOf = [&] { return std::stoul(code, nullptr, 16); };
  words >> what;
  server.quit = what == L"quit";
  server.host.refusesAccess = what == L"refuse";
  server.host.fails.clear();
  server.deadly.clear();
  server.busy = 0;
  server.delay = 0;
  if (what == L"slow") words >> server.delay;
  if (what == L"die") words >> server.deadly >> server.deadlyCount;
  if (what == L"busy") {
    words >> server.busy >> code;
    server.busyCode = static_cast<HRESULT>(codeOf());
  } else if (what == L"fail") {
    std::getline(words >> member >> code >> std::ws, text);
    const OfficeError failure(OfficeError::Kind::Failed, 0, text, codeOf());
    server.host.fails.emplace(member, failure);
  }
}

std::wstring status() {
  std::wostringstream text;
  text << L"references " << server.references() << L"\ncalls " << server.host.calls << L"\nnames "
       << server.asked << L"\nrejected " << server.rejected << L"\nvisible " << server.host.visible
       << L'\n';
  for (const auto& document : server.host.documents) {
    text << L"inserted " << document->insertedPath << L'\n' << fromAnsi(document->inserted);
    for (const auto& [name, value] : document->properties) text << name << L" = " << value << L'\n';
  }
  return text.str();
}

// --------------------------------------------------------------------------------- objects
OfficeError failure(HRESULT code) {
  return {OfficeError::Kind::Failed, 0, L"", static_cast<std::uint32_t>(code)};
}

OfficeValue valueOf(const VARIANT& from) {
  switch (from.vt) {
    case VT_ERROR:
      return std::monostate();
    case VT_BOOL:
      return from.boolVal != VARIANT_FALSE;
    case VT_I4:
      return static_cast<std::int32_t>(from.lVal);
    case VT_I4 | VT_BYREF:
      return OfficeOut{static_cast<std::int32_t>(*from.plVal)};
    case VT_BSTR:
      return std::wstring(from.bstrVal, SysStringLen(from.bstrVal));
    default:
      throw failure(DISP_E_TYPEMISMATCH);
  }
}

// Every call begins so, also the question for a name.
void begin() {
  Sleep(server.delay);
  if (server.busy == 0) return;
  --server.busy;
  ++server.rejected;
  throw failure(server.busyCode);
}

// Gives out an object of the stand-in.
class HostObject final : public IDispatch, public IExternalConnection {
 public:
  // `kind`: the members that it came from. Objects of a kind have the same numbers for theirs.
  HostObject(OfficeObjectPtr object, std::wstring kind)
      : object_(std::move(object)), kind_(std::move(kind)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IDispatch) *object = static_cast<IDispatch*>(this);
    // Only the application has to know whether anybody is connected.
    if (id == IID_IExternalConnection && kind_.empty())
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
    if ((kind & EXTCONN_STRONG) != 0) server.connected = ++connections_ > 0;
    return connections_;
  }
  DWORD STDMETHODCALLTYPE ReleaseConnection(DWORD kind, DWORD, BOOL) override {
    if ((kind & EXTCONN_STRONG) != 0) server.connected = --connections_ > 0;
    return connections_;
  }

 private:
  OfficeValue call(const std::wstring& member, bool puts, const DISPPARAMS& parameters) const;
  void fill(Variant& to, const OfficeValue& value, const std::wstring& member) const;

  OfficeObjectPtr object_;
  std::wstring kind_;
  ULONG references_ = 1;
  DWORD connections_ = 0;
};

HRESULT HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) try {
  begin();
  ++server.asked;
  const std::wstring name = kind_ + L'.' + names[0];
  const auto known = std::ranges::find(server.names, name);
  ids[0] = static_cast<DISPID>(known - server.names.begin()) + 1;
  if (known == server.names.end()) server.names.push_back(name);
  return S_OK;
} catch (const OfficeError& error) {
  return static_cast<HRESULT>(error.hresult());
}

HRESULT HostObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT*) try {
  if (id < 1 || static_cast<std::size_t>(id) > server.names.size()) return DISP_E_MEMBERNOTFOUND;
  const std::wstring name = server.names[static_cast<std::size_t>(id - 1)];
  const std::size_t dot = name.rfind(L'.');
  if (name.substr(0, dot) != kind_) return DISP_E_MEMBERNOTFOUND;  // another kind's number
  const std::wstring member = name.substr(dot + 1);
  begin();
  if (member == server.deadly && --server.deadlyCount == 0) server.die();
  const auto self = ComPtr<HostObject>::share(this);
  Variant value;
  fill(value, call(member, (flags & DISPATCH_PROPERTYPUT) != 0, *parameters), member);
  return result != nullptr ? VariantCopy(result, &value) : S_OK;
} catch (const OfficeError& error) {
  const auto code = static_cast<HRESULT>(error.hresult() | static_cast<WORD>(error.number()));
  if (HRESULT_FACILITY(code) != FACILITY_CONTROL) return static_cast<HRESULT>(error.hresult());
  *exception = {};
  exception->scode = code;
  exception->bstrDescription = SysAllocString(error.description().c_str());
  return DISP_E_EXCEPTION;
} catch (const std::bad_variant_access&) {
  return DISP_E_TYPEMISMATCH;
}

OfficeValue HostObject::call(const std::wstring& member, bool puts,
                             const DISPPARAMS& parameters) const {
  const std::size_t count = parameters.cArgs;
  constexpr std::size_t kMost = 3;  // that any member looks at
  std::vector<OfficeValue> values(std::max(count, kMost));
  for (std::size_t i = 0; i < count; ++i) values[i] = valueOf(parameters.rgvarg[count - 1 - i]);
  if (puts) return object_->put(member, values[0]), std::monostate();
  OfficeValue result = object_->get(member, values);
  for (std::size_t i = 0; i < count; ++i)
    if (const auto* out = std::get_if<OfficeOut>(&values[i]))
      *parameters.rgvarg[count - 1 - i].plVal = out->value;
  return result;
}

void HostObject::fill(Variant& to, const OfficeValue& value, const std::wstring& member) const {
  if (const auto* object = std::get_if<OfficeObjectPtr>(&value)) {
    const std::wstring kind = kind_ + L'.' + member;
    to.setObject(ComPtr<IDispatch>::adopt(new HostObject(*object, kind)).get());
  } else if (const auto* text = std::get_if<std::wstring>(&value)) {
    to.setText(*text);
  } else if (const auto* flag = std::get_if<bool>(&value)) {
    to.vt = VT_BOOL;
    to.boolVal = *flag ? VARIANT_TRUE : VARIANT_FALSE;
  } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
    to.vt = VT_I4;
    to.lVal = *number;
    // Numbers have other types in the two programs.
    if (server.program == &kPrograms[1]) VariantChangeType(&to, &to, 0, VT_R8);
  }
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
  kind.lpszClassName = server.program->id;
  RegisterClassW(&kind);
  CreateWindowW(kind.lpszClassName, L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
}

// Handles messages until `done`, at most so long.
void serve(const std::function<bool()>& done, ULONGLONG milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (!done() && GetTickCount64() < end) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) DispatchMessageW(&message);
  }
}

void runServer(const fs::path& folder, bool startedByCom) {
  throwIfFailed(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  server.host.projects = readProjects(folder);
  const auto application =
      ComPtr<IDispatch>::adopt(new HostObject(server.host.connect().object, L""));
  server.host.visible = !startedByCom;
  ClassObject factory(application.get());
  DWORD active = 0, given = 0;
  // Weak, so that the application is told when the last of the others lets go.
  const CLSID& id = server.program->classId;
  throwIfFailed(RegisterActiveObject(application.get(), id, ACTIVEOBJECT_WEAK, &active));
  if (startedByCom)
    throwIfFailed(
        CoRegisterClassObject(id, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &given));
  const auto revoke = [&] {
    RevokeActiveObject(active, nullptr);
    if (given != 0) CoRevokeClassObject(given);
  };
  server.die = [&] {
    revoke();
    TerminateProcess(GetCurrentProcess(), 1);
  };
  makeControlWindow();
  serve([] { return server.quit || !server.host.running; }, INFINITE);
  // Who told the application to quit still holds it then; he gets the time to let go.
  if (!server.quit) serve([] { return server.references() == 0; }, 500);
  revoke();
  CoDisconnectObject(application.get(), 0);
}

int run(int count, wchar_t** words) {
  const std::wstring first = count > 1 ? words[1] : L"";
  if (first == L"--unregister" || first == L"--register")
    return registerPrograms(count > 2 ? words[2] : nullptr), 0;
  for (const Program& program : kPrograms) {
    if (first != program.id || count < 3) continue;
    server.program = &program;
    runServer(fs::path(words[2]) / program.id, count > 3);
    return 0;
  }
  return 2;
}

}  // namespace
}  // namespace tintline::test

int wmain(int count, wchar_t** words) { return tintline::test::run(count, words); }
