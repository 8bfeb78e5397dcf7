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

// From now on an interruption (Ctrl+C, a request to end, a console that closes) calls `last`,
// in a thread of its own, and ends the program as it would have done anyway. One that whoever
// started the program ignores stays ignored. Must run before other threads start.
void onInterruption(void (*last)());

// Ends the program as a write for which nobody is left to read it does.
[[noreturn]] void endAsUnread();

// Writes text for the user: right on a console, else as UTF-8. False when it
// could not be written.
bool writeText(StandardStream stream, std::wstring_view text);

bool errorIsTerminal();

// The folder of the running program; empty when the system does not tell.
std::filesystem::path programFolder();

// A text that is equal for names that a file system which disregards case takes for the same
// file.
std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path);

struct ExistingFile {
  std::filesystem::path::string_type identity;  // equal for all ways to the same file
  std::uintmax_t size = 0;                      // bytes
};

// The regular file that a path leads to. Anything else has an empty identity: a
// device can be read and written at once.
ExistingFile existingFile(const std::filesystem::path& path);

}  // namespace tintline
