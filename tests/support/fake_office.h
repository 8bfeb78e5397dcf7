// A machine with Word and Excel whose documents, projects and code a test describes:
//
//   FakeOffice office;
//   office.word.projects = {{.file = L"C:\\a\\Brief.dot", .components = {{.name = L"Modul1",
//                            .code = "Sub A()\r\nEnd Sub"}}}};
//
// It counts calls and the objects that are held, and fails on request.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/office.h"

namespace tintline::test {

struct FakeComponent {
  std::wstring name;
  std::int32_t type = 1;
  std::string code = {};  // lines with CR LF between them; "" for none
};

struct FakeProject {
  std::wstring file;  // BuildFileName; "" for an error
  std::wstring name = L"Project";
  std::int32_t protection = 0;
  std::vector<FakeComponent> components = {};
};

// A document that was added, and what became of it.
struct FakeDocument {
  std::wstring insertedPath;                        // of the inserted file
  std::string inserted;                             // its bytes
  std::map<std::wstring, std::wstring> properties;  // "Content.NoProofing" is "True"
  bool closed = false;
};

// One application. A test may set everything at any time.
class FakeHost {
 public:
  bool installed = true;
  bool running = false;
  bool visible = false;
  std::vector<FakeProject> projects;
  std::vector<std::unique_ptr<FakeDocument>> documents;

  // What goes wrong.
  bool refusesAccess = false;
  int diesAt = 0;                             // number of the call in which the process ends
  std::map<std::wstring, OfficeError> fails;  // by "Name.Member" or "Member"

  // Called in every call, as if the host let time go by: "VBComponents.Item".
  std::function<void(const std::wstring& member)> onCall;

  // What was seen.
  int calls = 0;
  std::map<std::wstring, int> callsOf;  // by member
  int living = 0;                       // objects that the program holds
  int quits = 0, starts = 0;

  // The user ends it.
  void end() { running = false; }

  OfficeApplication connect();

  // A call of a member of the object of that name; throws what is to go wrong.
  void enter(const std::wstring& object, const std::wstring& member);

  static OfficeError failure(long number, std::wstring description) {
    return {OfficeError::Kind::Failed, number, std::move(description), 0x800A0000};
  }
  static OfficeError busy() {
    return {OfficeError::Kind::Busy, 0, L"Der Aufruf wurde abgewiesen", 0x80010001};
  }
};

class FakeOffice final : public Office {
 public:
  OfficeApplication connect(std::wstring_view programId) override {
    return (programId == L"Word.Application" ? word : excel).connect();
  }

  FakeHost word, excel;
};

}  // namespace tintline::test
