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

namespace tintline {

bool operator==(OfficeOut a, OfficeOut b) { return a.value == b.value; }

namespace test {
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
    "procedure 0 2 5 Grüßen\n"
    "procedure 0 7 5 Zählen\n"
    "component 2 kunde.cls Kunde\n"
    "procedure 3 2 3 Wert\n"
    "procedure 2 5 2 Quelle\n"
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
    excel.write(L"projects.txt",
                "project Mappe\nprotection 1\nproject VBAProject\n"
                "file C:\\Mappe.xls\ncomponent 3 kunde.cls Eingabe\n");
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

template <class... Values>
OfficeValue get(const OfficeObjectPtr& object, std::wstring_view member, Values... values) {
  std::vector<OfficeValue> arguments{OfficeValue(values)...};
  return object->get(member, arguments);
}

template <class... Values>
OfficeObjectPtr objectOf(const OfficeObjectPtr& object, std::wstring_view member,
                         Values... values) {
  return std::get<OfficeObjectPtr>(get(object, member, values...));
}

struct office : testing::Test {
  Hosts hosts;
  MessagePump pump;
  SystemOffice system{pump};

  OfficeObjectPtr projects(const OfficeObjectPtr& application) const {
    return objectOf(objectOf(application, L"VBE"), L"VBProjects");
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
      {L"", Kind::Failed, 438, L"", [&] { get(word, L"Größe"); }},
      {L"", Kind::Failed, 449, L"", [&] { get(projects(word), L"Item"); }},
      {L"", Kind::Failed, 13, L"", [&] { get(projects(word), L"Item", OfficeObjectPtr()); }},
      {L"", Kind::Failed, 9, L"Index außerhalb", [&] { get(projects(word), L"Item", 9); }},
      {L"fail Count 8002000E", Kind::Failed, 450, L"", count},
      {L"fail Count 800A004B  Pfad fehlt. ", Kind::Failed, 75, L"Pfad fehlt.", count},
      {L"fail Count 800A0007", Kind::Failed, 7, L"", count},
      {L"refuse", Kind::AccessRefused, 6068, L"Der Zugriff ist nicht sicher", count},
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
  EXPECT_EQ(get(projects(word), L"Count"), OfficeValue(2)) << "and goes on";
}

TEST_F(office, values_of_all_kinds_come_and_go) {
  hosts.word.start();
  const auto word = system.connect(L"Word.Application").object;
  const OfficeApplication excel = system.connect(L"Excel.Application");
  EXPECT_TRUE(excel.created);
  excel.object->put(L"Visible", true);
  EXPECT_EQ(get(excel.object, L"Visible"), OfficeValue(true));
  EXPECT_EQ(get(objectOf(projects(excel.object), L"Item", 1), L"Protection"), OfficeValue(1))
      << "a floating-point number";
  const long asked = hosts.word.count(L"names ");
  for (int round = 0; round < 3; ++round) {
    const auto project = objectOf(projects(word), L"Item", 1);
    const auto module = objectOf(objectOf(project, L"VBComponents"), L"Item", L"Grüße");
    const auto code = objectOf(module, L"CodeModule");
    EXPECT_EQ(get(code, L"Lines", 3, 2), OfficeValue(L"' Grüßt.\r\nPublic Sub Grüßen()"));
    std::vector<OfficeValue> arguments{8, OfficeOut{77}};
    EXPECT_EQ(code->get(L"ProcOfLine", arguments), OfficeValue(L"Zählen"));
    EXPECT_EQ(std::get<OfficeOut>(arguments[1]).value, 0) << "written by the host";
  }
  EXPECT_EQ(hosts.word.count(L"names ") - asked, 8) << "once for all objects of a kind";
  const auto document = objectOf(objectOf(word, L"Documents"), L"Add");
  std::vector<OfficeValue> arguments{0, std::monostate(), L"Ω", false, std::monostate()};
  document->call(L"Close", arguments);
  EXPECT_NE(hosts.word.status().find(L"Document1.Close(0, , Ω, False)"), std::wstring::npos);
}

TEST_F(office, a_busy_host_is_asked_again_while_messages_pass) {
  hosts.word.start();
  const auto word = system.connect(L"Word.Application").object;
  static int timers;
  const UINT_PTR timer = SetTimer(nullptr, 0, 20, [](HWND, UINT, UINT_PTR, DWORD) { ++timers; });
  for (const wchar_t* code : {L"80010001", L"8001010A", L"800AC472"}) {
    timers = 0;
    hosts.word.command(std::wstring(L"busy 3 ") + code);
    EXPECT_EQ(get(word, L"Visible"), OfficeValue(true));
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

TEST_F(office, a_host_is_let_go_with_the_last_pointer_and_may_die) {
  hosts.word.start();
  auto word = system.connect(L"Word.Application").object;
  auto all = projects(word);
  EXPECT_TRUE(errorOf([&] { get(all, L"Item", 9); })) << "a failed call holds nothing";
  EXPECT_EQ(hosts.word.count(L"references "), 2);
  word = nullptr;
  EXPECT_EQ(get(all, L"Count"), OfficeValue(2)) << "an object outlives what it came from";
  hosts.word.command(L"die Count 1");
  for (const wchar_t* member : {L"Count", L"Count", L"Missing"})
    EXPECT_EQ(errorOf([&] { get(all, member); })->kind(), Kind::ConnectionLost);
  all = nullptr;
  OfficeApplication again = system.connect(L"Word.Application");
  EXPECT_TRUE(again.created);
  get(again.object, L"Quit");
  again = {};
  EXPECT_TRUE(hosts.word.ends());
}

// ---------------------------------------------------------------------- the running program

class office_program : public ProgramTest {
 protected:
  std::size_t node(std::wstring_view text) const {
    const Texts texts = tree();
    const auto found = std::ranges::find(texts, text);
    if (found == texts.end()) throw Failure("no node " + fs::path(text).string());
    return static_cast<std::size_t>(found - texts.begin());
  }

  // Clicks a node and waits for so many lines of code.
  void read(std::wstring_view text, std::size_t count) const {
    main().clickNode(node(text));
    untilLines(id::kList1, count);
  }

  void exportInto(std::wstring_view text, int entry) const {
    chooseFromNodeMenu(node(text), entry);
    const auto isFolderDialog = [](Window window) {
      constexpr int kPrompt = 14146;
      return window.className() == L"#32770" && GetDlgItem(window.handle(), kPrompt) != nullptr;
    };
    const Window dialog = app().window(isFolderDialog, "a folder dialog");
    dialog.post(WM_COMMAND, IDOK);  // the folder for temporary files, which it starts with
    app().untilGone(dialog);
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
  expected.insert(expected.end(), {L"Geheim (geschützt)", L"Mappe (1)", L"  Eingabe (6 Z.)",
                                   L"    Declaration (6 Z.)", L"gel. Datei", L"  datei.bas"});
  expected[11] = L"Mappe (geschützt)";
  EXPECT_EQ(tree(), expected);
  EXPECT_EQ(hosts.excel.count(L"visible "), 1) << "started by the program, and shown";
  EXPECT_EQ(GetWindowLongPtrW(main().window().handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);

  read(L"    Set Quelle (2 Z.)", 2);
  EXPECT_EQ(line(id::kList1, 0), "Property Set Quelle(o As Object) ");
  read(L"    Declaration (6 Z.)", 6);
  read(L"    Zählen (5 Z.)", 5);
  main().convert();
  EXPECT_EQ(main().lineCount(id::kList2), 5U);
  main().pressAndWait(id::kCmdModul);
  exportTo(folder / L"Modul.htm");
  EXPECT_EQ(folder.read(L"Modul.htm"), page(folder.write(L"Grüße.bas", kGreeting)));

  const fs::path sent = hosts.temporary() / L"TINTLINE-Word.htm";
  main().pressAndWait(id::kCmdWord);
  const std::string inserted = readFile(hosts.word.folder() / L"inserted.htm");
  EXPECT_NE(inserted.find("\">Call</span>"), std::string::npos) << inserted;
  for (const std::wstring& done :
       {L"Document1.Content.InsertFile(" + sent.wstring() + L", , False)",
        std::wstring(L"Document1.Content.Font.Name = Courier New")})
    EXPECT_NE(hosts.word.status().find(done), std::wstring::npos) << toUtf8(hosts.word.status());
  EXPECT_FALSE(exists(sent));

  chooseFromNodeMenu(node(L"Brief (3)"), 1);
  untilLines(id::kList2, 3 * 3 + 11 + 6);  // three lines say which module follows
  exportInto(L"Brief (3)", 0);
  const std::wstring told = answer().text;
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

TEST_F(office_program, whatever_fails_is_told_and_all_can_be_done_again) {
  const std::wstring refused =
      L"Bitte die Sicherheitseinstellungen für Makros ändern oder Word manuell starten.";
  const std::wstring lost = L"Die Verbindung zu Word wurde unterbrochen, bitte neu einlesen.";
  const auto click = [this] { main().clickNode(node(L"    Zählen (5 Z.)")); };
  const auto analyse = [this] { main().window().post(WM_COMMAND, commandId(Command::mnuword)); };
  const struct {
    bool connected;  // before it happens
    const wchar_t* commands;
    std::function<void()> action;
    std::wstring message;  // a part of it
  } rows[] = {
      {false, L"refuse", analyse, refused},
      {false, L"die ProcCountLines 2", analyse, lost},
      {true, L"fail InsertFile 800A1436 Datei nicht gefunden",
       [this] { main().window().post(WM_COMMAND, commandId(Command::mnu2word)); },
       L"Error 5174 (Datei nicht gefunden) in procedure cmdWord_Click of Formular frmVBACode"},
      {true, L"die Lines 1", click, lost},
      {true, L"quit", click, lost},
      {true, L"busy 100000 80010001", click, lost},
      {true, L"fail Kunde.Export 800A004B Fehler beim Zugriff",
       [this] { exportInto(L"  Kunde (6 Z.)", 0); },
       L"Das Modul \"Kunde\" konnte nicht exportiert werden: \nFehler beim Zugriff"},
      {false, L"quit",
       [&] {
         ControlledServer::unregister();
         analyse();
       },
       L"Error 429 ("},
  };
  start();
  main().open(folder.write(L"datei.bas", "Sub Datei()\r\n"));
  main().convert();
  Texts usable = kWordTree;
  usable.insert(usable.end(), {L"gel. Datei", L"  datei.bas"});
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    if (!hosts.word.running()) hosts.word.start();
    main().run(Command::mnuword);
    EXPECT_EQ(tree(), usable);
    if (!row.connected) main().run(Command::mnutrennen);
    const std::size_t loaded = main().lineCount(id::kList1);
    hosts.word.command(row.commands);
    row.action();
    EXPECT_NE(answer().text.find(row.message), std::wstring::npos);
    main().untilIdle();
    EXPECT_TRUE(row.connected || main().lineCount(id::kList1) == loaded) << "stays loaded";
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
  hosts.word.ends();
  main().run(Command::mnuword);  // starts it
  hosts.word.command(L"busy 100000 80010001");
  main().window().post(WM_CLOSE);
  main().window().post(WM_COMMAND, commandId(Command::mnuexcel));  // refused while it waits
  EXPECT_EQ(app().exitCode(), 0U);
  EXPECT_FALSE(hosts.excel.running());
  EXPECT_EQ(hosts.word.count(L"references "), 0);
}

}  // namespace
}  // namespace test
}  // namespace tintline
