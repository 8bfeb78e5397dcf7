// See file.h. Tested by tests/unit/base/file_test.cpp.
#include "base/file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <mutex>
#include <new>
#include <optional>
#include <set>
#include <streambuf>
#include <utility>

#include "base/codepage.h"
#include "base/file_platform.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

// An open file, closed at the end.
class FileHandle {
 public:
  explicit FileHandle(int file = -1) : file_(file) {}
  FileHandle(FileHandle&& other) noexcept : file_(other.release()) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~FileHandle() { reset(); }

  explicit operator bool() const { return file_ >= 0; }
  int get() const { return file_; }
  int release() { return std::exchange(file_, -1); }
  void reset(int file = -1) {
    if (file_ >= 0) detail::closeFile(file_);
    file_ = file;
  }

 private:
  int file_;
};

std::error_code lastError() { return {errno, std::generic_category()}; }

bool isDirectory(const fs::path& path) {
  std::error_code none;
  return fs::is_directory(path, none);
}

// Collects short texts, passes everything on to the file and remembers why the first write failed.
class FileBuffer final : public std::streambuf {
 public:
  explicit FileBuffer(int file) : file_(file) { setp(room_.get(), room_.get() + kRoom); }

  std::error_code failure() const { return failure_; }

  void noteFailure(std::error_code reason) {
    if (!failure_) failure_ = reason;
  }

 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    if (size > epptr() - pptr() || size >= kLong) {
      if (sync() != 0) return 0;
      if (size >= kLong) return write(text, size) ? size : 0;
    }
    std::memcpy(pptr(), text, static_cast<std::size_t>(size));
    pbump(static_cast<int>(size));
    return size;
  }

  int_type overflow(int_type character) override {
    if (sync() != 0) return traits_type::eof();
    return traits_type::eq_int_type(character, traits_type::eof())
               ? traits_type::not_eof(character)
               : sputc(traits_type::to_char_type(character));
  }

  int sync() override {
    const bool written = write(pbase(), pptr() - pbase());
    setp(room_.get(), room_.get() + kRoom);
    return written ? 0 : -1;
  }

 private:
  static constexpr std::streamsize kRoom = 0x10000;  // documents begin with many short lines
  static constexpr std::streamsize kLong = 0x4000;   // a text that is written by itself

  bool write(const char* text, std::streamsize size) {
    while (size > 0) {
      const std::ptrdiff_t written = detail::writeSome(file_, text, static_cast<std::size_t>(size));
      if (written <= 0) {
        noteFailure(written < 0 ? lastError() : std::make_error_code(std::errc::io_error));
        return false;
      }
      text += written;
      size -= written;
    }
    return true;
  }

  int file_;
  std::unique_ptr<char[]> room_ = std::make_unique_for_overwrite<char[]>(kRoom);
  std::error_code failure_;
};

// The temporary files are "~tintline-PROCESS-NUMBER.tmp".
constexpr std::string_view kTemporaryStart = "~tintline-";
constexpr std::string_view kTemporaryEnd = ".tmp";

// The files that this process writes and has not committed.
struct Unfinished {
  std::mutex mutex;  // held while one is created, committed or removed
  std::set<fs::path::string_type> files;
  std::set<fs::path::string_type> sweptFolders;
};

Unfinished& unfinished() {
  static Unfinished& files = *new Unfinished;  // for threads that outlive main
  return files;
}

// Takes a number off the front of the text; nothing when it does not begin with one.
std::optional<unsigned long> takeNumber(std::string_view& text) {
  unsigned long number = 0;
  const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return {};
  text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
  return number;
}

// Whether it is the name of a temporary file whose process has ended.
bool isLeftBehind(std::string_view name) {
  if (!name.starts_with(kTemporaryStart)) return false;
  name.remove_prefix(kTemporaryStart.size());
  const std::optional<unsigned long> process = takeNumber(name);
  if (!process || !name.starts_with('-')) return false;
  name.remove_prefix(1);
  return takeNumber(name) && name == kTemporaryEnd && !detail::processRuns(*process);
}

void removeLeftBehind(const fs::path& folder) {
  std::error_code failure;
  fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    const std::u8string name = entry->path().filename().u8string();
    if (isLeftBehind({reinterpret_cast<const char*>(name.data()), name.size()}))
      detail::removeUnused(entry->path());
  }
}

FileHandle createTemporary(const fs::path& path, const fs::path& folder, fs::file_status status) {
  Unfinished& all = unfinished();
  const std::lock_guard lock(all.mutex);
  if (all.sweptFolders.insert(folder.native()).second) removeLeftBehind(folder);
  FileHandle file(fs::exists(status)
                      ? detail::createNew(path, status.permissions(), detail::Permissions::Exact)
                      : detail::createNew(path, fs::perms(0666), detail::Permissions::Masked));
  if (file) all.files.insert(path.native());
  return file;
}

// Creates a file beside the target, with the permissions of the one that stands
// there. Its name does not hold the target's, which may be as long as the file
// system allows.
FileHandle createBeside(const fs::path& target, fs::file_status status, fs::path& temporary) {
  constexpr int kAttempts = 100;
  static std::atomic<unsigned> number = 0;
  const std::string start =
      std::string(kTemporaryStart) + std::to_string(detail::processNumber()) + '-';
  const fs::path folder = target.parent_path();
  for (int attempt = 0;; ++attempt) {
    temporary = folder / (start + std::to_string(number++)).append(kTemporaryEnd);
    FileHandle file = createTemporary(temporary, folder, status);
    if (file) return file;
    std::error_code reason = lastError();
    if (reason == std::errc::file_exists && attempt < kAttempts) continue;
    if (reason == std::errc::no_such_file_or_directory)
      reason =
          std::make_error_code(std::errc::not_a_directory);  // it is the folder that is missing
    throw FileError(target, reason);
  }
}

// Where the target's links end and what is there. Throws FileError when it is nothing
// that can be written.
detail::Followed writableEnd(const fs::path& target) {
  std::error_code error;
  detail::Followed end = detail::followLinks(target, error);
  if (error) throw FileError(target, error);
  if (fs::is_directory(end.status))
    throw FileError(target, std::make_error_code(std::errc::is_a_directory));
  if (fs::exists(end.status))
    if (const std::error_code protection = detail::writeProtection(target))
      throw FileError(target, protection);
  return end;
}

std::string describe(const fs::path& path, std::error_code reason) {
  return toUtf8(pathText(path) + L": " + reasonText(reason).english);
}

}  // namespace

FileError::FileError(fs::path path, std::error_code reason)
    : std::runtime_error(describe(path, reason)), path_(std::move(path)), reason_(reason) {}

Message reasonText(std::error_code reason) {
  struct Row {
    std::errc condition;
    Text<0> text;
  };
  static constexpr Row kRows[] = {
      {std::errc::no_such_file_or_directory,
       {"file-not-found", L"file not found", L"Datei nicht gefunden"}},
      {std::errc::not_a_directory,
       {"folder-not-found", L"folder not found", L"Ordner nicht gefunden"}},
      {std::errc::permission_denied, {"access-denied", L"access denied", L"Zugriff verweigert"}},
      {std::errc::operation_not_permitted,
       {"access-denied", L"access denied", L"Zugriff verweigert"}},
      {std::errc::is_a_directory, {"is-folder", L"is a folder", L"ist ein Ordner"}},
      {std::errc::no_space_on_device, {"disk-full", L"the disk is full", L"Datenträger ist voll"}},
      {std::errc::read_only_file_system,
       {"write-protected", L"the disk is write-protected", L"Datenträger ist schreibgeschützt"}},
      {std::errc::filename_too_long, {"name-too-long", L"the name is too long", L"Name zu lang"}},
      {std::errc::invalid_argument, {"invalid-name", L"the name is not valid", L"Name ungültig"}},
      {std::errc::too_many_files_open,
       {"too-many-open-files", L"too many open files", L"zu viele offene Dateien"}},
      {std::errc::too_many_files_open_in_system,
       {"too-many-open-files", L"too many open files", L"zu viele offene Dateien"}},
      {std::errc::file_too_large, {"too-large", L"the file is too large", L"Datei zu groß"}},
      {std::errc::not_enough_memory,
       {"out-of-memory", L"not enough memory", L"nicht genug Speicher"}},
      {std::errc::too_many_symbolic_link_levels,
       {"link-loop", L"links lead in a circle", L"Verknüpfungen führen im Kreis"}},
      {std::errc::device_or_resource_busy,
       {"in-use", L"the file is in use", L"Datei ist in Gebrauch"}},
      {std::errc::bad_file_descriptor, {"not-open", L"not open", L"nicht geöffnet"}},
      {std::errc::broken_pipe,
       {"reader-gone", L"the reader is gone", L"Empfänger hat geschlossen"}},
      {std::errc::io_error, {"io-error", L"input/output error", L"Fehler des Datenträgers"}},
  };
  for (const Row& row : kRows)
    if (reason == row.condition) return row.text();
  static constexpr Text<1> kOther{"file-error", L"error {1}", L"Fehler {1}"};
  return kOther(std::to_wstring(reason.value()));
}

std::string readStream(int stream, const fs::path& name, std::uintmax_t limit) {
  constexpr std::uintmax_t kSmallestRead = 0x10000;  // for streams that do not know their size
  const auto tooLarge = [&] {
    return FileError(name, std::make_error_code(std::errc::file_too_large));
  };
  const std::uintmax_t known = detail::sizeOf(stream);
  if (known > limit) throw tooLarge();
  std::uintmax_t room = std::min(known, kNoLimit - 1) + 1;  // one more would show that it has grown
  std::string content;
  for (std::size_t done = 0;;) {
    if (done == content.size()) content.resize(static_cast<std::size_t>(done + room));
    const std::ptrdiff_t got =
        detail::readSome(stream, content.data() + done, content.size() - done);
    if (got < 0) throw FileError(name, lastError());
    done += static_cast<std::size_t>(got);
    if (done > limit) throw tooLarge();
    if (got == 0 || done == known) {
      content.resize(done);
      return content;
    }
    room = std::min(std::max<std::uintmax_t>(done, kSmallestRead), limit - done + 1);
  }
}

std::string readFile(const fs::path& path, std::uintmax_t limit) {
  const FileHandle file(detail::openToRead(path));
  if (!file) {
    const std::error_code reason = lastError();  // not every platform says why
    throw FileError(path,
                    isDirectory(path) ? std::make_error_code(std::errc::is_a_directory) : reason);
  }
  try {
    return readStream(file.get(), path, limit);
  } catch (const std::bad_alloc&) {
    throw FileError(path, std::make_error_code(std::errc::not_enough_memory));
  } catch (const std::length_error&) {
    throw FileError(path, std::make_error_code(std::errc::file_too_large));
  }
}

void checkWritable(const fs::path& target) {
  if (fs::exists(writableEnd(target).status)) return;
  std::error_code none;
  fs::path folder = target.parent_path();
  while (folder.has_relative_path() && !fs::exists(folder, none)) folder = folder.parent_path();
  if (folder.empty()) folder = ".";
  if (!fs::is_directory(folder, none))
    throw FileError(target, std::make_error_code(std::errc::not_a_directory));
  if (const std::error_code protection = detail::writeProtection(folder))
    throw FileError(target, protection);
}

struct AtomicFile::State {
  State(fs::path named, fs::path end, FileHandle opened, fs::path beside)
      : name(std::move(named)),
        target(std::move(end)),
        file(std::move(opened)),
        temporary(std::move(beside)),
        buffer(file.get()),
        stream(&buffer) {}

  ~State() {
    file.reset();  // an open file cannot be removed everywhere
    if (temporary.empty()) return;
    Unfinished& all = unfinished();
    const std::lock_guard lock(all.mutex);
    std::error_code none;
    fs::remove(temporary, none);
    all.files.erase(temporary.native());
  }

  void close() {
    buffer.pubsync();
    if (!detail::closeFile(file.release())) buffer.noteFailure(lastError());
    if (!stream) buffer.noteFailure(std::make_error_code(std::errc::io_error));
    if (buffer.failure()) throw FileError(name, buffer.failure());
  }

  void putInPlace() {
    if (temporary.empty()) return;
    Unfinished& all = unfinished();
    const std::lock_guard lock(all.mutex);
    std::error_code error = detail::replaceFile(temporary, target);
    if (error == std::errc::no_such_file_or_directory)
      error = std::make_error_code(std::errc::invalid_argument);  // it is no name for a file
    if (error) throw FileError(name, error);
    all.files.erase(temporary.native());
    temporary.clear();
  }

  fs::path name;    // the target as it was given
  fs::path target;  // its links followed
  FileHandle file;
  fs::path temporary;  // empty: the target is written directly
  FileBuffer buffer;
  std::ostream stream;
};

AtomicFile::AtomicFile(const fs::path& target) {
  auto [end, status] = writableEnd(target);
  const bool direct = detail::isDevice(end, status);
  fs::path temporary;
  FileHandle file =
      direct ? FileHandle(detail::openToWrite(end)) : createBeside(end, status, temporary);
  if (!file) throw FileError(target, lastError());
  state_ = std::make_unique<State>(target, std::move(end), std::move(file), std::move(temporary));
}

AtomicFile::~AtomicFile() = default;

std::ostream& AtomicFile::stream() { return state_->stream; }

void AtomicFile::commit() {
  const std::unique_ptr<State> state = std::move(state_);
  state->close();
  state->putInPlace();
}

void removeUnfinishedFiles() {
  Unfinished& all = unfinished();
  all.mutex.lock();  // for good
  std::error_code none;
  for (const fs::path::string_type& file : all.files) fs::remove(file, none);
}

}  // namespace tintline
