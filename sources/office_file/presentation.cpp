// See presentation.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/presentation.h"

#include <cstdint>
#include <set>
#include <vector>

#include "sources/office_file/byte_source.h"
#include "sources/office_file/inflate.h"

namespace tintline::office_file {
namespace {

constexpr std::size_t kRecordHead = 8;  // version and instance, type, length
constexpr std::uint16_t kUserEdit = 0x0FF5, kPersistDirectory = 0x1772, kObject = 0x1011;
constexpr std::uint32_t kEncryptedToken = 0xF3D1C4DF;

struct Record {
  std::uint16_t instance = 0;
  std::uint16_t type = 0;
  std::string_view data;
};

// The record at that place; type 0 when there is none.
Record recordAt(std::string_view document, std::size_t at) {
  if (at > document.size() || document.size() - at < kRecordHead) return {};
  return {.instance = static_cast<std::uint16_t>(u16(document, at) >> 4),
          .type = u16(document, at + 2),
          .data = document.substr(at + kRecordHead, u32(document, at + 4))};
}

// Where the objects of the last state lie. Each edit has a directory of what it changed and names
// the edit before it; the newest that knows a number counts.
std::vector<std::uint32_t> livePlaces(std::string_view document, std::uint32_t lastEdit) {
  std::set<std::uint32_t> seenEdits, known;
  std::vector<std::uint32_t> places;
  for (std::uint32_t at = lastEdit; seenEdits.insert(at).second;) {
    const Record edit = recordAt(document, at);
    if (edit.type != kUserEdit) break;
    const Record directory = recordAt(document, u32(edit.data, 12));
    if (directory.type != kPersistDirectory) break;
    for (std::string_view rest = directory.data; rest.size() >= 4;) {
      const std::uint32_t head = u32(rest, 0);
      rest.remove_prefix(4);
      std::uint32_t number = head & 0xFFFFF;
      for (std::uint32_t count = head >> 20; count > 0 && rest.size() >= 4; --count, ++number) {
        if (known.insert(number).second) places.push_back(u32(rest, 0));
        rest.remove_prefix(4);
      }
    }
    at = u32(edit.data, 8);  // 0 for none: there is no edit
  }
  return places;
}

// The places of all objects on the outermost level.
std::vector<std::uint32_t> allPlaces(std::string_view document) {
  std::vector<std::uint32_t> places;
  for (std::size_t at = 0; at + kRecordHead <= document.size();) {
    if (u16(document, at + 2) == kObject) places.push_back(static_cast<std::uint32_t>(at));
    at += kRecordHead + u32(document, at + 4);
  }
  return places;
}

// A compressed object has its size in front of a zlib stream.
Bytes objectOf(const Record& record, Budget& budget) {
  if (record.instance == 0) return {std::string(record.data), Fault::None};
  MemorySource source(record.data);
  return inflated(source, 4, record.data.size(), Wrapping::Zlib, kMaxPart, budget);
}

}  // namespace

bool isEncryptedPresentation(std::string_view currentUser) {
  return u32(currentUser, 12) == kEncryptedToken;
}

void forEachObject(std::string_view document, std::string_view currentUser, Budget& budget,
                   const std::function<void(const Bytes& object)>& visit) {
  std::vector<std::uint32_t> places;
  if (currentUser.size() >= 20) places = livePlaces(document, u32(currentUser, 16));
  if (places.empty()) places = allPlaces(document);
  std::set<std::uint32_t> seen;
  for (const std::uint32_t place : places) {
    const Record record = recordAt(document, place);
    if (record.type != kObject || !seen.insert(place).second) continue;
    if (!budget.spend(record.data.size())) return visit({{}, Fault::TooLarge});
    visit(objectOf(record, budget));
  }
}

}  // namespace tintline::office_file
