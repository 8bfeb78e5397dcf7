// Tests of win32/office/office_error.h and office_session.h: failures, busy hosts, and answers that
// the automation server beside this file does not give.
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <functional>
#include <string>

#include "base/codepage.h"
#include "tests/win32/office/office_fixture.h"
#include "win32/com_ptr.h"

namespace tintline::test {
namespace {

// ----------------------------------------------------------------------------------- errors
TEST_F(OfficeTest, failuresSayWhatTheUserKnowsThemBy) {
  word_.start();
  const auto word = connectWord();
  const struct {
    const char* name;
    const char* commands;
    std::function<void()> action;
    Kind kind;
    long number;
    std::uint32_t hresult;
    const wchar_t* description;  // its beginning; "" when the system's text stands
  } rows[] = {
      {"no such member", "", [&] { get(word, L"Größe"); }, Kind::Failed, 438, 0x80020006, L""},
      {"a read-only property is put", "", [&] { codeOf(word)->put(L"Lines", 1); }, Kind::Failed,
       438, 0x80020003, L""},
      {"too many arguments", "", [&] { get(codeOf(word), L"Lines", 1, 2, 3); }, Kind::Failed, 450,
       0x8002000E, L""},
      {"too few arguments", "", [&] { get(codeOf(word), L"Lines", 1); }, Kind::Failed, 449,
       0x8002000F, L""},
      {"a text for a number", "", [&] { get(codeOf(word), L"Lines", L"eins", 2); }, Kind::Failed,
       13, 0x80020005, L""},
      {"no such element", "", [&] { get(projectsOf(word), L"Item", 3); }, Kind::Failed, 9,
       0x800A0009, L"Index außerhalb des gültigen Bereichs"},
      {"a protected project", "",
       [&] { get(objectOf(projectsOf(word), L"Item", 2), L"VBComponents"); }, Kind::Failed, 50289,
       0x800AC471, L"Der Vorgang kann nicht"},
      {"an export fails", "fail Export Höhenmaß 75 Fehler beim Zugriff auf Pfad/Datei",
       [&] { call(moduleOf(word), L"Export", L"C:\\x.bas"); }, Kind::Failed, 75, 0x800A004B,
       L"Fehler beim Zugriff auf Pfad/Datei"},
      {"a failure without words", "fail Count * 7", [&] { get(projectsOf(word), L"Count"); },
       Kind::Failed, 7, 0x800A0007, L""},
      {"access is not trusted, said by Word", "refuse", [&] { get(word, L"VBE"); },
       Kind::AccessRefused, 6068, 0x800A17B4, L"Der programmatische Zugriff"},
      {"the number of Excel's refusal where the projects are asked for",
       "fail VBProjects * 1004 Anwendungs- oder objektdefinierter Fehler",
       [&] { projectsOf(word); }, Kind::AccessRefused, 1004, 0x800A03EC, L"Anwendungs-"},
      {"the same number elsewhere", "fail Name * 1004 Anwendungs- oder objektdefinierter Fehler",
       [&] { get(moduleOf(word), L"Name"); }, Kind::Failed, 1004, 0x800A03EC, L"Anwendungs-"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    word_.command(row.commands);
    const auto error = errorOf(row.action);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), row.kind);
    EXPECT_EQ(error->number(), row.number);
    EXPECT_EQ(error->hresult(), row.hresult);
    EXPECT_TRUE(error->description().starts_with(row.description)) << toUtf8(error->description());
    EXPECT_FALSE(error->description().ends_with(L'\n'));
    EXPECT_EQ(error->description().empty(), false);
  }
  word_.command("");
  EXPECT_EQ(number(get(projectsOf(word), L"Count")), 2) << "and goes on";
}

TEST_F(OfficeTest, excelRefusesWithItsOwnNumber) {
  excel_.command("refuse");
  excel_.start();
  const auto excel = office_->connect(L"Excel.Application").object;
  const auto error = errorOf([&] { get(excel, L"VBE"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind(), Kind::AccessRefused);
  EXPECT_EQ(error->number(), 1004);
  EXPECT_TRUE(error->description().ends_with(L"ist nicht sicher")) << "without its line end";
}

TEST_F(OfficeTest, aHostThatDiesInACallIsALostConnection) {
  auto word = connectWord();
  auto code = codeOf(word);
  word_.command("die ProcOfLine 2");
  EXPECT_EQ(text(get(code, L"ProcOfLine", 3, OfficeOut{})), L"Höhe");
  for (const wchar_t* member : {L"ProcOfLine", L"ProcOfLine", L"Missing"}) {
    const auto error = errorOf([&] { get(code, member, 3, OfficeOut{}); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), Kind::ConnectionLost) << std::hex << error->hresult();
  }
  EXPECT_EQ(word_.status("state"), "died");
  word = code = nullptr;
  EXPECT_TRUE(word_.waitForEnd());
  const OfficeApplication again = office_->connect(L"Word.Application");
  EXPECT_TRUE(again.created);
  EXPECT_EQ(number(get(projectsOf(again.object), L"Count")), 2);
}

// ------------------------------------------------------------------------------------- busy
TEST_F(OfficeTest, aBusyHostIsAskedAgainWhileMessagesPass) {
  word_.start();
  const auto word = connectWord();
  static int timers;
  const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { ++timers; });
  for (const char* code : {"80010001", "8001010A", "800AC472"}) {
    SCOPED_TRACE(code);
    timers = 0;
    const long rejected = word_.count("rejected");
    word_.command(std::string("busy 3 ") + code);
    EXPECT_EQ(number(get(projectsOf(word), L"Count")), 2);
    EXPECT_EQ(word_.count("rejected"), rejected + 3);
    EXPECT_GE(timers, 3);
  }
  KillTimer(nullptr, timer);
}

TEST_F(OfficeTest, oneThatIsBusyForTooLongSaysSo) {
  word_.start();
  const auto word = connectWord();
  word_.command("busy 1000000 8001010A");
  const ULONGLONG start = GetTickCount64();
  const auto error = errorOf([&] { get(word, L"Visible"); });
  const ULONGLONG time = GetTickCount64() - start;
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind(), Kind::Busy);
  EXPECT_EQ(error->hresult(), 0x8001010A);
  EXPECT_GE(time, 4'000U);
  EXPECT_LE(time, 8'000U);
  word_.command("");
  EXPECT_EQ(get(word, L"Visible"), OfficeValue(true));
}

TEST_F(OfficeTest, callsThatComRejectsAreRepeatedForSomeSeconds) {
  word_.start();
  auto word = connectWord();
  // The only way to see the filter in place is to take it out.
  const auto installed = [] {
    ComPtr<IMessageFilter> filter, none;
    CoRegisterMessageFilter(nullptr, filter.put());
    CoRegisterMessageFilter(filter.get(), none.put());
    return filter;
  };
  {
    const ComPtr<IMessageFilter> filter = installed();
    ASSERT_TRUE(filter);
    for (const DWORD kind : {SERVERCALL_REJECTED, SERVERCALL_RETRYLATER}) {
      const DWORD pause = filter->RetryRejectedCall(nullptr, 0, kind);
      EXPECT_GE(pause, 100U) << "less is taken for an instant repetition";
      EXPECT_LE(pause, 1'000U);
      EXPECT_EQ(filter->RetryRejectedCall(nullptr, 5'000, kind), static_cast<DWORD>(-1));
    }
    EXPECT_EQ(filter->HandleInComingCall(CALLTYPE_TOPLEVEL, nullptr, 0, nullptr),
              static_cast<DWORD>(SERVERCALL_ISHANDLED));
    EXPECT_EQ(filter->MessagePending(nullptr, 0, PENDINGTYPE_TOPLEVEL),
              static_cast<DWORD>(PENDINGMSG_WAITDEFPROCESS));
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);  // as the program itself does
  word = nullptr;
  EXPECT_FALSE(installed()) << "it goes with the last object";
  CoUninitialize();
}

TEST_F(OfficeTest, aSlowHostIsWaitedFor) {
  word_.start();
  const auto word = connectWord();
  get(word, L"Visible");
  word_.command("slow 300");
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(get(word, L"Visible"), OfficeValue(true));
  EXPECT_GE(GetTickCount64() - start, 250U);
}

// ------------------------------------------------------------------- what no server here says
// An application of this very process, known as running: it answers every call with what the
// test wants.
class ScriptedApplication final : public IDispatch {
 public:
  std::function<HRESULT(VARIANT&, EXCEPINFO&)> answer;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
    *id = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override {
    return answer(*result, *exception);
  }
};

class ScriptedOfficeTest : public OfficeTest {
 protected:
  void SetUp() override {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID id{};
    ASSERT_EQ(CLSIDFromProgID(L"Word.Application", &id), S_OK);
    ASSERT_EQ(RegisterActiveObject(&application_, id, ACTIVEOBJECT_STRONG, &entry_), S_OK);
  }
  void TearDown() override {
    RevokeActiveObject(entry_, nullptr);
    CoUninitialize();
  }

  ScriptedApplication application_;
  DWORD entry_ = 0;
};

TEST_F(ScriptedOfficeTest, errorInformationMayBeFilledInLate) {
  const auto word = connectWord();
  application_.answer = [](VARIANT&, EXCEPINFO& exception) {
    exception.pfnDeferredFillIn = [](EXCEPINFO* late) {
      late->wCode = 5174;
      late->bstrDescription = SysAllocString(L"\r\n Die Datei fehlt. \r\n");
      return S_OK;
    };
    return DISP_E_EXCEPTION;
  };
  const auto error = errorOf([&] { get(word, L"Visible"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), 5174);
  EXPECT_EQ(error->hresult(), 0x800A1436);
  EXPECT_EQ(error->description(), L"Die Datei fehlt.");
}

TEST_F(ScriptedOfficeTest, codesOfFailuresMakeTheirKind) {
  const auto word = connectWord();
  const struct {
    std::uint32_t code;
    Kind kind;
    long number;
  } rows[] = {{0x800706BA, Kind::ConnectionLost, 462},
              {0x800706BE, Kind::ConnectionLost, static_cast<long>(0x800706BE)},
              {0x80010108, Kind::ConnectionLost, static_cast<long>(0x80010108)},
              {0x80010007, Kind::ConnectionLost, static_cast<long>(0x80010007)},
              {0x80010012, Kind::ConnectionLost, static_cast<long>(0x80010012)},
              {0x80070005, Kind::Failed, static_cast<long>(0x80070005)},
              {0x80040154, Kind::Failed, static_cast<long>(0x80040154)}};
  for (const auto& row : rows) {
    application_.answer = [&](VARIANT&, EXCEPINFO&) { return static_cast<HRESULT>(row.code); };
    const auto error = errorOf([&] { get(word, L"Name"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), row.kind) << std::hex << row.code;
    EXPECT_EQ(error->number(), row.number) << std::hex << row.code;
  }
  application_.answer = [](VARIANT&, EXCEPINFO&) { return E_ACCESSDENIED; };
  EXPECT_EQ(errorOf([&] { get(word, L"VBE"); })->kind(), Kind::AccessRefused);
}

TEST_F(ScriptedOfficeTest, valuesOfEveryKindAreUnderstood) {
  const auto word = connectWord();
  const auto given = [&](const std::function<void(VARIANT&)>& make) {
    application_.answer = [&](VARIANT& result, EXCEPINFO&) {
      make(result);
      return S_OK;
    };
    return get(word, L"Value");
  };
  EXPECT_EQ(given([](VARIANT&) {}), OfficeValue());
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_NULL; }), OfficeValue());
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_I2, v.iVal = -7; }), OfficeValue(-7));
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_UI1, v.bVal = 200; }), OfficeValue(200));
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_R4, v.fltVal = 70.9F; }), OfficeValue(71));
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_BSTR, v.bstrVal = nullptr; }),
            OfficeValue(std::wstring()));
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_DISPATCH, v.pdispVal = nullptr; }),
            OfficeValue(OfficeObjectPtr()));
  EXPECT_EQ(given([](VARIANT& v) { v.vt = VT_BSTR, v.bstrVal = SysAllocStringLen(L"a\0b", 3); }),
            OfficeValue(std::wstring(L"a\0b", 3)));
  const auto tooBig = errorOf([&] { given([](VARIANT& v) { v.vt = VT_R8, v.dblVal = 1e10; }); });
  ASSERT_TRUE(tooBig);
  EXPECT_EQ(tooBig->number(), 6);
}

}  // namespace
}  // namespace tintline::test
