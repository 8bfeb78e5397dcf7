// Tests of sources/: files and pasted texts become lines, projects become trees and files.
#include <gtest/gtest.h>

#include "base/codepage.h"
#include "base/file.h"
#include "sources/module_export.h"
#include "sources/module_file_reader.h"
#include "sources/pasted_text.h"
#include "sources/project_analysis.h"
#include "tests/support/convert.h"
#include "tests/support/fake_office.h"
#include "tests/support/literal_text.h"
#include "tests/support/random_text.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {
namespace {

using namespace std::string_literals;

std::string joined(const LineList& lines) {
  std::string text;
  for (const std::string& line : strings(lines)) text += line + "|";
  return text;
}

TEST(ModulDateiLesen, SplitsFilesAndPastedTextsAtTheirLineEnds) {
  const struct {
    std::string text, file, pasted;
  } rows[] = {
      {"", "", ""},
      {"a\r\nb\r\n", "a |b |", "a |b | |"},
      {"a\rb\r", "a |b |", "a |b | |"},
      {"a\nb\n", "a |b |", "a |b | |"},
      {"a\n\nb", "a | |b |", "a | |b |"},
      {"a\nb\r\n\nc", "a\nb |\nc |", "ab |c |"},  // where there is a CR, LF alone is no line end
      {"a\r\r\nb", "a | |b |", "a | |b |"},
      {"\r\n\r\n", " | |", " | | |"},
      {"\ta\t \r\n", "\ta\t  |", "a  | |"},  // tabs go from a pasted text
      {"a\0b\x1A"s, "a\0b\x1A |"s, "a\0b\x1A |"s},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(joined(ModulDateiLesen(row.text).List1), row.file) << row.text;
    EXPECT_EQ(joined(Einfügen(row.text).List1), row.pasted) << row.text;
  }
  EXPECT_EQ(decodeModuleText("\xEF\xBB\xBF\xC3\xA4"), "\xC3\xA4") << "the other bytes stay";
  EXPECT_EQ(decodeModuleText("\xFF\xFE\xE4\0\xAC\x20"s), "\xE4\x80");
  EXPECT_EQ(decodeModuleText("\xFE\xFF\0\xE4\x20\xAC"s), "\xE4\x80");
  EXPECT_EQ(decodeModuleText("\xEF\xBB"), "\xEF\xBB");
}

// tests/cli/run.py has the longest files.
TEST(ModulDateiLesen, TellsEveryLineAndStopsBehindTheLastCountableOne) {
  std::size_t told = 0;
  const LineProgress progress = [&](std::size_t lines) { EXPECT_EQ(lines, ++told); };
  EXPECT_TRUE(ModulDateiLesen(std::string(kMaxLines + 1, '\r'), progress).tooManyLines);
  EXPECT_EQ(told, kMaxLines);
  EXPECT_FALSE(Einfügen(std::string(kMaxLines - 1, '\r')).tooManyLines);
}

TEST(ModulDateiLesen, CollectsProcedureNames) {
  const std::pair<const char*, ProcedureNames> rows[] = {
      {"Public Function Wert(ByVal a As Long) As Long", {" Wert"}},
      {"  private   sub  X (  )", {" X"}},
      // Only the known words go, wherever they stand.
      {"Friend Sub X()", {" FriendX"}},
      {"Sub MySub Sub (x)", {" My"}},
      {"Private\tSub X()", {" Private\tX"}},
      // A head is told by its words alone.
      {"' siehe Sub Test(", {" 'sieheTest"}},
      {"x = \"a Sub b(\"", {" x=\"ab"}},
      // No heads.
      {"End Sub ' (", {}},
      {"Sub X", {}},
      {"Subway(x)", {}},
      {"Private Declare Function F Lib \"x\" ()", {}},
      {"Property Get Name() As String", {}},
      {"Friend Sub X() End ", {}},
      {"Private Sub Send (x)", {}},
      {"x = \"Sub x(\"", {}},
      {"x = \"FUNCTION x(\"", {}},
  };
  for (const auto& [line, names] : rows) EXPECT_EQ(ModulDateiLesen(line).ProzNamen, names) << line;
  EXPECT_EQ(Einfügen("Sub\t a()\rx\rSub b()\rSub a()").ProzNamen,
            (ProcedureNames{" a", " b", " a"}));
}

// The name in a head by its rule: word after word is taken out, in whatever case.
TEST(ModulDateiLesen, TakesOneWordAfterTheOtherOutOfAName) {
  std::size_t heads = 0;
  forEachShortText(4, "headPart", [&](const std::string& head) {
    ProcedureNames names;
    collectProcedureName(head + "()", names);
    if (names.empty()) return;
    std::string name = head;
    for (const std::string word : {"Private ", "Public ", "Declare ", "Function ", "Sub ", " "}) {
      std::string kept;
      while (const std::size_t position = literal::InStrText(name, word)) {
        kept += literal::Left(name, position - 1);
        name = literal::Mid(name, position + word.size());
      }
      name = kept + name;
    }
    ASSERT_EQ(names[0], " " + name) << head;
    ++heads;
  });
  EXPECT_GT(heads, 10'000u);
}

TEST(ModuleExport, ANameBecomesOneThatAFileMayHaveInItsFolder) {
  const std::pair<std::wstring, const wchar_t*> rows[] = {
      {L"Größe Ω.bas", L"Größe Ω.bas"},
      {L"a<b>c:d\"e/f\\g|h?i*j\tk\x1F", L"a_b_c_d_e_f_g_h_i_j_k_"},
      {L"a\0b"s, L"a"},
      {L"", L"_"},
      {L" a. .", L" a___"},
      {L"..", L"__"},
      {L"..\\..\\a.bas", L".._.._a.bas"},
      {L"C:\\a", L"C__a"},
      // devices
      {L"con.bas", L"_con.bas"},
      {L"Nul .x.bas", L"_Nul .x.bas"},
      {L"COM1.txt", L"_COM1.txt"},
      {L"lpt\u00B2", L"_lpt\u00B2"},
      {L"CONIN$", L"_CONIN$"},
      {L"COM0", L"COM0"},
      {L"COM10", L"COM10"},
      {L"aCON", L"aCON"},
  };
  for (const auto& [name, file] : rows)
    EXPECT_EQ(fkt_PfadVerbinden("folder", name), "folder" / pathFromText(file));
}

TEST(ModuleExport, FilesLieBelowTheDayAndTheDocument) {
  const TempFolder folder;
  const std::filesystem::path day = fkt_DatumsOrdner(
      folder.path(), std::chrono::year(2025) / std::chrono::March / std::chrono::day(9));
  EXPECT_EQ(day, folder / "VBA-20250309");
  for (const auto& [type, file] : std::initializer_list<std::pair<int, const char*>>{
           {1, "M.bas"}, {2, "M.cls"}, {100, "M.cls"}, {3, "M.frm"}, {11, "M.txt"}})
    EXPECT_EQ(fkt_ExportPfad(day, L"   Brief ", L"M", type), day / "Brief" / file);
  EXPECT_TRUE(std::filesystem::is_directory(day / "Brief"));
  AtomicFile(folder / "Datei").commit();
  EXPECT_THROW(fkt_ExportPfad(folder.path(), L"Datei", L"M", 1), FileError);
}

TEST(OfficeProject, DocumentsAreNamedAfterTheirFiles) {
  const struct {
    const wchar_t *file, *title, *folder;  // the title in the tree, the folder of an export
  } rows[] = {
      {L"C:\\a\\Rechnung 1.2.DLL", L"Rechnung 1.2", L"Rechnung 1.2"},
      {L"Mappe.xlsm", L"Mappe", L"Mappe."},  // four characters, whatever they are
      {L"C:\\a\\Project.DLL", L"Dokument", L"Dokument"},
      {L"C:\\a\\project.DLL", L"project", L"project"},
      {L"abc", L"abc", L"Dokument"},
      {L"C:\\a\\.dot", L"Dokument", L"Dokument"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(documentTitle(row.file), row.title);
    EXPECT_EQ(documentFolder(row.file), row.folder);
  }
}

TEST(OfficeProject, AProjectWithoutAPathIsKnownByItsName) {
  FakeOffice office;
  office.word.projects = {{.file = L"", .name = L"Neues", .components = {{.name = L"A"}}}};
  const OfficeObjectPtr application = office.connect(L"Word.Application").object;
  std::vector<Project> projects = projectsOf(application);
  EXPECT_EQ(projects[0].BuildFileName(), L"Neues.DLL");
  EXPECT_EQ(projects[0].VBComponents().Item(L"A").Type(), kStandardModule);
  EXPECT_THROW(projects[0].VBComponents().Item(2), OfficeError);
  try {
    AutomatedObject(application).text(L"Visible");  // a value of another type
    FAIL();
  } catch (const OfficeError& error) {
    EXPECT_EQ(error.number(), 13);
  }
  office.word.end();
  EXPECT_THROW(projects[0].BuildFileName(), OfficeError) << "a lost host has no names at all";
}

class ProjectAnalysis : public testing::Test {
 protected:
  std::optional<ProjectSummary> analyse(
      const FakeProject& project, const std::function<bool()>& goOn = [] { return true; }) {
    office.word.projects = {project};
    std::vector<Project> projects = projectsOf(office.connect(L"Word.Application").object);
    office.word.calls = 0;
    office.word.callsOf.clear();
    return analyseProject(projects[0], goOn);
  }

  // "9: 2, A 3, Get B 4": all lines, those of the declarations, procedures
  std::string analysed(const std::string& code) {
    const ComponentSummary component =
        analyse({.file = L"a.dot", .components = {{.name = L"M", .code = code}}})->components[0];
    std::wstring text =
        std::to_wstring(component.lines) + L": " + std::to_wstring(component.declarationLines);
    for (const ProcedureSummary& procedure : component.procedures)
      text.append(L", ").append(kindPrefix(procedure.kind)).append(procedure.name) +=
          L" " + std::to_wstring(procedure.lines);
    return toUtf8(text);
  }

  FakeOffice office;
};

TEST_F(ProjectAnalysis, ListsEveryProcedureOnceAndMissesNone) {
  const std::string a = "Sub A()\r\nx\r\nEnd Sub\r\n", b = "Sub B()\r\nEnd Sub";
  const std::pair<std::string, const char*> rows[] = {
      {"Dim x\r\n\r\n' tells\r\n" + a + "\r\nFunction B()\r\nEnd Function\r\n'", "10: 1, A 5, B 4"},
      {"Property Get W()\r\nEnd Property\r\nProperty Let W(x)\r\nEnd Property\r\n"
       "Property Set W(x)\r\n\r\nEnd Property\r\nPrivate Sub W2()\r\nEnd Sub",
       "9: 0, Get W 2, Let W 2, Set W 3, W2 2"},
      {a + "Sub A()\r\nEnd Sub\r\n" + b + "\r\n" + a + "Static Sub C()\r\nEnd Sub",
       "12: 0, A 3, B 2, C 2"},
      {b + "\r\n" + a + a + a + "x", "12: 0, B 2, A 3"},  // the end of the module ends the search
  };
  for (const auto& [code, text] : rows) EXPECT_EQ(analysed(code), text) << code;
}

TEST_F(ProjectAnalysis, LargeModulesCostFewCalls) {
  std::string copy = "Sub A()\r\n";
  for (int line = 0; line < 300; ++line) copy += "    x = x + 1\r\n";
  copy += "End Sub\r\n";
  EXPECT_EQ(analysed(copy + copy + "' of B\r\nSub B()\r\nEnd Sub\r\n" + copy +
                     "Property Get C()\r\nEnd Property\r\n" + copy + "Sub D()\r\nEnd Sub"),
            "1215: 0, A 302, B 3, Get C 2, D 2");
  // The project and the component, four that were found, two lines with "Sub" a copy, and all
  // lines at once.
  EXPECT_LE(office.word.calls, 4 + 6 + 4 * 3 + 3 * 2 + 1);
  EXPECT_EQ(office.word.callsOf[L"Lines"], 1);
}

TEST_F(ProjectAnalysis, EndsBetweenItems) {
  const FakeProject project{
      .file = L"a.dot",
      .components = std::vector<FakeComponent>(3, {.name = L"M", .code = "Sub A()\r\nEnd Sub"})};
  for (int last = 1; last <= 6; ++last) {
    int asked = 0;
    EXPECT_FALSE(analyse(project, [&] { return ++asked < last; })) << last;
    EXPECT_EQ(asked, last);
    EXPECT_EQ(office.word.living, 0);
  }
}

}  // namespace
}  // namespace tintline::test
