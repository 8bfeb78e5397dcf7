// What opening files needs of the platform; for base/file.cpp only.
//
// Tested by tests/unit/base/file_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace tintline::detail {

// Files are given by their descriptors.

// Opens an existing file, or creates one or empties it; one that this process has
// open is written from where it stands. Binary. -1 and errno on failure.
int openToRead(const std::filesystem::path& path);
int openToWrite(const std::filesystem::path& path);

// How many bytes were read or written, up to `size`; 0 at the end of the file, -1 and errno on
// failure.
std::ptrdiff_t readSome(int file, char* bytes, std::size_t size);
std::ptrdiff_t writeSome(int file, const char* bytes, std::size_t size);

// False and errno when something that was written is lost.
bool closeFile(int file);

// The bytes that the file says it has, 0 when it does not know.
std::uintmax_t sizeOf(int file);

// Creates a file that must not exist yet (else EEXIST), with these permissions
// where the platform knows them: exactly, or less what the user's mask takes. It can be removed
// while it is open.
enum class Permissions { Exact, Masked };
int createNew(const std::filesystem::path& path, std::filesystem::perms permissions,
              Permissions how);

// The number of this process: no other one that runs has it.
unsigned long processNumber();

// Whether a process of that number runs.
bool processRuns(unsigned long number);

// Removes a regular file, no link, that createNew made, unless some process still has it open.
void removeUnused(const std::filesystem::path& path);

// No error when this user may write the existing file.
std::error_code writeProtection(const std::filesystem::path& path);

// Whether the path, whose links were followed, names a device, a pipe or a file that this
// process has open: these are written as they are, never replaced.
bool isDevice(const std::filesystem::path& path, std::filesystem::file_status status);

// Gives a file the name of another, which is gone then.
std::error_code replaceFile(const std::filesystem::path& from, const std::filesystem::path& to);

// A file, existing or not, and what it is.
struct Followed {
  std::filesystem::path path;
  std::filesystem::file_status status;
};

// The file that a chain of symbolic links ends at; any other path as it is. A file that is not
// there is no error.
Followed followLinks(std::filesystem::path path, std::error_code& error);

}  // namespace tintline::detail
