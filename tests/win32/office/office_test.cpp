// Tests of win32/office/office.h, office_object.h, variant.h and of the automation server beside
// this file, over COM between processes.
#include <windows.h>
#include <objbase.h>

#include <string>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/win32/office/office_fixture.h"

namespace tintline::test {
namespace {

// ---------------------------------------------------------------------------- connections
TEST_F(OfficeTest, theRunningApplicationIsPreferredAndLeftRunning) {
  word_.start();
  {
    const OfficeApplication word = office_->connect(L"Word.Application");
    EXPECT_FALSE(word.created);
    EXPECT_EQ(get(word.object, L"Visible"), OfficeValue(true));
    EXPECT_EQ(word_.count("references"), 1);
  }
  EXPECT_EQ(word_.count("references"), 0);
  EXPECT_EQ(word_.status("state"), "running");
}

TEST_F(OfficeTest, oneThatDoesNotRunIsStartedAndCanBeQuit) {
  OfficeApplication word = office_->connect(L"Word.Application");
  EXPECT_TRUE(word.created);
  EXPECT_EQ(word_.status("visible"), "0");
  word.object->put(L"Visible", true);
  EXPECT_EQ(word_.status("visible"), "1");
  EXPECT_FALSE(office_->connect(L"Word.Application").created) << "it runs by now";

  EXPECT_EQ(call(word.object, L"Quit"), OfficeValue());
  EXPECT_TRUE(word_.waitForEnd());
  EXPECT_EQ(word_.status("state"), "ended");
  const auto error = errorOf([&] { get(word.object, L"Visible"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->kind(), Kind::ConnectionLost);
  word = {};
}

TEST_F(OfficeTest, bothApplicationsCanBeConnectedAtOnce) {
  word_.start();
  excel_.write(L"projects.txt", "project Mappe\n");
  excel_.start();
  const auto word = connectWord();
  const auto excel = office_->connect(L"Excel.Application").object;
  EXPECT_EQ(text(get(objectOf(projectsOf(word), L"Item", 1), L"Name")), L"Übung");
  EXPECT_EQ(text(get(objectOf(projectsOf(excel), L"Item", 1), L"Name")), L"Mappe");
  EXPECT_EQ(number(get(projectsOf(excel), L"Count")), 1);
}

TEST_F(OfficeTest, anApplicationThatIsNotInstalledSaysSo) {
  const std::wstring key = L"Software\\Classes\\CLSID\\{3f6bb4a1-52b8-4d53-9d0e-0d8f1a1b6c11}";
  const auto set = [](const std::wstring& name, const std::wstring& value) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, name.c_str(), nullptr, REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  };
  set(L"Software\\Classes\\Tintline.Missing\\CLSID", key.substr(key.rfind(L'{')));
  set(key + L"\\LocalServer32", L"C:\\missing\\server.exe");
  for (const wchar_t* name : {L"Tintline.Unknown", L"Tintline.Missing"}) {
    const auto error = errorOf([&] { office_->connect(name); });
    ASSERT_TRUE(error) << toUtf8(name);
    EXPECT_EQ(error->kind(), Kind::NotInstalled) << toUtf8(name);
    EXPECT_EQ(error->number(), 429);
    EXPECT_FALSE(error->description().empty());
  }
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Tintline.Missing");
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
}

// --------------------------------------------------------------------------------- members
TEST_F(OfficeTest, textsAndNumbersOfProjectsArriveWhole) {
  word_.start();
  const auto word = connectWord();
  const auto projects = projectsOf(word);
  EXPECT_EQ(number(get(projects, L"Count")), 2);
  const auto project = objectOf(objectOf(word, L"VBE"), L"VBProjects", 1);
  EXPECT_EQ(text(get(project, L"Name")), L"Übung");
  EXPECT_EQ(text(get(project, L"BuildFileName")), L"C:\\Vorlagen\\Übung €.dotm");
  EXPECT_EQ(number(get(project, L"Protection")), 0);
  EXPECT_EQ(number(get(objectOf(projects, L"Item", L"Geheim"), L"Protection")), 1);
  const auto components = objectOf(project, L"VBComponents");
  EXPECT_EQ(number(get(objectOf(components, L"Item", 1), L"Type")), 100);
  EXPECT_EQ(text(get(objectOf(components, L"Item", 2), L"Name")), L"Höhenmaß");
  const auto empty = objectOf(objectOf(components, L"Item", 1), L"CodeModule");
  EXPECT_EQ(number(get(empty, L"CountOfLines")), 0);
  EXPECT_EQ(text(get(empty, L"Lines", 1, 0)), L"");
}

TEST_F(OfficeTest, proceduresAreFoundByNumbersThatTheHostWritesBack) {
  word_.start();
  const auto code = codeOf(connectWord());
  EXPECT_EQ(number(get(code, L"CountOfLines")), 14);
  EXPECT_EQ(number(get(code, L"CountOfDeclarationLines")), 2);
  EXPECT_EQ(text(get(code, L"Lines", 4, 2)),
            L"' Liest die Höhe.\r\nPublic Property Get Höhe() As Long");
  const struct {
    std::int32_t line;
    const wchar_t* name;
    std::int32_t kind, start, count;
  } rows[] = {{1, L"", 0, 0, 0},     {3, L"Höhe", 3, 3, 5},      {7, L"Höhe", 3, 3, 5},
              {8, L"Höhe", 1, 8, 3}, {11, L"Drucken", 0, 11, 4}, {14, L"Drucken", 0, 11, 4}};
  for (const auto& row : rows) {
    std::vector<OfficeValue> arguments{row.line, OfficeOut{77}};
    EXPECT_EQ(text(code->get(L"ProcOfLine", arguments)), row.name) << row.line;
    EXPECT_EQ(std::get<OfficeOut>(arguments[1]).value, row.kind) << row.line;
    if (row.count == 0) continue;
    EXPECT_EQ(number(get(code, L"ProcStartLine", row.name, row.kind)), row.start) << row.line;
    EXPECT_EQ(number(get(code, L"ProcCountLines", row.name, row.kind)), row.count) << row.line;
  }
}

TEST_F(OfficeTest, aLongModuleIsReadWithOneCall) {
  std::string lines;
  for (int i = 0; i < 10'000; ++i) lines += "  Zeile = \"\xE4\xF6\xFC\"\r\n";
  word_.write(L"hoehe.bas", lines);
  word_.start();
  const auto code = codeOf(connectWord());
  lines.resize(lines.size() - 2);
  EXPECT_EQ(toAnsi(text(get(code, L"Lines", 1, 10'000))), lines);
  EXPECT_EQ(word_.count("calls.Lines"), 1);
}

TEST_F(OfficeTest, theNumberOfANameIsAskedForOnceForAllObjectsOfAKind) {
  word_.start();
  const auto word = connectWord();
  for (int i = 0; i < 5; ++i) get(word, L"Visible");
  EXPECT_EQ(word_.count("calls.Visible"), 5);
  EXPECT_EQ(word_.count("names"), 1);
  for (int i = 0; i < 5; ++i) {
    const auto module = moduleOf(word);  // by VBE, VBProjects, Item, VBComponents, Item
    EXPECT_EQ(number(get(module, L"Type")), 1);
    EXPECT_EQ(number(get(objectOf(module, L"CodeModule"), L"CountOfLines")), 14);
  }
  EXPECT_EQ(word_.count("calls.CountOfLines"), 5);
  EXPECT_EQ(word_.count("names"), 1 + 5 + 3);
}

TEST_F(OfficeTest, aNameHasANumberForEachKindOfObject) {
  word_.start();
  const auto word = connectWord();
  call(word, L"Activate");
  call(objectOf(objectOf(word, L"Documents"), L"Add"), L"Activate");
  EXPECT_EQ(word_.read(L"log.txt"),
            "Application.Activate()\nDocuments.Add()\n"
            "Document1.Activate()\n");
}

TEST_F(OfficeTest, aDocumentIsMadeAndFilled) {
  word_.start();
  const auto word = connectWord();
  word_.write(L"seite.htm", "<pre>Höhe</pre>");
  const std::wstring page = (word_.folder() / L"seite.htm").wstring();
  const auto document = std::get<OfficeObjectPtr>(
      call(objectOf(word, L"Documents"), L"Add", kLeftOut, false, kLeftOut, true));
  const auto content = objectOf(document, L"Content");
  EXPECT_EQ(call(content, L"InsertFile", page, kLeftOut, false), OfficeValue());
  content->put(L"NoProofing", true);
  objectOf(content, L"Font")->put(L"Name", L"Courier Néu");
  objectOf(document, L"PageSetup")->put(L"LeftMargin", 36);
  EXPECT_EQ(number(get(objectOf(document, L"PageSetup"), L"LeftMargin")), 36);
  EXPECT_EQ(get(content, L"NoProofing"), OfficeValue(true));
  EXPECT_EQ(word_.read(L"log.txt"),
            "Documents.Add(, False, , True)\nDocument1.Content.InsertFile(" + toUtf8(page) +
                ", , False)\n"
                "Document1.Content.NoProofing = True\n"
                "Document1.Content.Font.Name = Courier Néu\n"
                "Document1.PageSetup.LeftMargin = 36\n");
  EXPECT_EQ(word_.read(L"inserted.htm"), "<pre>Höhe</pre>");
}

TEST_F(OfficeTest, aComponentIsExported) {
  word_.start();
  const auto target = *folder_ / L"Höhe.bas";
  call(moduleOf(connectWord()), L"Export", target.wstring());
  EXPECT_EQ(readFile(target), kCode);
}

// ------------------------------------------------------------------------------- references
TEST_F(OfficeTest, theHostIsLetGoWithTheLastPointer) {
  word_.start();
  auto word = connectWord();
  {
    const auto projects = projectsOf(word);
    const auto project = objectOf(projects, L"Item", 1);
    EXPECT_EQ(word_.count("references"), 3);
    EXPECT_TRUE(errorOf([&] { get(project, L"Missing"); }));
    EXPECT_TRUE(errorOf([&] { get(projects, L"Item", 9); }));
    EXPECT_EQ(word_.count("references"), 3) << "failed calls hold nothing";
  }
  EXPECT_EQ(word_.count("references"), 1);
  auto code = codeOf(word);
  word = nullptr;
  office_ = nullptr;
  EXPECT_EQ(number(get(code, L"CountOfLines")), 14) << "an object outlives what it came from";
  code = nullptr;
  EXPECT_EQ(word_.count("references"), 0);
  APTTYPE type{};
  APTTYPEQUALIFIER qualifier{};
  EXPECT_EQ(CoGetApartmentType(&type, &qualifier), CO_E_NOTINITIALIZED) << "COM has ended, too";
}

}  // namespace
}  // namespace tintline::test
