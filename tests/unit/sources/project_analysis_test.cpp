// Tests of sources/project_analysis.h.
#include "sources/project_analysis.h"

#include <gtest/gtest.h>

#include <string>

#include "base/codepage.h"
#include "tests/support/fake_office.h"

namespace tintline::test {
namespace {

class ProjectAnalysis : public testing::Test {
 protected:
  std::optional<ProjectSummary> analyse(
      std::vector<FakeComponent> components,
      const std::function<bool()>& goOn = [] { return true; }) {
    office.word.projects = {{.file = L"C:\\Brief.dot", .components = std::move(components)}};
    std::vector<Project> projects = projectsOf(office.connect(L"Word.Application").object);
    office.word.calls = 0;
    return analyseProject(projects[0], goOn);
  }

  // "Modul1/1 9: declarations 2, Sub A 3, Get B 4"
  static std::string text(const ComponentSummary& component) {
    std::wstring text = component.name + L"/" + std::to_wstring(component.type) + L" " +
                        std::to_wstring(component.lines) + L": declarations " +
                        std::to_wstring(component.declarationLines);
    for (const ProcedureSummary& procedure : component.procedures)
      text.append(L", ").append(kindPrefix(procedure.kind)).append(procedure.name) +=
          L" " + std::to_wstring(procedure.lines);
    return toUtf8(text);
  }

  FakeOffice office;
};

TEST_F(ProjectAnalysis, ComponentsHoldDeclarationsAndProcedures) {
  const struct {
    std::string_view code;
    std::string_view text;
  } rows[] = {
      {"", "M/1 0: declarations 0"},
      {"Option Explicit\r\nDim x", "M/1 2: declarations 2"},
      {"Sub A()\r\nEnd Sub", "M/1 2: declarations 0, A 2"},
      {"Dim x\r\n\r\n' tells\r\nSub A()\r\nEnd Sub\r\n\r\nFunction B()\r\nx\r\nEnd Function\r\n'",
       "M/1 10: declarations 1, A 4, B 5"},
      {"Property Get W()\r\nEnd Property\r\nProperty Let W(x)\r\nEnd Property\r\n"
       "Property Set W(x)\r\n\r\nEnd Property\r\nPrivate Sub W2()\r\nEnd Sub",
       "M/1 9: declarations 0, Get W 2, Let W 2, Set W 3, W2 2"},
  };
  for (const auto& row : rows) {
    const auto project = analyse({{.name = L"M", .code = std::string(row.code)}});
    ASSERT_TRUE(project);
    EXPECT_EQ(text(project->components[0]), row.text);
  }
}

TEST_F(ProjectAnalysis, AProcedureThatStandsTwiceIsListedOnceAndNoneBehindItIsMissed) {
  const auto project =
      analyse({{.name = L"M",
                .code = "Sub A()\r\nx\r\nx\r\nx\r\nEnd Sub\r\nSub A()\r\nEnd Sub\r\n"
                        "Sub B()\r\nEnd Sub\r\nSub A()\r\nx\r\nx\r\nx\r\nx\r\nx\r\nEnd Sub\r\n"
                        "Sub C()\r\nEnd Sub"}});
  ASSERT_TRUE(project);
  EXPECT_EQ(text(project->components[0]), "M/1 18: declarations 0, A 5, B 2, C 2");
}

TEST_F(ProjectAnalysis, TheSecondOfTwoCopiesIsNotAskedLineByLine) {
  std::string copy = "Sub A()\r\n";
  for (int line = 0; line < 300; ++line) copy += "    x = x + 1\r\n";
  copy += "End Sub\r\n";
  const auto project = analyse({{.name = L"M",
                                 .code = copy + copy + "' of B\r\nSub B()\r\nEnd Sub\r\n" + copy +
                                         "Property Get C()\r\nEnd Property\r\n" + copy +
                                         "Static Function D()\r\nEnd Function"}});
  ASSERT_TRUE(project);
  EXPECT_EQ(text(project->components[0]), "M/1 1215: declarations 0, A 302, B 3, Get C 2, D 2");
  constexpr int kForOthers = 4 + 6;                 // the project and the component
  constexpr int kFound = 4 * 3, kOfCopies = 3 * 2;  // a copy has two lines with "Sub"
  EXPECT_LE(office.word.calls, kForOthers + kFound + kOfCopies + 1);
  EXPECT_EQ(office.word.callsOf[L"Lines"], 1);
}

TEST_F(ProjectAnalysis, AProtectedProjectIsNotLookedInto) {
  office.word.projects = {{.file = L"C:\\Geheim.dot", .protection = 1}};
  std::vector<Project> projects = projectsOf(office.connect(L"Word.Application").object);
  const auto project = analyseProject(projects[0], [] { return true; });
  ASSERT_TRUE(project);
  EXPECT_EQ(project->document, L"Geheim");
  EXPECT_TRUE(project->isProtected && project->components.empty());
  EXPECT_EQ(office.word.callsOf[L"VBComponents"], 0);
}

TEST_F(ProjectAnalysis, ItEndsBetweenItemsWhenItIsToldTo) {
  const std::vector<FakeComponent> components(3, {.name = L"M", .code = "Sub A()\r\nEnd Sub"});
  for (int last = 1; last <= 6; ++last) {
    int asked = 0;
    EXPECT_FALSE(analyse(components, [&] { return ++asked < last; })) << last;
    EXPECT_EQ(asked, last);
    EXPECT_EQ(office.word.living, 0);
  }
}

TEST_F(ProjectAnalysis, LargeProjectsCostFewCalls) {
  constexpr int kComponents = 200, kProcedures = 10, kLines = 25;
  std::string code;
  for (int i = 0; i < kProcedures; ++i) {
    code += "Sub P" + std::to_string(i) + "()\r\n";
    for (int line = 2; line < kLines; ++line) code += "    x = x + 1\r\n";
    code += i + 1 < kProcedures ? "End Sub\r\n" : "End Sub";
  }
  const auto project =
      analyse(std::vector<FakeComponent>(kComponents, {.name = L"M", .code = code}));
  ASSERT_TRUE(project);
  EXPECT_EQ(project->components.back().lines, kProcedures * kLines);
  EXPECT_EQ(project->components.back().procedures.size(), static_cast<std::size_t>(kProcedures));
  constexpr int kForTheProject = 4;  // Protection, BuildFileName, VBComponents, Count
  EXPECT_LE(office.word.calls, kForTheProject + 6 * kComponents + 3 * kComponents * kProcedures);
  EXPECT_EQ(office.word.callsOf[L"Lines"], 0);
}

}  // namespace
}  // namespace tintline::test
