// See controlled_server.h. Tested by tests/win32/office/office_test.cpp.
#include "tests/win32/office/controlled_server.h"

#include <windows.h>

#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "base/file.h"
#include "win32/error.h"
#include "win32/handle.h"

namespace tintline::test {
namespace {

using UniqueKernelHandle = UniqueHandle<HANDLE, CloseHandle>;

constexpr DWORD kPatience = 10'000;  // milliseconds

bool waitUntil(const std::function<bool()>& done) {
  const ULONGLONG end = GetTickCount64() + kPatience;
  while (!done()) {
    if (GetTickCount64() > end) return false;
    Sleep(5);
  }
  return true;
}

// Surely not there: not one that is just being written or removed, which no one may touch.
bool isMissing(const std::filesystem::path& file) {
  std::error_code none;
  return status(file, none).type() == std::filesystem::file_type::not_found;
}

std::filesystem::path serverProgram() {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  return std::filesystem::path(self).replace_filename(L"tintline_office_server.exe");
}

UniqueKernelHandle startProgram(const std::wstring& arguments) {
  const std::filesystem::path program = serverProgram();
  std::wstring line = L'"' + program.wstring() + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &process) == FALSE)
    throwLastError();
  CloseHandle(process.hThread);
  return UniqueKernelHandle(process.hProcess);
}

void runToEnd(const std::wstring& arguments) {
  const UniqueKernelHandle process = startProgram(arguments);
  DWORD code = 1;
  if (WaitForSingleObject(process.get(), kPatience) != WAIT_OBJECT_0 ||
      GetExitCodeProcess(process.get(), &code) == FALSE || code != 0)
    throw std::runtime_error("the server cannot be registered");
}

}  // namespace

ControlledServer::ControlledServer(const std::filesystem::path& folder, const std::wstring& program)
    : name_(program), folder_(folder / program) {
  remove_all(folder_);
  create_directories(folder_);
}

ControlledServer::~ControlledServer() {
  try {
    if (!running()) return;
    command("quit");
    waitForEnd();
  } catch (const std::exception&) {  // the end of the session ends it
  }
}

void ControlledServer::write(const std::wstring& file, std::string_view text) const {
  std::ofstream stream(folder_ / file, std::ios::binary);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (!stream) throw std::runtime_error("a file for the server cannot be written");
}

std::string ControlledServer::read(const std::wstring& file) const {
  std::string text;
  const auto tryToRead = [&] {
    try {
      if (!isMissing(folder_ / file)) text = readFile(folder_ / file);
      return true;
    } catch (const FileError&) {  // the server is replacing it
      return false;
    }
  };
  if (!waitUntil(tryToRead)) throw std::runtime_error("the server's file cannot be read");
  return text;
}

void ControlledServer::start() const {
  remove(folder_ / L"status.txt");
  const UniqueKernelHandle process =
      startProgram(name_ + L" \"" + folder_.parent_path().wstring() + L'"');
  if (!waitUntil([&] { return !isMissing(folder_ / L"status.txt"); }))
    throw std::runtime_error("the server does not start");
}

void ControlledServer::registerAt(const std::filesystem::path& folder) {
  runToEnd(L"--register \"" + folder.wstring() + L'"');
}

void ControlledServer::unregister() { runToEnd(L"--unregister"); }

void ControlledServer::command(std::string_view lines) const {
  AtomicFile file(folder_ / L"commands.txt");
  file.stream() << lines;
  file.commit();
  untilTaken(L"commands.txt");
}

std::string ControlledServer::status(std::string_view key) const {
  if (writtenStatus("state") == "running") {
    write(L"ask", {});
    untilTaken(L"ask");
  }
  return writtenStatus(key);
}

std::string ControlledServer::writtenStatus(std::string_view wanted) const {
  std::istringstream lines(read(L"status.txt"));
  for (std::string key, value; lines >> key >> value;)
    if (key == wanted) return value;
  return {};
}

void ControlledServer::untilTaken(const std::wstring& file) const {
  if (!waitUntil([&] { return isMissing(folder_ / file) || writtenStatus("state") != "running"; }))
    throw std::runtime_error("the server does not answer");
}

long ControlledServer::count(std::string_view key) const {
  const std::string value = status(key);
  return value.empty() ? 0 : std::stol(value);
}

bool ControlledServer::waitForEnd() const {
  const UniqueKernelHandle process(
      OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(count("process"))));
  return !process || WaitForSingleObject(process.get(), kPatience) == WAIT_OBJECT_0;
}

}  // namespace tintline::test
