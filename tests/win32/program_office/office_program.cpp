// See office_program.h. Tested by every test in this folder.
#include "tests/win32/program_office/office_program.h"

#include <algorithm>

#include "base/file.h"

namespace tintline::test {

namespace fs = std::filesystem;

const std::string_view kGreeting =
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

const std::string_view kCustomer =
    "Private mWert As Long\r\n"
    "Property Get Wert() As Long\r\n"
    "    Wert = mWert\r\n"
    "End Property\r\n"
    "Property Let Wert(ByVal x As Long)\r\n"
    "    mWert = x\r\n"
    "End Property\r\n"
    "Property Set Quelle(o As Object)\r\n"
    "End Property\r\n";

const std::vector<std::wstring> kWordTree = {
    L"Brief (3)",
    L"  ThisDocument (0 Z.)",
    L"  Grüße (11 Z.)",
    L"    Declaration (1 Z.)",
    L"    Grüßen (5 Z.)",
    L"    Zählen (5 Z.)",
    L"  Kunde (9 Z.)",
    L"    Declaration (1 Z.)",
    L"    Get Wert (3 Z.)",
    L"    Let Wert (3 Z.)",
    L"    Set Quelle (2 Z.)",
    L"Geheim (geschützt)",
    L"Brief (1)",
    L"  Kunde (2 Z.)",
    L"    Fremd (2 Z.)",
};

const std::vector<std::wstring> kExcelTree = {
    L"Mappe (2)",      L"  Eingabe (1 Z.)", L"    Declaration (1 Z.)",
    L"  Kunde (2 Z.)", L"    Fremd (2 Z.)",
};

namespace {

constexpr char kWordProjects[] =
    "project Project\n"
    "file C:\\Vorlagen\\Brief.dot\n"
    "component 100 leer.bas ThisDocument\n"
    "component 1 gruesse.bas Grüße\n"
    "component 2 kunde.cls Kunde\n"
    "project Geheim\n"
    "file C:\\Vorlagen\\Geheim.dot\n"
    "protection 1\n"
    "project Project\n"
    "file C:\\Andere\\Brief.dot\n"
    "component 1 fremd.bas Kunde\n";

constexpr char kExcelProjects[] =
    "project VBAProject\n"
    "file C:\\Mappe.xls\n"
    "component 3 eingabe.frm Eingabe\n"
    "component 1 fremd.bas Kunde\n";

std::unique_ptr<TempFolder> scratch;

fs::path hostFolder() { return *scratch / "hosts"; }

// The hosts are installed, and all programs take their temporary files to a folder of ours.
class OfficeEnvironment final : public testing::Environment {
 public:
  void SetUp() override {
    scratch = std::make_unique<TempFolder>();
    create_directory(temporaryFolder());
    for (const wchar_t* name : {L"TEMP", L"TMP"})
      SetEnvironmentVariableW(name, temporaryFolder().c_str());
    ControlledServer::registerAt(hostFolder());
  }
  void TearDown() override {
    ControlledServer::unregister();
    scratch.reset();
  }
};

// Set up in front of the program's own environment, and so taken down behind it.
const testing::Environment* const kEnvironment =
    testing::AddGlobalTestEnvironment(new OfficeEnvironment);

}  // namespace

fs::path temporaryFolder() { return *scratch / "temp"; }

fs::path exportFolder() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  wchar_t name[16];
  swprintf(name, 16, L"VBA-%04d%02d%02d", now.wYear, now.wMonth, now.wDay);
  return temporaryFolder() / name;
}

void OfficeProgramTest::SetUp() {
  SharedProgramTest::SetUp();
  word_.emplace(hostFolder(), L"Word.Application");
  excel_.emplace(hostFolder(), L"Excel.Application");
  for (const ControlledServer* server : {&*word_, &*excel_}) {
    server->write(L"leer.bas", "");
    server->write(L"gruesse.bas", kGreeting);
    server->write(L"kunde.cls", kCustomer);
    server->write(L"fremd.bas", "Sub Fremd()\r\nEnd Sub\r\n");
    server->write(L"eingabe.frm", "Dim y\r\n");
  }
  word_->write(L"projects.txt", kWordProjects);
  excel_->write(L"projects.txt", kExcelProjects);
}

void OfficeProgramTest::TearDown() {
  if (!HasFailure() && app().running()) {
    main().run(Command::mnutrennen);
    main().run(Command::mnutrennen2);
    for (const ControlledServer* server : {&*word_, &*excel_})
      EXPECT_TRUE(server->status("state") == "died" || server->count("references") == 0);
    for (const std::wstring& text : tree())
      EXPECT_FALSE(text.find(L" (") != std::wstring::npos) << "a document's node is left";
  }
  SharedProgramTest::TearDown();
}

std::vector<std::wstring> OfficeProgramTest::tree() const {
  return treeTexts(app(), main().control(id::kTreeView1));
}

std::size_t OfficeProgramTest::node(std::wstring_view text, std::size_t skip) const {
  const std::vector<std::wstring> texts = tree();
  for (std::size_t index = 0; index < texts.size(); ++index)
    if (texts[index] == text && skip-- == 0) return index;
  throw Failure("no such node: " + fs::path(text).string());
}

void OfficeProgramTest::click(std::wstring_view text, std::size_t skip) const {
  main().clickNode(node(text, skip));
}

void OfficeProgramTest::chooseFromMenu(std::wstring_view text, int entry) const {
  main().chooseFromNodeMenu(node(text), entry);
}

void OfficeProgramTest::untilCode(const std::vector<std::string>& lines) const {
  const auto isShown = [&] {
    try {
      return main().lines(id::kList1) == lines;
    } catch (const Failure&) {  // the list has just changed
      return false;
    }
  };
  app().until(isShown, "code of " + std::to_string(lines.size()) + " lines");
  main().untilIdle();
}

void OfficeProgramTest::analyseAndClick(std::wstring_view text) const {
  main().run(Command::mnuword);
  EXPECT_EQ(main().text(id::kLabel9), L"");
  click(text);
  main().untilShown(id::kLabel9, L" Zeilen eingelesen");
  main().untilIdle();
}

void OfficeProgramTest::runIntoMessage(Command command, const std::wstring& text,
                                       const std::wstring& title) const {
  const Started running = main().start(command);
  expectMessage(text, title);
  running.finish();
}

void OfficeProgramTest::expectMessage(const std::wstring& text, const std::wstring& title) const {
  const MessageBoxOf box(app());
  EXPECT_EQ(box.text(), text);
  EXPECT_EQ(box.title(), title);
  EXPECT_TRUE(box.hasIcon());
  box.answer(IDOK);
}

std::string OfficeProgramTest::exportedPage() const {
  const fs::path page = newFile();
  main().exportTo(page);
  EXPECT_EQ(openedFile(app()).filename(), page.filename());
  return readFile(page);
}

}  // namespace tintline::test
