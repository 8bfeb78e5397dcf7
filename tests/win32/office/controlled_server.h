// The automation server of the tests as these start it and tell it what to do. See server.cpp.
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

  void write(const std::wstring& file, std::string_view text) const;

  // COM starts both programs with the files of that folder from now on, or no longer.
  static void registerAt(const std::filesystem::path& folder);
  static void unregister();

  void start() const;  // as the user does
  bool running() const;
  void command(const std::wstring& lines) const;  // to the running one; "quit" waits for its end

  // What the running one tells, and a number of it.
  std::wstring status() const;
  long count(std::wstring_view key) const;

  bool ends() const;  // within some seconds

 private:
  std::wstring name_;
  std::filesystem::path folder_;
};

}  // namespace tintline::test
