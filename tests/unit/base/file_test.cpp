// Tests of base/file.h.
#include "base/file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>

#include "tests/support/ordinary_user.h"
#include "tests/support/temp_folder.h"

#ifndef _WIN32
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
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

TEST(ReadFile, givesEveryByte) {
  const TempFolder folder;
  std::string everyByte;
  for (int code = 0; code < 256; ++code) everyByte += static_cast<char>(code);
  std::string large;
  for (int i = 0; i < 5000; ++i) large += everyByte;
  for (const std::string& content : {std::string(), everyByte, large}) {
    put(folder / "a.bas", content);
    EXPECT_EQ(readFile(folder / "a.bas"), content);
  }
}

TEST(ReadFile, takesAnyName) {
  const TempFolder folder;
  const fs::path name = u8"Übung Ω 😀.bas";
  put(folder / name, "x");
  EXPECT_EQ(readFile(folder / name), "x");
}

TEST(ReadFile, tellsWhyItFails) {
  const TempFolder folder;
  put(folder / "a.bas", "x");
  EXPECT_EQ(failure([&] { readFile(folder / "none.bas"); }), std::errc::no_such_file_or_directory);
  EXPECT_EQ(failure([&] { readFile(folder.path()); }), std::errc::is_a_directory);
}

TEST(FileError, namesFileAndReason) {
  const TempFolder folder;
  try {
    readFile(folder / u8"fehlt ä.bas");
    FAIL();
  } catch (const FileError& error) {
    EXPECT_EQ(error.path(), folder / u8"fehlt ä.bas");
    const std::string text = error.what();
    EXPECT_TRUE(text.ends_with("fehlt ä.bas: Datei nicht gefunden")) << text;
  }
}

TEST(ReasonText, isGerman) {
  const struct {
    std::errc reason;
    std::wstring_view text;
  } rows[] = {
      {std::errc::no_such_file_or_directory, L"Datei nicht gefunden"},
      {std::errc::permission_denied, L"Zugriff verweigert"},
      {std::errc::is_a_directory, L"ist ein Ordner"},
      {std::errc::no_space_on_device, L"Datenträger ist voll"},
      {std::errc::filename_too_long, L"Name zu lang"},
      {std::errc::file_too_large, L"Datei zu groß"},
      {std::errc::not_enough_memory, L"nicht genug Speicher"},
  };
  for (const auto& row : rows) EXPECT_EQ(reasonText(std::make_error_code(row.reason)), row.text);
  EXPECT_EQ(reasonText({9999, std::generic_category()}), L"Fehler 9999");
}

TEST(AtomicFile, replacesTheWholeFile) {
  const TempFolder folder;
  const fs::path name = folder / u8"Ergebnis Ω.htm";
  for (const std::string& content : {std::string("lang\nlang\r\n"), std::string("kurz"),
                                     std::string(), std::string(3'000'000, 'x')}) {
    writeAtomic(name, content);
    EXPECT_EQ(readFile(name), content);
  }
  EXPECT_EQ(folder.entries(), 1);
}

TEST(AtomicFile, showsNothingBeforeTheCommit) {
  const TempFolder folder;
  put(folder / "a.htm", "alt");
  {
    AtomicFile file(folder / "a.htm");
    file.stream() << "neu" << std::flush;
    EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  }
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  EXPECT_EQ(folder.entries(), 1) << "what was written is gone";
}

TEST(AtomicFile, refusesWhatIsNoFile) {
  const TempFolder folder;
  fs::create_directory(folder / "d");
  EXPECT_EQ(failure([&] { writeAtomic(folder / "d", "x"); }), std::errc::is_a_directory);
  EXPECT_EQ(failure([&] { writeAtomic(folder / "none" / "a.htm", "x"); }),
            std::errc::not_a_directory);
  EXPECT_EQ(failure([&] { writeAtomic(folder / "", "x"); }), std::errc::is_a_directory);
  EXPECT_EQ(failure([&] { writeAtomic("", "x"); }), std::errc::invalid_argument);
  EXPECT_EQ(folder.entries(), 1);
}

TEST(AtomicFile, aFailedStreamIsAFailedFile) {
  const TempFolder folder;
  put(folder / "a.htm", "alt");
  EXPECT_EQ(failure([&] {
              AtomicFile file(folder / "a.htm");
              file.stream().setstate(std::ios::failbit);
              file.commit();
            }),
            std::errc::io_error);
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
}

TEST(AtomicFile, leavesAProtectedFile) {
  const TempFolder folder;
  put(folder / "a.htm", "alt");
  fs::permissions(folder.path(), fs::perms::all);
  fs::permissions(folder / "a.htm", fs::perms(0444));
  const std::error_code reason = [&] {
    [[maybe_unused]] const OrdinaryUser user;
    return failure([&] { writeAtomic(folder / "a.htm", "neu"); });
  }();
  EXPECT_EQ(reason, std::errc::permission_denied);
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  EXPECT_EQ(folder.entries(), 1);
  fs::permissions(folder / "a.htm", fs::perms(0644));  // else it cannot be removed everywhere
}

#ifndef _WIN32

TEST(ReadFile, readsAPipeToItsEnd) {
  const TempFolder folder;
  const std::string content(300'000, 'x');
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::thread writer([&] { put(folder / "pipe", content); });
  EXPECT_EQ(readFile(folder / "pipe"), content);
  writer.join();
}

TEST(ReadFile, readsAFileThatClaimsToBeEmpty) {
  EXPECT_TRUE(readFile("/proc/self/status").starts_with("Name:"));
}

TEST(AtomicFile, writesADeviceDirectly) {
  writeAtomic("/dev/null", "x");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(AtomicFile, tellsThatTheDiskIsFull) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{1'000'000}})
    EXPECT_EQ(failure([&] { writeAtomic("/dev/full", std::string(size, 'x')); }),
              std::errc::no_space_on_device)
        << size;
}

TEST(AtomicFile, aFailedWriteLeavesTheOldFile) {
  const TempFolder folder;
  put(folder / "a.htm", "alt");
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlim_t before = limit.rlim_cur;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  limit.rlim_cur = 5000;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  const std::error_code reason =
      failure([&] { writeAtomic(folder / "a.htm", std::string(6000, 'x')); });
  limit.rlim_cur = before;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(reason, std::errc::file_too_large);
  EXPECT_EQ(readFile(folder / "a.htm"), "alt");
  EXPECT_EQ(folder.entries(), 1);
}

TEST(AtomicFile, takesTheLongestName) {
  const TempFolder folder;
  const fs::path name = folder / std::string(255, 'n');
  writeAtomic(name, "x");
  EXPECT_EQ(readFile(name), "x");
  EXPECT_EQ(failure([&] { writeAtomic(folder / std::string(256, 'n'), "x"); }),
            std::errc::filename_too_long);
  EXPECT_EQ(folder.entries(), 1);
}

TEST(AtomicFile, followsSymbolicLinks) {
  const TempFolder folder;
  fs::create_directory(folder / "d");
  put(folder / "d" / "a.htm", "alt");
  fs::create_symlink("d/a.htm", folder / "link");
  fs::create_symlink(folder / "link", folder / "link2");
  fs::create_symlink("d/new.htm", folder / "dangling");
  writeAtomic(folder / "link2", "neu");
  writeAtomic(folder / "dangling", "neu");
  for (const char* link : {"link", "link2", "dangling"})
    EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
  EXPECT_EQ(readFile(folder / "d" / "a.htm"), "neu");
  EXPECT_EQ(readFile(folder / "d" / "new.htm"), "neu");

  fs::create_symlink("circle", folder / "circle");
  EXPECT_EQ(failure([&] { writeAtomic(folder / "circle", "x"); }),
            std::errc::too_many_symbolic_link_levels);
}

TEST(AtomicFile, keepsThePermissions) {
  const TempFolder folder;
  const mode_t mask = ::umask(022);
  writeAtomic(folder / "new.htm", "x");
  EXPECT_EQ(fs::status(folder / "new.htm").permissions(), fs::perms(0644));
  for (const fs::perms permissions : {fs::perms(0600), fs::perms(0666), fs::perms(0755)}) {
    fs::permissions(folder / "new.htm", permissions);
    writeAtomic(folder / "new.htm", "y");
    EXPECT_EQ(fs::status(folder / "new.htm").permissions(), permissions);
  }
  ::umask(mask);
}

#else

TEST(AtomicFile, writesADeviceDirectly) {
  writeAtomic("NUL", "x");
  EXPECT_FALSE(fs::exists("NUL"));
}

TEST(AtomicFile, refusesWhatIsNoName) {
  const TempFolder folder;
  EXPECT_EQ(failure([&] { writeAtomic(folder / "a?b.htm", "x"); }), std::errc::invalid_argument);
  EXPECT_EQ(folder.entries(), 0);
}

TEST(AtomicFile, leavesAFileInUse) {
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
