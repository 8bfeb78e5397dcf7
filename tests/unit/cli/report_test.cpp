// Tests of cli/report.h.
#include "cli/report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace tintline {
namespace {

TEST(Report, failuresAreToldInTheOrderOfTheInputs) {
  std::wstring told;
  Report report(
      {L"a", L"b", L"c", L"d"}, [&](std::wstring_view text) { told += text; }, false);
  report.finished(2, {.failure = L"drei"});
  report.finished(1, {.failure = L"zwei"});
  EXPECT_EQ(told, L"");
  report.finished(0, {.failure = {}, .sourceLines = 7});
  EXPECT_EQ(told, L"tintline: b: zwei\ntintline: c: drei\n");
  report.finished(3, {.failure = {}, .sourceLines = 1});
  EXPECT_FALSE(report.close());
  EXPECT_EQ(told, L"tintline: b: zwei\ntintline: c: drei\n");
}

// What a terminal of one line shows: a carriage return goes back to its start.
std::wstring shown(std::wstring_view text) {
  std::wstring lines, line;
  std::size_t column = 0;
  for (const wchar_t character : text) {
    if (character == L'\n') {
      lines += line + L'\n';
      line.clear();
    }
    if (character == L'\n' || character == L'\r') {
      column = 0;
    } else {
      line.resize(std::max(line.size(), column + 1), L' ');
      line[column++] = character;
    }
  }
  line.erase(line.find_last_not_of(L' ') + 1);
  return lines + line;
}

TEST(Report, counterGivesWayToFailuresAndSummary) {
  std::wstring told;
  Report report(
      {L"a", L"b", L"c"}, [&](std::wstring_view text) { told += text; }, true);
  const auto later = [] { std::this_thread::sleep_for(std::chrono::milliseconds(60)); };
  later();
  report.finished(0, {.failure = {}, .sourceLines = 20});
  EXPECT_EQ(shown(told), L"1 von 3 Dateien");
  told.clear();
  later();
  report.finished(1, {.failure = L"x"});
  EXPECT_EQ(told, L"\r               \rtintline: b: x\n\r2 von 3 Dateien");
  report.finished(2, {.failure = {}, .sourceLines = 22});
  EXPECT_FALSE(report.close());
  const std::wstring end = shown(told);
  EXPECT_NE(end.find(L"\n2 Dateien, 42 Zeilen in 0,"), std::wstring::npos);
  EXPECT_TRUE(end.ends_with(L"s verarbeitet\n"));
}

TEST(Report, secondsAreCutToHundredths) {
  using std::chrono::milliseconds;
  EXPECT_EQ(secondsText(milliseconds(0)), L"0");
  EXPECT_EQ(secondsText(milliseconds(59)), L"0,05");
  EXPECT_EQ(secondsText(milliseconds(300)), L"0,3");
  EXPECT_EQ(secondsText(milliseconds(12349)), L"12,34");
  EXPECT_EQ(secondsText(milliseconds(60000)), L"60");
}

}  // namespace
}  // namespace tintline
