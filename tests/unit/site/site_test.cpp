// Sites of projects: what is found out of small modules, and what pages and data show of it.
#include "site/site.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "site/data.h"
#include "site/link_check.h"
#include "site/page_names.h"
#include "site/pages.h"
#include "site/project_file.h"
#include "site/unused.h"

namespace tintline::site {
namespace {

using vb::ModuleKind;

struct Source {
  std::u8string name;
  ModuleKind kind;
  std::u8string text;
};

// A site of one project; `isLibrary` is that of the project.
struct Built {
  explicit Built(const std::vector<Source>& sources, bool isLibrary = false) {
    Project& project = site.projects.emplace_back(u8"P", u8"", isLibrary, options);
    for (const Source& source : sources) {
      modules.push_back(vb::readModule(source.text, source.name, source.kind, words));
      project.add(modules.back(), factsOf(modules.back(), words), source.name + u8".htm",
                  site.names);
    }
    project.close();
    for (std::uint32_t i = 0; i < modules.size(); ++i) project.addUses(modules[i], i, site.names);
    project.finish();
  }

  const Project& project() const { return site.projects.front(); }

  const vb::WordLists words;
  const listing::Options options{.lineNumbers = true};
  std::vector<vb::Module> modules;
  Site site{.title = u8"S<i>te"};
};

std::string bytes(std::u8string_view text) { return {text.begin(), text.end()}; }

TEST(site, FiguresOfAProcedure) {
  const struct {
    std::u8string body;
    std::uint32_t lines, commented, empty, nesting, branches;
  } kCases[] = {
      {u8"", 2, 0, 0, 0, 1},
      {u8"'a\n\nx = 1 'b\n", 5, 2, 1, 0, 1},
      {u8"'a _\nb\nx = _\n1\n", 6, 2, 0, 0, 1},
      {u8"If a Then b Else If c Then d\n", 3, 0, 0, 0, 3},
      {u8"If a Then 'x\nElseIf b Then\nFor i = 1 To 2: Next\nElse\nEnd If\n", 7, 1, 0, 2, 4},
      {u8"For i = 1 To 2\nFor Each j In k\nNext j, i\nWhile a\nWend\n", 7, 0, 0, 2, 4},
      {u8"Select Case a\nCase 1, 2\nCase Else\nEnd Select\n", 6, 0, 0, 1, 2},
      {u8"Do While a\nLoop Until b\nExit Do\nOpen f For Input As 1\n", 6, 0, 0, 1, 2},
      {u8"#If a Then\nIf b Then\n#Else\nIf c Then\n#End If\nEnd If\n", 8, 0, 0, 1, 3},
      {u8"x.If a\nEnd\nGoTo Next\nNext: Loop: End If\nDo: Loop\n", 7, 0, 0, 1, 2},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(bytes(row.body));
    const Built built({{u8"M", ModuleKind::Standard,
                        u8"'\nSub S(a, Optional ByVal b = 1)\n" + row.body + u8"End Sub\n"}});
    const Metrics& metrics = built.project().modules()[0].procedures.at(0).metrics;
    EXPECT_EQ(metrics.counts.lines, row.lines);
    EXPECT_EQ(metrics.counts.commented, row.commented);
    EXPECT_EQ(metrics.counts.empty, row.empty);
    EXPECT_EQ(metrics.parameters, 2U);
    EXPECT_EQ(metrics.nesting, row.nesting);
    EXPECT_EQ(metrics.branches, row.branches);
  }
}

TEST(site, DocumentationOfAProcedure) {
  const struct {
    std::u8string text;
    std::u8string expected;  // text|name=text|...|returns
    bool structured;
  } kCases[] = {
      {u8"Sub S()\nEnd Sub", u8"|", false},
      {u8"'-----\n'* Above *\n' next\n'-----\nSub S()\nEnd Sub", u8"Above\nnext|", false},
      {u8"Sub S()\n\n Rem First _\n go on\n'x\nDim a\n'other\nEnd Sub", u8"First _\ngo on\nx|",
       false},
      {u8"'no\n\nSub S()\nx = 1\n'no\nEnd Sub", u8"|", false},
      {u8"'no\nSub S()\nAttribute S.VB_Description = \"a \"\"b\"\"\"\nEnd Sub", u8"a \"b\"|", true},
      {u8"'@Description(\"a\")\n'@Folder(\"x\")\nSub S()\nEnd Sub", u8"a|", true},
      {u8"'Text\n'@param a one\n'   two\n'@Param b: <b>\n'@returns c\n'@parameter d\nSub S()\nEnd "
       u8"Sub",
       u8"Text|a=one two|b=<b>|c", true},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(bytes(row.text));
    const Built built({{u8"M", ModuleKind::Standard, row.text}});
    const Documentation& found = built.project().modules()[0].procedures.at(0).documentation;
    std::u8string shown = found.text + u8"|";
    for (const auto& [name, text] : found.parameters) shown += name + u8"=" + text + u8"|";
    EXPECT_EQ(bytes(shown + found.returns), bytes(row.expected));
    EXPECT_EQ(found.structured, row.structured);
  }
}

// The unused names of all modules, each with its group in front.
std::string unusedNames(const Built& built) {
  std::u8string names;
  for (const UnusedName& name : unusedIn(built.project(), built.site.names)) {
    if (!names.empty()) names += u8' ';
    names += u8"-+.\""[static_cast<std::size_t>(name.group)];
    names += built.project().modules()[name.module].nameOf(name.declaration);
  }
  return bytes(names);
}

TEST(site, UnusedIsOnlyWhatNothingCanUse) {
  constexpr auto kBas = ModuleKind::Standard;
  constexpr auto kCls = ModuleKind::Class;
  constexpr auto kFrm = ModuleKind::Form;
  const struct {
    std::vector<Source> sources;
    std::string expected;  // - private, + public, . local, " only in texts
  } kCases[] = {
      {{{u8"M", kBas, u8"Private a, b\nConst c = 1, d = c\nSub S()\nb = 1\nEnd Sub"}}, "-a -d +S"},
      {{{u8"M", kBas, u8"Private Function F(x)\nF = F(1)\nEnd Function"}}, "-F"},
      {{{u8"M", kBas,
         u8"Sub A()\nDim i, j&, K\nStatic t\nConst n = 1\nj& = 1\nReDim q(k)\nEnd Sub"}},
       "+A .i .t .n"},
      {{{u8"M", kBas, u8"Sub A()\nEnd Sub\nSub B()\nEnd Sub\nSub C()\nEnd Sub"},
        {u8"N", kBas, u8"Sub Main()\nDim o\no.A\nM.B\nRun \"Book!M.C\"\nEnd Sub"}},
       "\"C"},
      {{{u8"M", kBas, u8"Sub X()\nEnd Sub\nSub Y()\nEnd Sub"},
        {u8"N", kBas, u8"Sub X()\nEnd Sub\nSub Main()\nX\nz = [Y(1)]\nEnd Sub"}},
       "+X"},
      {{{u8"M", kBas,
         u8"Type T\nA As Long\nEnd Type\nEnum E\nE1\nEnd Enum\nEnum F\nF1\nEnd Enum\n"
         u8"Type U\nB As Long\nEnd Type\nSub Main()\nx.A = E1\nEnd Sub"}},
       "+F +U"},
      {{{u8"M", kBas,
         u8"#If W Then\nDeclare Sub D Lib \"a\" ()\n#Else\nDeclare Sub D Lib \"b\" ()\n"
         u8"#End If\nDeclare Sub E Lib \"a\" ()\nSub Main()\nD\nEnd Sub"}},
       "+E"},
      {{{u8"C", kCls,
         u8"Property Get P()\nEnd Property\nProperty Let P(x)\nEnd Property\n"
         u8"Property Get Q()\nEnd Property\nProperty Let Q(x)\nQ = 1\nEnd Property"},
        {u8"M", kBas, u8"Sub Main()\nDim c As New C\nc.P = 1\nEnd Sub"}},
       "+Q +Q"},
      {{{u8"F", kFrm,
         u8"VERSION 5.00\nBegin VB.Form F\n Begin VB.Label L\n  Caption = \"Z\"\n End\n"
         u8"End\nPrivate Sub L_Click()\nEnd Sub\nPrivate Sub Any_Event()\nEnd Sub\n"
         u8"Private Sub Other()\nEnd Sub\nSub Z()\nEnd Sub"}},
       "-Other \"Z"},
      {{{u8"I", kCls, u8"Sub M()\nEnd Sub"},
        {u8"C", kCls,
         u8"Implements I\nPrivate WithEvents w As X\nPrivate Sub I_M()\nEnd Sub\n"
         u8"Private Sub w_E()\nEnd Sub\nPrivate Sub Class_Initialize()\nEnd Sub\n"
         u8"Private Sub x_E()\nEnd Sub"}},
       "-x_E"},
      {{{u8"C", kCls, u8"Sub A()\nEnd Sub\nPrivate Sub B()\nEnd Sub"},
        {u8"M", kBas, u8"Sub Main()\nSet o = CreateObject(\"P.C\")\nEnd Sub"}},
       "-B"},
      {{{u8"M", kBas,
         u8"Sub Auto_Open()\nEnd Sub\nSub Ribbon(c As IRibbonControl)\nEnd Sub\n"
         u8"Sub Key()\nAttribute Key.VB_ProcData.VB_Invoke_Func = \"k\\n14\"\nEnd Sub\n"
         u8"Sub NoKey()\nAttribute NoKey.VB_ProcData.VB_Invoke_Func = \" \\n14\"\n"
         u8"End Sub\nSub Step()\nEnd Sub"}},
       "+NoKey"},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(bytes(row.sources.front().text));
    EXPECT_EQ(unusedNames(Built(row.sources)), row.expected);
  }
  const std::vector<Source> shown = {
      {u8"C", kCls, u8"Attribute VB_Exposed = True\nSub A()\nEnd Sub\nPrivate Sub B()\nEnd Sub"}};
  EXPECT_EQ(unusedNames(Built(shown, true)), "-B");
  EXPECT_EQ(unusedNames(Built(shown, false)), "+A -B");
}

TEST(site, ProjectFilesListModules) {
  const ProjectFile file = readProjectFile(
      u8"Type=OleDll\r\nForm=frm A.frm\nModule = modB; ..\\Shared\\B.BAS\r\nClass=C; "
      u8"\"sub\\C.cls\"\n"
      u8"Module=D; \\\\server\\share\\D.bas\nModule=E; C:\\E.bas\nModule=F; ..\\.ssh\\id_rsa\n"
      u8"Reference=*\\G{0}#x.bas\nname = \"Rechnung\"\nDesigner=G.dsr");
  std::string found;
  for (const ProjectFile::Entry& entry : file.modules)
    found += (entry.allowed ? "" : "!") + bytes(entry.path) + "\n";
  EXPECT_EQ(found,
            "frm A.frm\n../Shared/B.BAS\nsub/C.cls\n!//server/share/D.bas\n!C:/E.bas\n"
            "!../.ssh/id_rsa\nG.dsr\n");
  EXPECT_EQ(bytes(file.name), "Rechnung");
  EXPECT_TRUE(file.isLibrary);
}

TEST(site, PagesHaveNamesOfTheirOwn) {
  const std::vector<std::u8string> pages =
      pageNames({u8"a/M.bas", u8"b/M.bas", u8"../../x/M.bas", u8"N.bas", u8"n.cls", u8"N.bas",
                 u8"N.bas", u8"con.bas", u8"com1/a:b?.bas", u8"x. /.bas", u8"./index.bas", u8""});
  std::string found;
  for (const std::u8string& page : pages) found += bytes(page) + "\n";
  EXPECT_EQ(found,
            "a/M.htm\nb/M.htm\n_/_/x/M.htm\nN.bas.htm\nn.cls.htm\nN.bas.2.htm\nN.bas.3.htm\n"
            "_con.htm\n_com1/a_b_.htm\nx._/.bas.htm\nindex.htm\n_.htm\n");
}

TEST(site, LinksLandOrAreTold) {
  LinkCheck check;
  const std::string page =
      "<!-- <a href=x> --><style>a<a href=x></style>\n<a id=1 href=#1></a><A HREF='#\xC3\xA4'>"
      "<a href=\"sub/b%20c.htm?x#I&amp;d\"><a href=#none>\n<img src=../a.htm><a href=/x>"
      "<a href=//host/x><a href=mailto:x><a href=missing.htm><a href='sub/../a.htm#%C3%A4'>"
      "<p id='\xC3\xA4'><a href=b.png><a href=";
  check.addPage("a.htm", page);
  check.addPage("sub/b c.htm", "<a name='I&#38;d'>");
  check.addFile("b.png");
  std::string told;
  const std::size_t landed = check.check("a.htm", page, [&](const BrokenLink& link) {
    told += std::to_string(link.line) + " " + link.link + " " +
            std::to_string(static_cast<int>(link.reason)) + "\n";
  });
  EXPECT_EQ(told, "2 #none 1\n3 ../a.htm 2\n3 /x 2\n3 missing.htm 0\n");
  EXPECT_EQ(landed, 6U);
}

// What a writer writes.
template <class Write>
std::string written(Write write) {
  std::ostringstream out;
  write(out);
  return out.str();
}

TEST(site, PagesShowWhoUsesWhat) {
  const Built built(
      {{u8"A", ModuleKind::Standard,
        u8"'@return <x>\nSub S()\nEnd Sub\nSub T()\nCall S: S\nx = \"<script>\"\nEnd Sub"},
       {u8"sub/B", ModuleKind::Standard, u8"'=1+1\nSub U()\nA.S\nT\nEnd Sub"}});
  const listing::DocumentMaker maker(listing::Format::Page, built.options,
                                     listing::Place::OwnPages);
  const std::string page = written([&](std::ostream& out) {
    writeModulePage(out, built.project(), 0, built.modules[0],
                    built.project().resolve(built.modules[0], 0), maker);
  });
  for (const char* part :
       {"<dl><dt>Ergebnis</dt><dd>&lt;x&gt;</dd></dl>",
        "<summary>Wird aufgerufen von (3)</summary><ul><li><a href=\"#T\">T</a>: "
        "<a href=\"#5\">5</a>, <a href=\"#5\">5</a></li><li><a href=\"sub/B.htm#U\">sub/B.U</a>: "
        "<a href=\"sub/B.htm#3\">3</a></li></ul>",
        "<a href=\"../unbenutzt.htm\">"})
    EXPECT_NE(page.find(part), std::string::npos) << part;
  const std::string other = written([&](std::ostream& out) {
    writeModulePage(out, built.project(), 1, built.modules[1],
                    built.project().resolve(built.modules[1], 1), maker);
  });
  EXPECT_NE(other.find("<a href=\"../A.htm#S\""), std::string::npos);
  EXPECT_NE(other.find("<a href=\"../../index.htm\">"), std::string::npos);
  const std::string calls =
      written([&](std::ostream& out) { writePage(Page::Calls, out, built.site, built.options); });
  EXPECT_NE(calls.find("<li><a href=\"module/A.htm#S\">S</a>: <a href=\"module/A.htm#5\">5</a>"),
            std::string::npos);
  EXPECT_EQ(written([&](std::ostream& out) { writeCsv(Table::References, out, built.site); }),
            "project,module,file,line,procedure,toModule,toName,toKind,toAccessor\r\n"
            "P,A,,5,T,A,S,sub,\r\nP,A,,5,T,A,S,sub,\r\nP,sub/B,,3,U,A,S,sub,\r\n"
            "P,sub/B,,4,U,A,T,sub,\r\n");
  EXPECT_EQ(
      written([&](std::ostream& out) { writeCsv(Table::Procedures, out, built.site); }),
      "project,module,file,name,kind,accessor,visibility,line,lines,commented,empty,parameters,"
      "nesting,branches,declares,description\r\nP,A,,S,sub,,public,2,2,0,0,0,0,1,0,\r\n"
      "P,A,,T,sub,,public,4,4,0,0,0,0,1,0,\r\nP,sub/B,,U,sub,,public,2,4,0,0,0,0,1,0,'=1+1\r\n");
  EXPECT_EQ(written([&](std::ostream& out) { writeJson(out, built.site); }).substr(0, 137),
            "{\"modules\":[\n{\"project\":\"P\",\"name\":\"A\",\"kind\":\"standard\",\"file\":\"\","
            "\"description\":\"\",\"lines\":7,\"commented\":1,\"empty\":0,\"declares\":0},\n{\"pr");
}

}  // namespace
}  // namespace tintline::site
