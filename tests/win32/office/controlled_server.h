// The automation server as tests use it. See server.cpp for its files.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tintline::test {

class ControlledServer {
 public:
  // The server for `program` ("Word.Application") in that folder, which may serve both programs.
  // It does not run yet, and its files are gone.
  ControlledServer(const std::filesystem::path& folder, const std::wstring& program);
  ~ControlledServer();  // ends it, whoever started it
  ControlledServer(const ControlledServer&) = delete;
  ControlledServer& operator=(const ControlledServer&) = delete;

  // The folder with its files, and one of them.
  const std::filesystem::path& folder() const { return folder_; }
  void write(const std::wstring& file, std::string_view text) const;
  std::string read(const std::wstring& file) const;

  // Starts it as the user does and waits until it is known as running.
  void start() const;
  bool running() const { return status("state") == "running"; }

  // COM starts both programs with the files of that folder from now on, or no longer.
  static void registerAt(const std::filesystem::path& folder);
  static void unregister();

  // What it obeys from now on, or from its start on; waits until a running one knows.
  void command(std::string_view lines) const;

  // A value of the status as it is now: "" for a key that is not there, also when the server
  // was never started.
  std::string status(std::string_view key) const;
  long count(std::string_view key) const;

  // Waits until the process that the status names is gone.
  bool waitForEnd() const;

 private:
  std::string writtenStatus(std::string_view key) const;
  void untilTaken(const std::wstring& file) const;

  std::wstring name_;
  std::filesystem::path folder_;
};

}  // namespace tintline::test
