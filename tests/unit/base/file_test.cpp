// Tests of base/file.h; tests/cli/run.py has devices and full disks.
#include "base/file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "tests/support/ordinary_user.h"
#include "tests/support/temp_folder.h"

#ifndef _WIN32
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>
#endif

namespace tintline {
namespace {

namespace fs = std::filesystem;
using test::OrdinaryUser;
using test::TempFolder;

void put(const fs::path& path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

void writeAtomic(const fs::path& path, std::string_view content) {
  AtomicFile file(path);
  file.stream() << content;
  file.commit();
}

// The reason why `action` fails; no error when it does not.
std::error_code failure(const std::function<void()>& action) {
  try {
    action();
  } catch (const FileError& error) {
    return error.reason();
  }
  return {};
}

TEST(ReadFile, givesEveryByteOrTheReason) {
  const TempFolder folder;
  const fs::path name = folder / u8"Übung Ω 😀.bas";
  std::string large;
  for (int i = 0; i < 1'280'000; ++i) large += static_cast<char>(i);
  for (const std::string& content : {std::string(), large}) {
    put(name, content);
    EXPECT_EQ(readFile(name), content);
  }
  EXPECT_EQ(failure([&] { readFile(folder.path()); }), std::errc::is_a_directory);
  try {
    readFile(folder / u8"fehlt ä.bas");
    FAIL();
  } catch (const FileError& error) {
    EXPECT_EQ(error.path(), folder / u8"fehlt ä.bas");
    EXPECT_TRUE(std::string_view(error.what()).ends_with("fehlt ä.bas: file not found"));
  }
  EXPECT_EQ(reasonText({9999, std::generic_category()}).german, L"Fehler 9999");
  EXPECT_EQ(reasonText(std::make_error_code(std::errc::permission_denied)).german,
            L"Zugriff verweigert");
}

TEST(AtomicFile, replacesTheWholeFileAtTheCommitOnly) {
  const TempFolder folder;
  const fs::path name = folder / u8"Ergebnis Ω.htm";
  for (const std::string& content :
       {std::string("lang\nlang\r\n"), std::string(), std::string(3'000'000, 'x')}) {
    writeAtomic(name, content);
    EXPECT_EQ(readFile(name), content);
  }
  put(name, "alt");
  {
    AtomicFile file(name);
    file.stream() << "neu" << std::flush;
    EXPECT_EQ(readFile(name), "alt");
  }
  EXPECT_EQ(failure([&] {
              AtomicFile file(name);
              file.stream().setstate(std::ios::failbit);
              file.commit();
            }),
            std::errc::io_error);
  EXPECT_EQ(readFile(name), "alt");
  EXPECT_EQ(folder.entries(), 1) << "what was written is gone";
}

TEST(AtomicFile, refusesWhatIsNoFileOrProtected) {
  const TempFolder folder;
  fs::create_directory(folder / "d");
  put(folder / "a.htm", "alt");
  fs::permissions(folder.path(), fs::perms::all);
  fs::permissions(folder / "a.htm", fs::perms(0444));
  const std::pair<fs::path, std::errc> rows[] = {
      {folder / "d", std::errc::is_a_directory},
      {folder / "none" / "a.htm", std::errc::not_a_directory},
      {folder / "", std::errc::is_a_directory},
      {folder / "a.htm", std::errc::permission_denied},
#ifdef _WIN32
      {folder / "a?b.htm", std::errc::invalid_argument},
#else
      {folder / std::string(256, 'n'), std::errc::filename_too_long},
#endif
  };
  for (const auto& row : rows) {
    const std::error_code found = [&] {
      [[maybe_unused]] const OrdinaryUser user;
      return failure([&] { writeAtomic(row.first, "neu"); });
    }();
    EXPECT_EQ(found, row.second) << row.first;
  }
  EXPECT_EQ(failure([&] { writeAtomic("", "x"); }), std::errc::invalid_argument);
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  EXPECT_EQ(folder.entries(), 2);
  fs::permissions(folder / "a.htm", fs::perms(0644));  // else it cannot be removed everywhere
}

#ifndef _WIN32

TEST(ReadFile, readsWhatDoesNotKnowItsSize) {
  const TempFolder folder;
  const std::string content(300'000, 'x');
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::thread writer([&] { put(folder / "pipe", content); });
  EXPECT_EQ(readFile(folder / "pipe"), content);
  writer.join();
}

// A signal ends a write that waits for its reader, with a part of the text written.
TEST(AtomicFile, writesTheRestBehindASignal) {
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  struct sigaction noted = {}, before = {};
  noted.sa_handler = [](int) {};
  ::sigaction(SIGUSR1, &noted, &before);
  std::string content;
  for (int i = 0; i < 50'000; ++i) content += std::to_string(i);
  std::thread writer([&] {
    writeAtomic("/dev/fd/" + std::to_string(pipe[1]), content);
    ::close(pipe[1]);
  });
  for (int waiting = 0; waiting < 0x10000; ::ioctl(pipe[0], FIONREAD, &waiting))
    std::this_thread::yield();
  ::pthread_kill(writer.native_handle(), SIGUSR1);
  EXPECT_TRUE(readFile("/dev/fd/" + std::to_string(pipe[0])) == content);
  writer.join();
  ::close(pipe[0]);
  ::sigaction(SIGUSR1, &before, nullptr);
}

TEST(AtomicFile, followsSymbolicLinksAndKeepsPermissions) {
  const TempFolder folder;
  fs::create_directory(folder / "d");
  const fs::path file = folder / "d" / std::string(255, 'n');
  fs::create_symlink(file, folder / "link");
  fs::create_symlink("link", folder / "link2");
  const mode_t mask = ::umask(022);
  for (const int permissions : {0644, 0600, 0666, 0755}) {  // the first by the mask
    if (fs::exists(file)) fs::permissions(file, fs::perms(permissions));
    writeAtomic(folder / "link2", std::to_string(permissions));
    EXPECT_EQ(readFile(file), std::to_string(permissions));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(permissions));
    EXPECT_TRUE(fs::is_symlink(folder / "link") && fs::is_symlink(folder / "link2"));
  }
  ::umask(mask);
  fs::create_symlink("circle", folder / "circle");
  EXPECT_EQ(failure([&] { writeAtomic(folder / "circle", "x"); }),
            std::errc::too_many_symbolic_link_levels);
}

#else

TEST(AtomicFile, writesADeviceAndLeavesAFileInUse) {
  writeAtomic("NUL", "x");
  EXPECT_FALSE(fs::exists("NUL"));
  const TempFolder folder;
  put(folder / "a.htm", "alt");
  const std::ifstream reader(folder / "a.htm");
  EXPECT_EQ(failure([&] { writeAtomic(folder / "a.htm", "neu"); }), std::errc::permission_denied);
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  EXPECT_EQ(folder.entries(), 1);
}

#endif

}  // namespace
}  // namespace tintline
