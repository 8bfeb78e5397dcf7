// What the command line needs from the system beyond files: its streams, the
// terminal, the program's folder.
//
// Tested by tests/cli/run.py.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "base/message.h"

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

bool inputIsTerminal();
bool errorIsTerminal();

// The language that the user chose for the system itself, where it knows one beside the locale.
Language interfaceLanguage();

// The folders in which settings are looked for, the first one that has them counts; a folder that
// the system does not tell is left out.
std::vector<std::filesystem::path> settingsFolders();

// The path that a variable of the environment holds, "" without one.
std::filesystem::path environmentPath(const char* name);

}  // namespace tintline
