// Standard input and output. See standard_stream.h.
// Tested by tests/cli/run.py.
#include "cli/standard_stream.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "base/file.h"
#include "cli/platform.h"
#include "runs/inputs.h"

namespace tintline {
namespace {

constexpr int kStandardInput = 0;  // descriptor

[[noreturn]] void throwError() {
  throw FileError({}, std::error_code(errno, std::generic_category()));
}

[[noreturn]] void throwUnwritten() {
  if (errno == EPIPE) {  // whoever read it has what he wanted
    removeUnfinishedFiles();
    endAsUnread();
  }
  throwError();
}

}  // namespace

std::string readStandardInput() { return readStream(kStandardInput, {}, kLargestInput); }

// The stream hands the exception of its buffer on when it is told to throw.
StandardOutput::StandardOutput() : std::ostream(nullptr) {
  rdbuf(&buffer_);
  exceptions(std::ios::badbit);
}

StandardOutput::Buffer::int_type StandardOutput::Buffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof()))
    return traits_type::not_eof(character);
  const char single = traits_type::to_char_type(character);
  xsputn(&single, 1);
  return character;
}

std::streamsize StandardOutput::Buffer::xsputn(const char* text, std::streamsize size) {
  const auto bytes = static_cast<std::size_t>(size);
  if (std::fwrite(text, 1, bytes, stdout) != bytes) throwUnwritten();
  return size;
}

int StandardOutput::Buffer::sync() {
  if (std::fflush(stdout) != 0) throwUnwritten();
  return 0;
}

}  // namespace tintline
