// Standard input and output as binary streams that tell why they failed.
//
// Tested by tests/cli/run.py.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace tintline {

// Everything that stands on the standard input. Throws FileError, also when it is larger than an
// input may be.
std::string readStandardInput();

// The standard output. Every write and flush() that fails throws FileError; when nobody is left
// to read it, the program ends quietly.
class StandardOutput final : public std::ostream {
 public:
  StandardOutput();

 private:
  class Buffer final : public std::streambuf {
   protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;
  };
  Buffer buffer_;
};

}  // namespace tintline
