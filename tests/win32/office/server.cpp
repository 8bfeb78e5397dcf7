// An automation server for tests: it stands for Word or Excel, with projects, components and
// code from text files. It counts the calls it gets and the references held on it, and it
// refuses, fails, is busy or dies on request.
//
//   tintline_office_server --register FOLDER      COM starts it under both names from now on
//   tintline_office_server --unregister
//   tintline_office_server PROGRAM FOLDER         starts it as the user does: visible, and known
//                                                 as the running application
//
// PROGRAM is Word.Application or Excel.Application. What COM starts is invisible at first, and
// is also known as running. The server lives until it is told to quit, by its member Quit or by
// a command. Its files lie in FOLDER\PROGRAM; all are UTF-8 but for the code:
//
// projects.txt, read at the start
//   project NAME                      a project; what follows belongs to it
//   file PATH                         its BuildFileName
//   protection 1                      it is protected: no components
//   component TYPE FILE NAME          TYPE: 1 standard, 2 class, 3 form, 100 document;
//                                     FILE: the code, in the code page or UTF-8 with a mark
//
// commands.txt, taken (and renamed) at the start and whenever it is there; each taking forgets
// the commands before, so an empty file brings everything back to normal
//   refuse                            access to the projects is refused
//   busy COUNT CODE                   the next COUNT calls are rejected with CODE (80010001)
//   fail MEMBER OBJECT NUMBER TEXT    the member raises that error; OBJECT: the name of a project
//                                     or component (for its code module, too), or *
//   die MEMBER COUNT                  the process ends within the COUNT-th call of the member
//   slow MILLISECONDS                 every call takes that much longer
//   quit                              the server ends
//
// status.txt, written at the start, at the end, and when there is a file "ask", which is removed
// then: "KEY VALUE" lines
//   state running | ended | died      it ended by Quit or by command, or died
//   process, visible                  process id, whether the application is visible (0 or 1)
//   references                        objects that others hold, the application among them
//   calls, calls.MEMBER               calls of members since the start
//   names, rejected                   questions for the numbers of names; calls rejected as busy
//
// log.txt: a line for each property put and each method called, with the object's name:
//   Application.Visible = True        Document1.Content.InsertFile(C:\…)
// inserted.EXT: a copy of what was last inserted into a document.
//
// Tests use it by controlled_server.h. A server that died leaves no entry behind in COM's tables,
// but one that is ended from outside does: never do that.
//
// Tested by tests/win32/office/office_test.cpp.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "tests/win32/office/host_folder.h"
#include "tests/win32/office/host_objects.h"
#include "win32/com_ptr.h"
#include "win32/error.h"

namespace tintline::test {
namespace {

constexpr CLSID kWord = {
    0xcb537f6c, 0x7278, 0x4fef, {0xbb, 0xca, 0x75, 0x84, 0xa8, 0x92, 0x3e, 0x59}};
constexpr CLSID kExcel = {
    0xfc96aada, 0x88b6, 0x455d, {0xbe, 0x92, 0x6f, 0x19, 0x84, 0xdc, 0xe5, 0xd5}};

struct Program {
  const wchar_t* id;
  CLSID classId;
};
constexpr std::array kPrograms = {Program{L"Word.Application", kWord},
                                  Program{L"Excel.Application", kExcel}};

// ---------------------------------------------------------------------------- registration
std::wstring classKey(const Program& program) {
  wchar_t text[40];
  StringFromGUID2(program.classId, text, 40);
  return std::wstring(L"Software\\Classes\\CLSID\\") + text;
}

std::wstring programKey(const Program& program) {
  return std::wstring(L"Software\\Classes\\") + program.id;
}

void setKey(const std::wstring& key, const std::wstring& value) {
  const LSTATUS result =
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, value.c_str(),
                      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  throwIfFailed(HRESULT_FROM_WIN32(result));
}

void registerPrograms(const std::wstring& folder) {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  for (const Program& program : kPrograms) {
    setKey(programKey(program) + L"\\CLSID",
           classKey(program).substr(classKey(program).rfind(L'{')));
    setKey(classKey(program) + L"\\ProgID", program.id);
    setKey(classKey(program) + L"\\LocalServer32",
           L'"' + std::wstring(self) + L"\" " + program.id + L" \"" + folder + L'"');
  }
}

void unregisterPrograms() {
  for (const Program& program : kPrograms) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, programKey(program).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, classKey(program).c_str());
  }
}

// ----------------------------------------------------------------------------------- server
// Gives out the one application.
class ClassObject final : public IClassFactory {
 public:
  explicit ClassObject(IDispatch* application) : application_(application) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IClassFactory;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives as long as the server
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
    return application_->QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  IDispatch* application_;
};

// The server's entries in COM's tables, as long as it lives.
class Entries {
 public:
  Entries(const CLSID& id, IDispatch* application, bool startedByCom) : factory_(application) {
    // Weak, so that the application is told when the last of the others lets go.
    throwIfFailed(RegisterActiveObject(application, id, ACTIVEOBJECT_WEAK, &active_));
    if (startedByCom)
      throwIfFailed(
          CoRegisterClassObject(id, &factory_, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &class_));
  }
  ~Entries() { revoke(); }
  Entries(const Entries&) = delete;
  Entries& operator=(const Entries&) = delete;

  void revoke() {
    if (active_ != 0) RevokeActiveObject(active_, nullptr);
    if (class_ != 0) CoRevokeClassObject(class_);
    active_ = class_ = 0;
  }

 private:
  ClassObject factory_;
  DWORD active_ = 0, class_ = 0;
};

// Handles calls until the server is to end; in between it looks at its commands.
void serve(Host& host, const std::function<void(std::string_view)>& writeStatus) {
  SetTimer(nullptr, 0, 20, nullptr);
  MSG message;
  while (!host.folder.mustQuit() && GetMessageW(&message, nullptr, 0, 0) > 0) {
    DispatchMessageW(&message);
    if (message.message != WM_TIMER) continue;
    host.folder.readCommands();
    if (!host.folder.isAsked()) continue;
    writeStatus("running");
    host.folder.answer();
  }
}

// Who told the application to quit still holds it then; he gets the time to let go.
void untilLetGo(const Host& host) {
  constexpr DWORD kPatience = 500;  // milliseconds
  const ULONGLONG end = GetTickCount64() + kPatience;
  while (host.references() > 0 && GetTickCount64() < end) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) DispatchMessageW(&message);
  }
}

void runServer(const Program& program, const std::filesystem::path& folder, bool startedByCom) {
  throwIfFailed(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  HostFolder files(folder / program.id);
  Host host{.programId = program.id, .folder = files, .visible = !startedByCom};
  ComPtr<IDispatch> application = makeApplication(host);
  const auto writeStatus = [&](std::string_view state) {
    files.writeStatus(state, host.references(), host.isVisible());
  };
  {
    Entries entries(program.classId, application.get(), startedByCom);
    files.onDeath = [&] {
      writeStatus("died");
      entries.revoke();
      TerminateProcess(GetCurrentProcess(), 1);
    };
    writeStatus("running");
    serve(host, writeStatus);
    if (!files.mustQuit()) untilLetGo(host);
  }
  const long left = host.references();  // before the connections are cut
  CoDisconnectObject(application.get(), 0);
  files.writeStatus("ended", left, host.isVisible());
  application.reset();
  CoUninitialize();
}

int run(int count, wchar_t** words) {
  const std::wstring_view first = count > 1 ? words[1] : L"";
  if (first == L"--unregister" && count == 2) {
    unregisterPrograms();
    return 0;
  }
  if (first == L"--register" && count == 3) {
    registerPrograms(words[2]);
    return 0;
  }
  for (const Program& program : kPrograms) {
    if (first != program.id || count < 3) continue;
    runServer(program, words[2], count > 3);
    return 0;
  }
  return 2;
}

}  // namespace
}  // namespace tintline::test

int wmain(int count, wchar_t** words) { return tintline::test::run(count, words); }
