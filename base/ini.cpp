// See ini.h. Tested by tests/unit/base/ini_test.cpp.
#include "base/ini.h"

#include "base/text.h"

namespace tintline::ini {
namespace {

struct Line {
  std::string_view text;  // without its line end
  std::size_t begin = 0;  // offsets in the file
  std::size_t end = 0;    // behind the line end
};

// The lines of a file from first to last.
class Lines {
 public:
  explicit Lines(std::string_view file) : file_(file) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (file_.starts_with(kUtf8Mark)) position_ = kUtf8Mark.size();
  }

  bool next(Line& line) {
    if (position_ >= file_.size()) return false;
    line.begin = position_;
    const std::size_t stop = file_.find_first_of("\r\n", position_);
    line.text = file_.substr(position_, stop - position_);
    if (stop == std::string_view::npos)
      position_ = file_.size();
    else
      position_ = stop + (file_.substr(stop).starts_with("\r\n") ? 2 : 1);
    line.end = position_;
    return true;
  }

 private:
  std::string_view file_;
  std::size_t position_ = 0;
};

std::optional<std::string_view> sectionName(std::string_view line) {
  const std::string_view header = LTrim(line);
  const std::size_t end = header.find(']');
  if (!header.starts_with('[') || end == std::string_view::npos) return std::nullopt;
  return Trim(header.substr(1, end - 1));
}

// Moves behind the header of the first section of that name.
bool findSection(Lines& lines, std::string_view section, Line& header) {
  while (lines.next(header)) {
    const auto name = sectionName(header.text);
    if (name && equalsIgnoreCase(*name, section)) return true;
  }
  return false;
}

bool nextInSection(Lines& lines, Line& line) { return lines.next(line) && !sectionName(line.text); }

// Offset of the "=" in a line that sets the key, else npos.
std::size_t assignment(std::string_view line, std::string_view key) {
  const std::size_t equals = line.find('=');
  const bool sets = equals != std::string_view::npos && !line.starts_with(';') &&
                    equalsIgnoreCase(Trim(line.substr(0, equals)), key);
  return sets ? equals : std::string_view::npos;
}

bool endsInLineEnd(std::string_view text) {
  return text.empty() || text.ends_with('\r') || text.ends_with('\n');
}

// `file` with whole lines put in at `offset`.
std::string withLines(std::string_view file, std::size_t offset, std::string_view added) {
  std::string result(file.substr(0, offset));
  if (!endsInLineEnd(result)) result += "\r\n";
  return result.append(added).append(file.substr(offset));
}

}  // namespace

std::string sectionText(std::string_view file, std::string_view section, std::size_t limit) {
  std::string entries;
  Lines lines(file);
  Line line;
  if (!findSection(lines, section, line)) return entries;
  while (entries.size() < limit && nextInSection(lines, line))
    if (!line.text.empty()) entries.append(line.text) += '\0';
  if (entries.size() > limit) entries.resize(limit);
  if (!entries.empty() && entries.back() != '\0') entries += '\0';
  return entries;
}

std::optional<std::string> value(std::string_view file, std::string_view section,
                                 std::string_view key) {
  Lines lines(file);
  Line line;
  if (!findSection(lines, section, line)) return std::nullopt;
  while (nextInSection(lines, line))
    if (const std::size_t equals = assignment(line.text, key); equals != std::string_view::npos)
      return std::string(line.text.substr(equals + 1));
  return std::nullopt;
}

std::string withValue(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value) {
  const std::string added = std::string(key).append("=").append(value).append("\r\n");
  Lines lines(file);
  Line line;
  if (!findSection(lines, section, line))
    return withLines(file, file.size(), "[" + std::string(section) + "]\r\n" + added);
  std::size_t sectionEnd = line.end;
  while (nextInSection(lines, line)) {
    if (const std::size_t equals = assignment(line.text, key); equals != std::string_view::npos) {
      std::string result(file.substr(0, line.begin + equals + 1));
      return result.append(value).append(file.substr(line.begin + line.text.size()));
    }
    if (!line.text.empty()) sectionEnd = line.end;
  }
  return withLines(file, sectionEnd, added);
}

}  // namespace tintline::ini
