// See zip_archive.h. Tested by tests/unit/sources/office_file_test.cpp and fuzz/zip_fuzz.cpp.
#include "sources/office_file/zip_archive.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/inflate.h"

namespace tintline::office_file {
namespace {

constexpr std::string_view kLocalHeader("PK\x03\x04", 4), kDirectoryEntry("PK\x01\x02", 4);
constexpr std::string_view kEnd("PK\x05\x06", 4), kEnd64("PK\x06\x06", 4),
    kSignature("PK\x05\x05", 4), kLocator("PK\x06\x07", 4);
constexpr std::size_t kEndSize = 22, kEnd64Size = 56, kLocatorSize = 20, kEntrySize = 46,
                      kLocalSize = 30;
constexpr std::uint32_t kInZip64 = 0xFFFFFFFF;
constexpr std::uint16_t kStored = 0, kDeflated = 8, kEncryptedFlag = 1, kZip64Field = 1;

// What the end record says of the directory.
struct End {
  std::uint64_t directory;  // its offset as it is given
  std::uint64_t size;
  std::uint64_t behind;  // where the records behind the directory begin, in the file
};

// The last end record whose comment lies in the file; its comment may hold 65,535 bytes.
std::optional<End> findEnd(ByteSource& source) {
  constexpr std::uint64_t kTail = kEndSize + 0xFFFF;
  const std::uint64_t begin = source.size() - std::min(source.size(), kTail);
  const std::string tail(source.view(begin, kTail));
  for (std::size_t at = tail.rfind(kEnd); at != tail.npos && tail.size() >= kEndSize;) {
    if (at + kEndSize <= tail.size() && at + kEndSize + u16(tail, at + 20) <= tail.size())
      return End{.directory = u32(tail, at + 16), .size = u32(tail, at + 12), .behind = begin + at};
    if (at == 0) break;
    at = tail.rfind(kEnd, at - 1);
  }
  return {};
}

// The same of a large package, which has two more records in front of the end record.
End zip64End(ByteSource& source, const End& end) {
  if (end.behind < kLocatorSize) return end;
  const std::string locator(source.view(end.behind - kLocatorSize, kLocatorSize));
  if (!locator.starts_with(kLocator)) return end;
  const std::uint64_t at = u64(locator, 8);
  const std::string_view record = source.view(at, kEnd64Size);
  if (!record.starts_with(kEnd64) || record.size() < kEnd64Size) return end;
  return {.directory = u64(record, 48), .size = u64(record, 40), .behind = at};
}

// The values of a part that stand in the extra field because they are too large elsewhere.
void readZip64(std::string_view extra, ZipArchive::Part& part) {
  while (extra.size() >= 4) {
    const std::size_t size = u16(extra, 2);
    if (u16(extra, 0) == kZip64Field) {
      std::string_view values = extra.substr(4, size);
      for (std::uint64_t* value : {&part.size, &part.compressedSize, &part.header}) {
        if (*value != kInZip64 || values.size() < 8) continue;
        *value = u64(values, 0);
        values.remove_prefix(8);
      }
      return;
    }
    extra.remove_prefix(std::min(extra.size(), 4 + size));
  }
}

}  // namespace

std::optional<ZipArchive> ZipArchive::open(ByteSource& source, Fault& fault) {
  const std::optional<End> found = findEnd(source);
  if (!found) {
    fault = Fault::Truncated;
    return {};
  }
  const End end = zip64End(source, *found);
  // What stands in front of a package shifts all offsets: the directory ends where the records
  // begin.
  std::uint64_t at = end.directory, shift = 0;
  if (!source.view(at, kEntrySize).starts_with(kDirectoryEntry) && end.size <= end.behind &&
      end.behind - end.size >= end.directory) {
    at = end.behind - end.size;
    shift = at - end.directory;
  }
  if (end.size > kMaxDirectory) fault = Fault::TooLarge;
  std::string directory(
      source.view(at, static_cast<std::size_t>(std::min<std::uint64_t>(end.size, kMaxDirectory))));
  if (end.size > 0 && !directory.starts_with(kDirectoryEntry)) {
    fault = Fault::Damaged;
    return {};
  }
  if (fault == Fault::None && directory.size() < end.size) fault = Fault::Truncated;
  ZipArchive archive(source, std::move(directory), shift);
  // Parts that cannot be found may be what is looked for.
  if (fault == Fault::None && !archive.forEach([](const Part&) { return true; }))
    fault = Fault::Damaged;
  return archive;
}

bool ZipArchive::forEach(const std::function<bool(const Part&)>& visit) const {
  std::string_view rest = directory_;
  while (rest.size() >= kEntrySize && rest.starts_with(kDirectoryEntry)) {
    const std::size_t name = u16(rest, 28), extra = u16(rest, 30), comment = u16(rest, 32);
    if (rest.size() < kEntrySize + name + extra) return false;
    Part part{.name = rest.substr(kEntrySize, name),
              .header = u32(rest, 42),
              .compressedSize = u32(rest, 20),
              .size = u32(rest, 24),
              .checksum = u32(rest, 16),
              .method = u16(rest, 10),
              .flags = u16(rest, 8)};
    readZip64(rest.substr(kEntrySize + name, extra), part);
    if (!visit(part)) return true;
    rest.remove_prefix(std::min(rest.size(), kEntrySize + name + extra + comment));
  }
  return rest.empty() || rest.starts_with(kSignature);
}

std::optional<ZipArchive::Part> ZipArchive::find(std::string_view name) const {
  if (name.starts_with('/')) name.remove_prefix(1);
  std::optional<Part> found;
  forEach([&](const Part& part) {
    if (equalsAscii(part.name, name)) found = part;
    return !found;
  });
  return found;
}

// Where its data begins. The local header may have other extra fields than the directory.
std::optional<std::uint64_t> ZipArchive::dataOf(const Part& part) const {
  if (part.header > source_->size()) return {};
  const std::uint64_t header = part.header + shift_;
  const std::string_view local = source_->view(header, kLocalSize);
  if (local.size() < kLocalSize || !local.starts_with(kLocalHeader)) return {};
  return header + kLocalSize + u16(local, 26) + u16(local, 28);
}

Bytes ZipArchive::read(const Part& part, Budget& budget, std::size_t limit) const {
  if ((part.flags & kEncryptedFlag) != 0) return {{}, Fault::PartEncrypted};
  if (part.method != kStored && part.method != kDeflated) return {{}, Fault::UnknownMethod};
  const std::optional<std::uint64_t> data = dataOf(part);
  if (!data) return {{}, Fault::Damaged};
  const std::size_t wanted = static_cast<std::size_t>(std::min<std::uint64_t>(part.size, limit));
  const std::uint64_t stored = std::min(part.compressedSize, source_->size());
  Bytes result;
  if (part.method == kDeflated) {
    result = inflated(*source_, *data, *data + stored, Wrapping::Raw, wanted, budget);
  } else if (budget.spend(static_cast<std::size_t>(std::min<std::uint64_t>(stored, wanted)))) {
    result.bytes = source_->view(*data, std::min(static_cast<std::size_t>(stored), wanted));
  } else {
    result.fault = Fault::TooLarge;
  }
  if (result.fault != Fault::None) return result;
  if (result.bytes.size() < wanted)
    result.fault = Fault::Truncated;
  else if (wanted < part.size)
    result.fault = part.size > kMaxPart ? Fault::TooLarge : Fault::None;
  else if (crc32Of(result.bytes) != part.checksum)
    result.fault = Fault::WrongChecksum;
  return result;
}

}  // namespace tintline::office_file
