// The program with Word and Excel running, whose documents the tests know.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "tests/app/program_fixture.h"

namespace tintline::test {
inline constexpr std::string_view kModul1 =
    "Option Explicit\r\n"
    "Sub Eins()\r\n"
    "Call Zwei\r\n"
    "End Sub\r\n"
    "\r\n"
    "Private Sub Zwei()\r\n"
    "x = 1\r\n"
    "End Sub";

inline constexpr std::string_view kKunde =
    "Property Get Wert()\r\n"
    "End Property\r\n"
    "Property Let Wert(x)\r\n"
    "' let\r\n"
    "End Property";

class OfficeTest : public ProgramTest {
 protected:
  void SetUp() override {
    start();
    word().running = excel().running = true;
    word().visible = excel().visible = true;
    word().projects = {
        {.file = L"C:\\Vorlagen\\Brief.dot",
         .components = {{.name = L"ThisDocument", .type = 100},
                        {.name = L"Modul1", .code = std::string(kModul1)},
                        {.name = L"Kunde", .type = 2, .code = std::string(kKunde)}}},
        {.file = L"C:\\Geheim.dot", .protection = 1},
        {.file = L"C:\\Project.dot",
         .components = {{.name = L"Modul1", .code = "Sub Declaration()\r\nEnd Sub"}}}};
    excel().projects = {{.file = L"C:\\Mappe.xls",
                         .components = {{.name = L"Eingabe", .type = 3, .code = "Dim y"},
                                        {.name = L"Tabelle1", .type = 100}}}};
    form.PopupMenu = [this](std::span<const MenuEntry> entries) {
      popups.emplace_back(entries.begin(), entries.end());
    };
  }

  FakeHost& word() { return ports.office.word; }
  FakeHost& excel() { return ports.office.excel; }

  // The tree, a node a line, indented: "Modul1 (8 Z.) [modul]".
  std::string tree() const {
    std::wstring text;
    for (const auto& root : form.TreeView1.roots()) add(*root, text);
    return toUtf8(text);
  }

  TreeNode& node(std::wstring_view key) {
    TreeNode* found = form.TreeView1.find(key);
    EXPECT_NE(found, nullptr) << toUtf8(key);
    return found != nullptr ? *found : *form.TreeView1.roots().front();
  }

  void click(std::wstring_view key) { form.TreeView1.userSelected(node(key)); }
  void rightClick(std::wstring_view key) { form.TreeView1.userRightClicked(node(key)); }

  std::vector<std::string> code() const { return strings(form.List1.lines()); }

  // What the user was told last, "title: text".
  std::string told() const {
    const auto& last = ports.dialogs.asked.back();
    return toUtf8(last.title.empty() ? last.text : last.title + L": " + last.text);
  }

  std::vector<std::vector<MenuEntry>> popups;

 private:
  static void add(const TreeNode& node, std::wstring& text) {
    text += std::wstring(2 * (node.path().size() - 1), L' ') + node.Text() + L" [" +
            fromAnsi(node.Image()) + L"]\n";
    for (const auto& child : node.Children()) add(*child, text);
  }
};

inline constexpr char kWordTree[] =
    "Brief (3) [word]\n"
    "  ThisDocument (0 Z.) [this]\n"
    "  Modul1 (8 Z.) [modul]\n"
    "    Declaration (1 Z.) [dec]\n"
    "    Eins (3 Z.) [vb]\n"
    "    Zwei (4 Z.) [vb]\n"
    "  Kunde (5 Z.) [cls]\n"
    "    Get Wert (2 Z.) [vb]\n"
    "    Let Wert (3 Z.) [vb]\n"
    "Geheim (geschützt) [word]\n"
    "Dokument (1) [word]\n"
    "  Modul1 (2 Z.) [modul]\n"
    "    Declaration (2 Z.) [vb]\n";

inline constexpr char kExcelTree[] =
    "Mappe (2) [word]\n"
    "  Eingabe (1 Z.) [frm]\n"
    "    Declaration (1 Z.) [dec]\n"
    "  Tabelle1 (0 Z.) [cls]\n";

inline constexpr char kLost[] =
    "Verbindungsfehler!: Die Verbindung zu Word wurde unterbrochen, bitte neu einlesen.";

}  // namespace tintline::test
