// See program_folder.h. Tested by every test in tests/win32/program/.
#include "bench/win32/program_folder.h"

#include <windows.h>

#include "base/file.h"
#include "bench/win32/driver.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kPrograms[] = {L"TINTLINE.exe", L"TINTLINE.com"};

// Where the programs were built: beside this one.
fs::path buildFolder() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return fs::path(path).parent_path();
}

}  // namespace

// The window begins where it likes: what it remembered of other runs is gone.
ProgramFolder::ProgramFolder(const std::wstring& name) : path_(scratch_ / name) {
  std::error_code none;
  if (const wchar_t* const user = _wgetenv(L"APPDATA"))
    fs::remove(fs::path(user) / L"TINTLINE" / L"Fenster.ini", none);
  create_directory(path_);
  for (const wchar_t* program : kPrograms) copy_file(buildFolder() / program, path_ / program);
}

fs::path ProgramFolder::write(const std::wstring& name, std::string_view content) const {
  AtomicFile file(path_ / name);
  file.stream() << content;
  file.commit();
  return path_ / name;
}

std::string ProgramFolder::read(const std::wstring& name) const { return readFile(path_ / name); }

std::string ProgramFolder::convert(const fs::path& module, const std::wstring& options) const {
  const fs::path page = scratch_ / L"page.htm";
  const DWORD code =
      runToEnd(path_ / L"TINTLINE.com", L"-q --mode classic -o \"" + page.wstring() + L"\" " +
                                            options + L" \"" + module.wstring() + L"\"");
  if (code != 0) throw Failure("the command line ended with " + std::to_string(code));
  return readFile(page);
}

fs::path sampleModule() { return fs::absolute("data/examples/Musterprojekt.bas"); }

std::string longModule(int lines) {
  std::string text;
  for (int line = 1; line <= lines; ++line)
    text += line % 20 == 1   ? "Public Sub Teil" + std::to_string(line) + "(ByVal x As Long)\r\n"
            : line % 20 == 0 ? "End Sub\r\n"
                             : "    If x > 1 Then MsgBox \"Zeile\" ' Kommentar\r\n";
  return text;
}

std::string heavyModule() {
  constexpr int kLines = 30000, kCalls = 20;
  std::string line, text;
  for (int call = 0; call < kCalls; ++call) line += "Foo(\"a\", b), ";
  for (int i = 0; i < kLines; ++i) text.append(line) += "\r\n";
  return text;
}

}  // namespace tintline::test
