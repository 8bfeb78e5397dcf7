// What the tests of Word and Excel in the running program stand on: the automation server in
// both roles, registered for the program to find, and what a user does with the tree.
//
// Tested by every test in this folder.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/win32/office/controlled_server.h"
#include "tests/win32/program/program_test.h"

namespace tintline::test {

// Behind every test both connections are ended, and no reference may be left on a server.
class OfficeProgramTest : public SharedProgramTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  ControlledServer& word() { return *word_; }
  ControlledServer& excel() { return *excel_; }

  // The tree as `Text (…)` lines, indented.
  std::vector<std::wstring> tree() const;

  // A node by its text with the indentation; of equal ones the first, or the one that `skip`
  // others stand in front of.
  std::size_t node(std::wstring_view text, std::size_t skip = 0) const;
  void click(std::wstring_view text, std::size_t skip = 0) const;
  void chooseFromMenu(std::wstring_view text, int entry) const;

  // Waits until those lines are shown as the code.
  void untilCode(const std::vector<std::string>& lines) const;

  // Analyses Word and waits for the code of that node.
  void analyseAndClick(std::wstring_view text) const;

  // Starts the command, waits for the message that it ends with, and takes that away.
  void runIntoMessage(Command command, const std::wstring& text, const std::wstring& title) const;

  // Waits for a message of that text; answers it.
  void expectMessage(const std::wstring& text, const std::wstring& title = L"TINTLINE") const;

  // Exports the result to a new file; its bytes.
  std::string exportedPage() const;

 private:
  std::optional<ControlledServer> word_, excel_;
};

// The folder for temporary files, which folder dialogs start in; of these tests alone.
std::filesystem::path temporaryFolder();

// The folder of today's exports in there.
std::filesystem::path exportFolder();

// The code of two modules as it stands in the hosts.
extern const std::string_view kGreeting, kCustomer;

// The trees of both hosts.
extern const std::vector<std::wstring> kWordTree, kExcelTree;

inline const std::wstring kLost = L"Die Verbindung zu Word wurde unterbrochen, bitte neu einlesen.";
inline const std::wstring kLostTitle = L"Verbindungsfehler!";

}  // namespace tintline::test
