// Tests of sources/module_export.h.
#include "sources/module_export.h"

#include <gtest/gtest.h>

#include <string>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {
namespace {

using namespace std::string_view_literals;

TEST(ModuleExport, ANameBecomesOneThatAFileMayHave) {
  const struct {
    std::wstring_view name, file;
  } rows[] = {
      {L"Modul1.bas", L"Modul1.bas"},
      {L"Größe Ω", L"Größe Ω"},
      {L"a<b>c:d\"e/f\\g|h?i*j", L"a_b_c_d_e_f_g_h_i_j"},
      {L"a\tb\x1F", L"a_b_"},
      {L"a\0b"sv, L"a"},
      {L"", L"_"},
      {L"\0a"sv, L"_"},
      // at the end
      {L"a.", L"a_"},
      {L"a. .", L"a___"},
      {L" a", L" a"},
      // out of the folder
      {L".", L"_"},
      {L"..", L"__"},
      {L"..\\..\\a.bas", L".._.._a.bas"},
      {L"/etc", L"_etc"},
      {L"C:\\a", L"C__a"},
      {L"\\\\server\\a", L"__server_a"},
      // devices
      {L"CON", L"_CON"},
      {L"con.bas", L"_con.bas"},
      {L"Nul .x.bas", L"_Nul .x.bas"},
      {L"COM1.txt", L"_COM1.txt"},
      {L"lpt\u00B2", L"_lpt\u00B2"},
      {L"CONIN$", L"_CONIN$"},
      {L"COM0", L"COM0"},
      {L"COM10", L"COM10"},
      {L"CONTO", L"CONTO"},
      {L"aCON", L"aCON"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(pathText(fkt_PfadVerbinden("folder", row.name).filename()), row.file)
        << toUtf8(row.name);
}

TEST(ModuleExport, NoNameLeadsOutOfTheFolder) {
  const std::wstring_view pieces[] = {L"..", L"/", L"\\", L"C:", L"a", L" ", L"."};
  for (const auto first : pieces)
    for (const auto second : pieces)
      for (const auto third : pieces) {
        const std::wstring name = std::wstring(first) + std::wstring(second) + std::wstring(third);
        const std::filesystem::path path = fkt_PfadVerbinden("folder", name);
        EXPECT_EQ(path.parent_path(), "folder") << toUtf8(name);
        EXPECT_EQ(path.lexically_normal(), path) << toUtf8(name);
      }
}

TEST(ModuleExport, FilesLieBelowTheDayAndTheDocument) {
  const TempFolder folder;
  const std::filesystem::path day = fkt_DatumsOrdner(
      folder.path(), std::chrono::year(2025) / std::chrono::March / std::chrono::day(9));
  EXPECT_EQ(day, folder / "VBA-20250309");
  const struct {
    int type;
    const char* extension;
  } rows[] = {{1, ".bas"}, {2, ".cls"}, {100, ".cls"}, {3, ".frm"}, {11, ".txt"}, {0, ".txt"}};
  for (const auto& row : rows)
    EXPECT_EQ(fkt_ExportPfad(day, L"  Brief ", L"M", row.type),
              day / "Brief" / (std::string("M") + row.extension));
  EXPECT_TRUE(std::filesystem::is_directory(day / "Brief"));
}

TEST(ModuleExport, AFolderThatCannotBeMadeIsAnError) {
  const TempFolder folder;
  AtomicFile file(folder / "Brief");
  file.commit();
  EXPECT_THROW(fkt_ExportPfad(folder.path(), L"Brief", L"M", 1), FileError);
  EXPECT_THROW(fkt_ExportPfad(folder / "fehlt", L"Brief", L"M", 1), FileError);
}

}  // namespace
}  // namespace tintline::test
