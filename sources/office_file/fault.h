// Why something in an Office file could not be read. Texts for the user are made at the top.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tintline::office_file {

enum class Fault : std::uint8_t {
  None,
  // The file as a whole
  UnknownKind,    // no Office file
  NoProject,      // an Office file without code
  Encrypted,      // behind a password: nothing inside can be read
  RightsManaged,  // behind the rights of an organisation
  Excel95,        // kinds whose projects are stored in other ways
  Visio,
  Access,
  // A part, a project or a module
  Truncated,         // ends too early
  Damaged,           // contradicts its format
  WrongChecksum,     // read, but not what was written
  UnknownMethod,     // compressed in a way that Office does not use
  PartEncrypted,     // a part of a package with a password of its own
  TooLarge,          // beyond the limits
  TooDeep,           // embedded in too many others
  StreamMissing,     // the project names a module that is not there
  DirectoryDamaged,  // the list of modules cannot be read: they were found without it
  // A hint: all is read
  CompiledOnly  // a module without code, but with compiled code
};

// What was read, with what is wrong with it: the bytes may be some even then.
struct Bytes {
  std::string bytes;
  Fault fault = Fault::None;
};

}  // namespace tintline::office_file
