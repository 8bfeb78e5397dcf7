// What the command line needs from the system beyond files: its streams, the
// terminal, the program's folder.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace tintline {

enum class StandardStream { Output, Error };

// Makes the standard streams binary and lets a write that fails return an error
// instead of ending the program. Must run before any file is opened: a standard
// stream that is closed is reserved, so that no file can take its place.
void prepareStandardStreams();

// Keeps memory that one file needed for the next one, where the system would
// take it back at once.
void keepFreedMemory();

// From now on an interruption (Ctrl+C, a request to end) only sets what interrupted()
// tells, so that nothing half done is left behind. A second one ends the program at once.
void noteInterruptions();
bool interrupted();

// Ends the program as the interruption would have done.
[[noreturn]] void endAsInterrupted();

// Writes text for the user: right on a console, else as UTF-8. False when it
// could not be written.
bool writeText(StandardStream stream, std::wstring_view text);

bool errorIsTerminal();

// The folder of the running program; empty when the system does not tell.
std::filesystem::path programFolder();

// A text that is equal for names that the file system takes for the same file.
std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path);

struct ExistingFile {
  std::filesystem::path::string_type identity;  // equal for all ways to the same file
  std::uintmax_t size = 0;                      // bytes
};

// The regular file that a path leads to. Anything else has an empty identity: a
// device can be read and written at once.
ExistingFile existingFile(const std::filesystem::path& path);

}  // namespace tintline
