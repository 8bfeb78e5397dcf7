// Tests of win32/office/ over COM between processes, and journeys of the running program through
// Word and Excel, for which the server beside this file stands.
#include "win32/office/office.h"

#include <windows.h>
#include <objbase.h>

#include <algorithm>

#include "app/modWord.h"
#include "base/codepage.h"
#include "base/file.h"
#include "tests/win32/office/controlled_server.h"
#include "tests/win32/program/program_test.h"
#include "win32/com_ptr.h"
#include "win32/message_pump.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using Kind = OfficeError::Kind;
using Texts = std::vector<std::wstring>;

constexpr std::string_view kGreeting =
    "Option Explicit\r\n"
    "\r\n"
    "' Gr\xFC\xDFt.\r\n"
    "Public Sub Gr\xFC\xDF\x65n()\r\n"
    "    Call Z\xE4hlen(3)   ' weiter unten\r\n"
    "End Sub\r\n"
    "Private Function Z\xE4hlen(ByVal n As Long) As String\r\n"
    "    If n > 0 Then Z\xE4hlen = n & \"<b> \x80\"\r\n"
    "End Function\r\n"
    "\r\n"
    "' Ende\r\n";

constexpr std::string_view kCustomer =
    "Private mWert As Long\r\n"
    "Property Get Wert() As Long\r\n"
    "    Wert = mWert\r\n"
    "End Property\r\n"
    "Property Set Quelle(o As Object)\r\n"
    "End Property\r\n";

constexpr char kWordProjects[] =
    "project Project\n"
    "file C:\\Vorlagen\\Brief.dot\n"
    "component 100 leer.bas ThisDocument\n"
    "component 1 gruesse.bas Grüße\n"
    "component 2 kunde.cls Kunde\n"
    "project Geheim\n"
    "file C:\\Vorlagen\\Geheim.dot\n"
    "protection 1\n";

const Texts kWordTree = {
    L"Brief (3)",           L"  ThisDocument (0 Z.)",
    L"  Grüße (11 Z.)",     L"    Declaration (1 Z.)",
    L"    Grüßen (5 Z.)",   L"    Zählen (5 Z.)",
    L"  Kunde (6 Z.)",      L"    Declaration (1 Z.)",
    L"    Get Wert (3 Z.)", L"    Set Quelle (2 Z.)",
    L"Geheim (geschützt)",
};

// The hosts are installed, and programs take their temporary files to a folder of ours.
class Hosts {
 public:
  Hosts() {
    create_directory(temporary());
    setTemporary(temporary());
    ControlledServer::registerAt(scratch_.path());
    for (const ControlledServer* server : {&word, &excel}) {
      server->write(L"leer.bas", "");
      server->write(L"gruesse.bas", kGreeting);
      server->write(L"kunde.cls", kCustomer);
    }
    word.write(L"projects.txt", kWordProjects);
    excel.write(L"projects.txt", "project Mappe\nprotection 1\n");
  }
  ~Hosts() {
    ControlledServer::unregister();
    setTemporary(former_);
  }
  Hosts(const Hosts&) = delete;
  Hosts& operator=(const Hosts&) = delete;

  fs::path temporary() const { return scratch_.path() / "temp"; }

 private:
  static void setTemporary(const fs::path& folder) {
    for (const wchar_t* name : {L"TEMP", L"TMP"}) SetEnvironmentVariableW(name, folder.c_str());
  }

  const fs::path former_ = fs::temp_directory_path();
  TempFolder scratch_;

 public:
  ControlledServer word{scratch_.path(), L"Word.Application"};
  ControlledServer excel{scratch_.path(), L"Excel.Application"};
};

// ------------------------------------------------------------------------- one call of COM

OfficeValue get(const OfficeObjectPtr& object, std::wstring_view member,
                std::vector<OfficeValue> arguments = {}) {
  return object->get(member, arguments);
}

struct office : testing::Test {
  Hosts hosts;
  MessagePump pump;
  SystemOffice system{pump};

  OfficeObjectPtr projects(const OfficeObjectPtr& application) const {
    const auto editor = std::get<OfficeObjectPtr>(get(application, L"VBE"));
    return std::get<OfficeObjectPtr>(get(editor, L"VBProjects"));
  }
  std::optional<OfficeError> errorOf(const std::function<void()>& action) const {
    try {
      action();
    } catch (const OfficeError& error) {
      return error;
    }
    return std::nullopt;
  }
};

TEST_F(office, failures_say_what_the_user_knows_them_by) {
  hosts.word.start();
  const auto word = system.connect(L"Word.Application").object;
  const auto count = [&] { get(projects(word), L"Count"); };
  const struct {
    const wchar_t* commands;
    Kind kind;
    long number;
    const wchar_t* description;  // its beginning; "" when the system's text stands
    std::function<void()> action;
  } rows[] = {
      {L"", Kind::Failed, 438, L"Objekt unter", [&] { get(word, L"Größe"); }},
      {L"fail Count 80020006", Kind::Failed, 438, L"", count},
      {L"", Kind::Failed, 13, L"", [&] { get(projects(word), L"Item", {OfficeObjectPtr()}); }},
      {L"", Kind::Failed, 9, L"Index außerhalb", [&] { get(projects(word), L"Item", {9}); }},
      {L"fail Count 800A004B  Pfad fehlt. ", Kind::Failed, 75, L"Pfad fehlt.", count},
      {L"refuse", Kind::AccessRefused, 6068, L"Zugriff nicht vertrauenswürdig", count},
      {L"fail VBProjects 800A03EC", Kind::AccessRefused, 1004, L"", count},
      {L"fail Count 800A03EC", Kind::Failed, 1004, L"", count},
      {L"fail VBE 80070005", Kind::AccessRefused, static_cast<long>(0x80070005), L"", count},
      {L"fail Count 800706BA", Kind::ConnectionLost, 462, L"", count},
      {L"fail Count 80010108", Kind::ConnectionLost, static_cast<long>(0x80010108), L"", count},
      {L"busy 100000 8001010A", Kind::Busy, static_cast<long>(0x8001010A), L"", count},
      {L"", Kind::NotInstalled, 429, L"", [&] { system.connect(L"Tintline.Unknown"); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    hosts.word.command(row.commands);
    const auto error = errorOf(row.action);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind(), row.kind);
    EXPECT_EQ(error->number(), row.number);
    EXPECT_TRUE(error->description().starts_with(row.description)) << toUtf8(error->description());
    EXPECT_FALSE(error->description().empty() || error->description().ends_with(L'\n'));
  }
  hosts.word.command(L"");
}

TEST_F(office, a_busy_host_is_asked_again_while_messages_pass) {
  hosts.word.start();
  const auto word = system.connect(L"Word.Application").object;
  static int timers;
  const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { ++timers; });
  for (const wchar_t* code : {L"80010001", L"8001010A", L"800AC472"}) {
    timers = 0;
    hosts.word.command(std::wstring(L"busy 3 ") + code);
    EXPECT_TRUE(std::get<bool>(get(word, L"Visible")));
    EXPECT_GE(timers, 3);
  }
  KillTimer(nullptr, timer);
  EXPECT_EQ(hosts.word.count(L"rejected "), 9);
  // Calls that COM itself rejects: the only way to see the filter is to take it out.
  ComPtr<IMessageFilter> filter, none;
  CoRegisterMessageFilter(nullptr, filter.put());
  ASSERT_TRUE(filter);
  EXPECT_GE(filter->RetryRejectedCall(nullptr, 0, SERVERCALL_RETRYLATER), 100U);
  EXPECT_EQ(filter->RetryRejectedCall(nullptr, 5'000, SERVERCALL_RETRYLATER),
            static_cast<DWORD>(-1));
  CoRegisterMessageFilter(filter.get(), none.put());
}

// ---------------------------------------------------------------------- the running program

class office_program : public ProgramTest {
 protected:
  std::size_t node(std::wstring_view text) const {
    const Texts texts = tree();
    return static_cast<std::size_t>(std::ranges::find(texts, text) - texts.begin());
  }

  // Clicks a node and waits for so many lines of code.
  void read(std::wstring_view text, std::size_t count) const {
    main().clickNode(node(text));
    untilLines(id::kList1, count);
  }

  Hosts hosts;
};

TEST_F(office_program, reads_converts_exports_and_sends) {
  hosts.word.start();
  start();
  main().open(folder.write(L"datei.bas", "Sub Datei()\r\n"));
  main().run(Command::mnuword);
  EXPECT_LE(hosts.word.count(L"names "), 17) << "as docs/office.md says";
  main().run(Command::mnuexcel);
  Texts expected = kWordTree;
  expected.insert(expected.end(), {L"Mappe (geschützt)", L"gel. Datei", L"  datei.bas"});
  EXPECT_EQ(tree(), expected);
  EXPECT_EQ(hosts.excel.count(L"visible "), 1) << "started by the program, and shown";
  EXPECT_EQ(GetWindowLongPtrW(main().window().handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);

  read(L"    Set Quelle (2 Z.)", 2);
  EXPECT_EQ(line(id::kList1, 0), "Property Set Quelle(o As Object) ");
  read(L"    Zählen (5 Z.)", 5);
  main().convert();
  EXPECT_EQ(main().lineCount(id::kList2), 5U);
  main().pressAndWait(id::kCmdModul);
  exportTo(folder / L"Modul.htm");
  EXPECT_EQ(folder.read(L"Modul.htm"), page(folder.write(L"Grüße.bas", kGreeting)));

  const fs::path sent = hosts.temporary() / L"TINTLINE-Word.htm";
  main().pressAndWait(id::kCmdWord);
  const std::wstring seen = hosts.word.status();
  for (const std::wstring& done : {L"inserted " + sent.wstring(), std::wstring(L"\">Call</span>"),
                                   std::wstring(L"Content.Font.Name = Courier New")})
    EXPECT_NE(seen.find(done), std::wstring::npos) << toUtf8(seen);
  EXPECT_FALSE(exists(sent));

  chooseFromNodeMenu(node(L"Brief (3)"), 1);
  untilLines(id::kList2, 3 * 3 + 11 + 6);  // three lines say which module follows
  chooseFromNodeMenu(node(L"Brief (3)"), 0);
  const auto isFolderDialog = [](Window window) {
    constexpr int kPrompt = 14146;
    return window.className() == L"#32770" && GetDlgItem(window.handle(), kPrompt) != nullptr;
  };
  const Window dialog = app().window(isFolderDialog, "a folder dialog");
  dialog.post(WM_COMMAND, IDOK);  // the folder for temporary files, which it starts with
  const std::wstring told = answer();
  EXPECT_TRUE(told.starts_with(L"Alle Module wurden in folgendes Verzeichnis exportiert: \n"));
  const fs::path exported(told.substr(told.find(L'\n') + 1));
  EXPECT_EQ(readFile(exported / L"Brief" / L"Grüße.bas"), kGreeting);
  EXPECT_EQ(readFile(exported / L"Brief" / L"Kunde.cls"), kCustomer);

  main().run(Command::mnutrennen);
  EXPECT_EQ(tree().front(), L"Mappe (geschützt)");
  EXPECT_EQ(hosts.word.count(L"references "), 0);
  EXPECT_EQ(main().close(), 0U);
  EXPECT_TRUE(hosts.word.running()) << "found, not started: left alone";
  EXPECT_TRUE(hosts.excel.ends());
}

// What the stand-in in one process cannot do.
TEST_F(office_program, a_host_that_is_lost_is_told_and_all_can_be_done_again) {
  const struct {
    bool connected;  // before it happens
    const wchar_t* command;
  } rows[] = {{false, L"die ProcCountLines 2"},
              {true, L"die Lines 1"},
              {true, L"quit"},
              {true, L"busy 100000 80010001"}};
  start();
  main().open(folder.write(L"datei.bas", "Sub Datei()\r\n"));
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    if (!hosts.word.running()) hosts.word.start();
    if (row.connected) main().run(Command::mnuword);
    hosts.word.command(row.command);
    const Window nodes = main().control(id::kTreeView1);
    if (row.connected)  // what is lost will not be selected
      nodes.click(placeOfTreeNode(app(), nodes, node(L"    Zählen (5 Z.)")));
    else
      main().window().post(WM_COMMAND, commandId(Command::mnuword));
    EXPECT_EQ(answer(), L"Die Verbindung zu Word wurde unterbrochen, bitte neu einlesen.");
    main().untilIdle();
    EXPECT_TRUE(row.connected || main().lineCount(id::kList1) == 1U) << "stays loaded";
    if (hosts.word.running()) hosts.word.command(L"");
    main().run(Command::mnutrennen);
    EXPECT_EQ(tree(), (Texts{L"gel. Datei", L"  datei.bas"}));
    EXPECT_TRUE(!hosts.word.running() || hosts.word.count(L"references ") == 0);
  }
}

TEST_F(office_program, escape_ends_a_slow_walk_and_closing_waits_for_nobody) {
  hosts.word.start();
  start();
  hosts.word.command(L"slow 60");
  const Started analysing = main().start(Command::mnuword);
  app().until([this] { return hosts.word.count(L"calls ") > 2; }, "the walk");
  EXPECT_NE(GetWindowLongPtrW(main().window().handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
  main().window().pressKey(VK_ESCAPE);
  analysing.finish();
  EXPECT_TRUE(tree().empty()) << "nothing half-built";
  EXPECT_FALSE(messageIsShown());
  main().run(Command::mnutrennen);
  hosts.word.command(L"quit");
  main().run(Command::mnuword);  // starts it
  hosts.word.command(L"busy 100000 80010001");
  main().window().post(WM_CLOSE);
  main().window().post(WM_COMMAND, commandId(Command::mnuexcel));  // refused while it waits
  EXPECT_EQ(app().exitCode(), 0U);
  EXPECT_FALSE(hosts.excel.running());
  EXPECT_EQ(hosts.word.count(L"references "), 0);
}

}  // namespace
}  // namespace tintline::test
