// Tests of output/export_name.h.
#include "output/export_name.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

TEST(ExportName, isMadeOfThePath) {
  const struct {
    const char* name;
    std::vector<std::wstring> parts;
    std::wstring_view text;
  } rows[] = {
      {"nothing", {}, L""},
      {"loaded module", {L"Modul1.bas"}, L"Modul1"},
      {"loaded form", {L"a.b.frm"}, L"a.b"},
      {"loaded class", {L"Klasse.cls"}, L"Klasse"},
      {"the case of the extension counts", {L"MODUL1.BAS"}, L"MODUL1.BAS"},
      {"counts and blanks go",
       {L"Brief 1.doc", L"Modul 1 (3)", L"Lesen (12 Z.)"},
       L"Brief1.doc_Modul1_Lesen"},
      {"paths", {L"C:\\x\\y"}, L"C:_x_y"},
      {"several brackets", {L"a(b)c(d)e"}, L"ace"},
      {"brackets in brackets", {L"a(b(c)d)e"}, L"ad)e"},
      {"a bracket that is not closed", {L"a)b(c"}, L"a)b"},
      {"nothing is left of a part", {L"a", L" (b)", L"c"}, L"a_c"},
      {"an extension within the name stays", {L"Modul1.bas", L"x"}, L"Modul1.bas_x"},
      {"umlauts", {L"Übersicht Ω"}, L"ÜbersichtΩ"},
  };
  for (const auto& row : rows) EXPECT_EQ(defaultExportName(row.parts), row.text) << row.name;
}

TEST(ExportName, takesTheExtensionOfTheFilter) {
  const struct {
    std::wstring_view chosen;
    int filter;
    std::wstring_view name;
  } rows[] = {
      {L"C:\\a\\x.txt", 2, L"C:\\a\\x.html"},
      {L"C:\\a\\x.html", 1, L"C:\\a\\x.htm"},
      {L"C:\\a\\x", 1, L"C:\\a\\x.htm"},
      {L"C:\\a.b\\x", 1, L"C:\\a.b\\x.htm"},
      {L"a.b/x", 2, L"a.b/x.html"},
      {L"x.y.z", 1, L"x.y.htm"},
      {L"x.", 1, L"x.htm"},
      {L"x", 2, L"x.html"},
  };
  for (const auto& row : rows) EXPECT_EQ(forceExtension(row.chosen, row.filter), row.name);
}

}  // namespace
}  // namespace tintline
