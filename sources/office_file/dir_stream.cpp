// See dir_stream.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/dir_stream.h"

#include "sources/office_file/byte_source.h"

namespace tintline::office_file {
namespace {

enum RecordId : std::uint16_t {
  kCodePage = 0x03,
  kProjectName = 0x04,
  kVersion = 0x09,
  kEndOfProject = 0x10,
  kModuleName = 0x19,
  kStreamName = 0x1A,
  kProcedural = 0x21,
  kOtherKind = 0x22,
  kEndOfModule = 0x2B,
  kSourceOffset = 0x31,
  kUnicodeStreamName = 0x32,
  kUnicodeModuleName = 0x47
};
constexpr std::size_t kMaxModules = 0xFFFF;  // the project counts them in 16 bits
constexpr std::size_t kDirRecordHead = 6;    // id and size
constexpr std::size_t kVersionSize = 6;      // its size field says 4

std::u16string utf16(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i + 2 <= bytes.size(); i += 2)
    text += static_cast<char16_t>(u16(bytes, i));
  return text;
}

void readModuleRecord(std::uint16_t id, std::string_view data, DirModule& module) {
  switch (id) {
    case kUnicodeModuleName:
      module.unicodeName = utf16(data);
      break;
    case kStreamName:
      module.stream = data;
      break;
    case kUnicodeStreamName:
      module.unicodeStream = utf16(data);
      break;
    case kSourceOffset:
      module.sourceOffset = u32(data, 0);
      break;
    case kProcedural:
    case kOtherKind:
      module.isProcedural = id == kProcedural;
      break;
    default:
      break;
  }
}

}  // namespace

Directory readDirectory(std::string_view dir) {
  Directory directory;
  bool inModule = false;
  while (dir.size() >= kDirRecordHead) {
    const std::uint16_t id = u16(dir, 0);
    if (id == kEndOfProject) return directory;
    const std::size_t size = id == kVersion ? kVersionSize : u32(dir, 2);
    dir.remove_prefix(kDirRecordHead);
    if (size > dir.size()) break;
    const std::string_view data = dir.substr(0, size);
    dir.remove_prefix(size);
    if (id == kCodePage && data.size() >= 2 && u16(data, 0) != 0)
      directory.codePage = u16(data, 0);
    else if (id == kProjectName)
      directory.name = data;
    else if (id == kModuleName && directory.modules.size() == kMaxModules)
      break;
    else if (id == kModuleName)
      directory.modules.emplace_back().name = data;
    if (id == kModuleName || id == kEndOfModule) inModule = id == kModuleName;
    if (inModule) readModuleRecord(id, data, directory.modules.back());
  }
  directory.fault = directory.modules.size() == kMaxModules ? Fault::TooLarge : Fault::Truncated;
  return directory;
}

}  // namespace tintline::office_file
