// See program_test.h. The program's entry; run by ./dev test.
//
// While the tests run, pages are opened by this very program: it notes their names.
#include "tests/win32/program/program_test.h"

#include <algorithm>

#include "base/file.h"

namespace tintline::test {

namespace fs = std::filesystem;

namespace {

constexpr std::wstring_view kNoteOption = L"--note-opened";

fs::path noteFile() { return fs::temp_directory_path() / L"tintline-opened.txt"; }

int noteOpened(std::wstring_view file) {
  const std::u8string name = fs::path(file).u8string();
  AtomicFile note(noteFile());
  note.stream().write(reinterpret_cast<const char*>(name.data()),
                      static_cast<std::streamsize>(name.size()));
  note.commit();
  return 0;
}

void setDefaultValue(const wchar_t* key, const std::wstring& value) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, nullptr, REG_SZ, value.c_str(),
                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring defaultValue(const wchar_t* key) {
  wchar_t value[256] = L"";
  DWORD size = sizeof value;
  RegGetValueW(HKEY_LOCAL_MACHINE, key, nullptr, RRF_RT_REG_SZ, nullptr, value, &size);
  return value;
}

}  // namespace

// Ends the shared program behind the last test, and has pages opened by this program.
class ProgramEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    former_ = defaultValue(kExtension);
    setDefaultValue(kExtension, L"tintline.test");
    setDefaultValue(kOpenCommand,
                    L"\"" + std::wstring(self) + L"\" " + std::wstring(kNoteOption) + L" \"%1\"");
  }

  void TearDown() override {
    SharedProgramTest::end();
    setDefaultValue(kExtension, former_);
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\tintline.test");
  }

 private:
  static constexpr const wchar_t* kExtension = L"Software\\Classes\\.htm";
  static constexpr const wchar_t* kOpenCommand =
      L"Software\\Classes\\tintline.test\\shell\\open\\command";
  std::wstring former_;
};

std::unique_ptr<ProgramFolder> SharedProgramTest::folder_;
std::unique_ptr<RunningProgram> SharedProgramTest::program_;

void SharedProgramTest::SetUp() {
  fs::remove(noteFile());
  if (program_ && program_->app.running()) return;
  end();
  folder_ = std::make_unique<ProgramFolder>();
  program_ = std::make_unique<RunningProgram>(*folder_);
}

// Nobody knows in which state a program is whose test failed.
void SharedProgramTest::TearDown() {
  if (HasFailure()) end();
}

void SharedProgramTest::end() {
  program_.reset();
  folder_.reset();
}

fs::path SharedProgramTest::newFile() const {
  static int number = 0;
  return folder() / (L"Seite " + std::to_wstring(++number) + L".htm");
}

testing::AssertionResult sameText(std::string_view actual, std::string_view expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto parting = std::ranges::mismatch(actual, expected);
  const auto place = static_cast<std::size_t>(parting.in1 - actual.begin());
  const std::size_t begin = place < 40 ? 0 : place - 40;
  return testing::AssertionFailure()
         << actual.size() << " and " << expected.size() << " bytes, different from byte " << place
         << " on: " << testing::PrintToString(std::string(actual.substr(begin, 160)))
         << ", expected " << testing::PrintToString(std::string(expected.substr(begin, 160)));
}

fs::path openedFile(const App& app) {
  std::string name;
  const auto isNoted = [&name] {
    try {
      if (!exists(noteFile())) return false;
      name = readFile(noteFile());
      return true;
    } catch (const FileError&) {  // it is just being written
      return false;
    }
  };
  app.until(isNoted, "the opening of a page");
  fs::remove(noteFile());
  return std::u8string(name.begin(), name.end());
}

}  // namespace tintline::test

int main(int argc, char** argv) {
  using namespace tintline::test;
  const std::vector<std::wstring> arguments = ownArguments();
  if (arguments.size() == 2 && arguments[0] == kNoteOption) return noteOpened(arguments[1]);
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new ProgramEnvironment);
  return RUN_ALL_TESTS();
}
