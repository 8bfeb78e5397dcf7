// The connections to Word and Excel, which may stand side by side, and what is done
// with them: analysing the open documents, sending the result to Word.
//
// Tested by tests/app/office_test.cpp.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/project_source.h"
#include "ports/office.h"
#include "sources/office_project.h"

namespace tintline {

class frmVBACode;

namespace modWord {

// The connection to one application, and the projects that the last analysis found.
class Connection final : public ProjectSource {
 public:
  // `name` is "Word" or "Excel"; it must live as long as the program.
  explicit Connection(std::wstring_view name) : name_(name) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  std::wstring_view name() const override { return name_; }
  bool connected() const { return application_.object != nullptr; }

  // Whether the application can be used further. Excel lives on without its documents, and
  // hidden, when the user closes it while somebody holds it: that counts as gone. A busy one
  // does not.
  bool stands() const;

  // Connects, unless the application of the last time still stands. One that was started
  // for it is shown. Throws OfficeError.
  void connect(Office& office);

  // Ends the connection: nothing of the application is held any more. One that the
  // program started is told to quit; when it is too busy for that, it is kept, to be told
  // another time, and false. Never throws.
  bool disconnect();

  // Ends a connection that cannot be used any more. When only a document was closed, its objects
  // are disconnected as those of an ended application are: the others can be used further, and the
  // connection with them. An application that is too busy to answer and that the program started
  // is only left alone, so that it can be told to quit later.
  void giveUp(const OfficeError& error) override;

  // Reads which projects are open; those of the last time are let go. Throws OfficeError.
  void readProjects();

  // By the index in the host's collection, from 1 on; throws OfficeError when there is none.
  Project& project(std::size_t index) override;
  std::size_t projectCount() const override { return projects_.size(); }

  // A new document with the page, which the application inserts by itself: in a fixed-width
  // font over the width of the paper, without marks of the spelling check. The application
  // belongs to the user from then on, also one that the program started. Connects for the
  // time of the call when there is no connection. Throws OfficeError; no document is left
  // behind then.
  void insertDocument(Office& office, const std::filesystem::path& page);

 private:
  void forget();

  std::wstring_view name_;
  OfficeApplication application_;
  std::vector<Project> projects_;
};

// What the user is told of a failure of "Word" or "Excel" inside that procedure,
// "Baumübersicht of Formular frmVBACode".
struct FailureMessage {
  std::wstring text, title;
};
FailureMessage failureMessage(const OfficeError& error, std::wstring_view application,
                              std::wstring_view procedure);

// The same of an application that cannot be reached.
FailureMessage connectionLost();

// Show the projects of the open documents in the form's tree.
void Wordanalyse(frmVBACode& form);
void Excelanalyse(frmVBACode& form);

}  // namespace modWord
}  // namespace tintline
