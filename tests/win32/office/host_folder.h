// The folder that says what the automation server of the tests holds and how it behaves, and
// that takes what it has to tell. server.cpp describes the files in it.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tintline::test {

// A procedure of a code module with the comments and blank lines in front of it.
struct Procedure {
  std::wstring name;
  long kind;          // 0 Sub or Function, 1 Property Let, 2 Set, 3 Get
  long start, count;  // lines, the first is 1
};

struct Component {
  std::wstring name;
  long type = 1;
  std::vector<std::wstring> lines;
  long declarationLines = 0;
  std::vector<Procedure> procedures;
};

struct Project {
  std::wstring name, file;
  long protection = 0;
  std::vector<Component> components;
};

// An error as the host raises it.
struct HostError {
  std::uint16_t number;
  std::wstring description;
};

class HostFolder {
 public:
  explicit HostFolder(std::filesystem::path path);

  const std::vector<Project>& projects() const { return projects_; }
  const std::filesystem::path& path() const { return path_; }

  // A call begins: it is counted, and delayed, rejected (the result), failed (HostError) or
  // answered with the end of the process as the commands say. `member`: "" for a question for
  // the number of a name.
  HRESULT beginCall(std::wstring_view object, std::wstring_view member);

  bool refuses() const { return commands_.refuse; }
  bool mustQuit() const { return commands_.quit; }

  // Takes the new commands, if there are any.
  void readCommands();

  // Adds a line to the log.
  void log(std::wstring_view line) const;

  // Whether somebody asks for the status, which is then written.
  bool isAsked() const;
  void answer() const;

  // `state`: running, ended, died.
  void writeStatus(std::string_view state, long references, bool visible) const;

  // Called when the process is to die in the middle of a call.
  std::function<void()> onDeath;

 private:
  struct Failure {
    std::wstring member, object;
    HostError error;
  };
  struct Commands {
    bool refuse = false, quit = false;
    long busyCalls = 0;
    HRESULT busyCode = 0;
    DWORD delay = 0;
    std::wstring deadlyMember;
    long deadlyCount = 0;
    std::vector<Failure> failures;
  };

  void obey(const std::wstring& line);

  std::filesystem::path path_;
  std::vector<Project> projects_;
  Commands commands_;
  std::map<std::wstring, long, std::less<>> calls_;
  long allCalls_ = 0, names_ = 0, rejected_ = 0;
};

// The text of a file: UTF-8 where it begins with that mark or `utf8` says so, else in the ANSI
// code page; its lines without line ends.
std::vector<std::wstring> readLines(const std::filesystem::path& file, bool utf8);

}  // namespace tintline::test
