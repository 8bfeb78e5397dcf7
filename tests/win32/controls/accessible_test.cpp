// Tests of win32/controls/accessible.h and list_accessible.h, asked as a screen reader asks.
#include "win32/controls/accessible.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/win32/host_window.h"
#include "win32/control_ids.h"
#include "win32/controls/list_view.h"
#include "win32/controls/status_line.h"
#include "win32/controls/tree_view.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

VARIANT child(LONG number) {
  VARIANT id{};
  id.vt = VT_I4;
  id.lVal = number;
  return id;
}

ComPtr<IAccessible> ask(HWND control) {
  ComPtr<IAccessible> object;
  throwIfFailed(
      AccessibleObjectFromWindow(control, OBJID_CLIENT, __uuidof(IAccessible), object.putVoid()));
  return object;
}

// "role: name", and what is true of it.
std::wstring told(const ComPtr<IAccessible>& object, LONG number = CHILDID_SELF) {
  BSTR name = nullptr;
  VARIANT role{}, state{};
  if (FAILED(object->get_accName(child(number), &name))) return L"(none)";
  object->get_accRole(child(number), &role);
  object->get_accState(child(number), &state);
  std::wstring text = std::to_wstring(role.lVal) + L": " + (name != nullptr ? name : L"");
  SysFreeString(name);
  if ((state.lVal & STATE_SYSTEM_SELECTED) != 0) text += L" [selected]";
  if ((state.lVal & STATE_SYSTEM_FOCUSED) != 0) text += L" [focused]";
  if ((state.lVal & STATE_SYSTEM_OFFSCREEN) != 0) text += L" [off]";
  return text;
}

TEST(Accessible, ListsTellTheirLinesAndTakeASelection) {
  ListBox model;
  model.AccessibleName = L"Quellcode";
  model.Hint = L"Strg+O";
  test::HostWindow window;
  ListView view{window.host, model, id::kList1, ListTextMeasure().widestCharacter()};
  view.setFont(nullptr, kDesignDpi);
  SetWindowPos(view.hwnd(), nullptr, 0, 0, 300, 200, SWP_NOZORDER | SWP_SHOWWINDOW);
  window.show(view);
  const auto list = ask(view.hwnd());
  EXPECT_EQ(told(list), L"33: Quellcode. Strg+O");
  for (int i = 1; i <= 32'000; ++i) model.AddItem("\xDC " + std::to_string(i));
  for (const std::size_t line : {0U, 2U}) model.setSelected(line, true);
  model.setListIndex(2);
  window.show(view);
  SetFocus(view.hwnd());
  LONG count = 0;
  list->get_accChildCount(&count);
  EXPECT_EQ(count, 32'000);
  EXPECT_EQ(told(list).substr(0, 13), L"33: Quellcode");
  EXPECT_EQ(told(list, 1), L"34: Ü 1 [selected]");
  EXPECT_EQ(told(list, 2), L"34: Ü 2");
  EXPECT_EQ(told(list, 3), L"34: Ü 3 [selected] [focused]");
  EXPECT_EQ(told(list, 32'000), L"34: Ü 32000 [off]");
  EXPECT_EQ(told(list, 32'001), L"(none)");
  VARIANT answer{}, parts[3]{};
  EXPECT_EQ(list->get_accFocus(&answer), S_OK);
  EXPECT_EQ(answer.lVal, 3);
  ASSERT_EQ(list->get_accSelection(&answer), S_OK);
  ASSERT_EQ(answer.vt, VT_UNKNOWN);
  const auto selected = ComPtr<IUnknown>::adopt(answer.punkVal).query<IEnumVARIANT>();
  ULONG given = 0;
  EXPECT_EQ(selected->Next(3, parts, &given), S_FALSE);
  EXPECT_EQ(given, 2U);
  EXPECT_EQ(parts[1].lVal, 3);
  LONG left = 0, top = 0, width = 0, height = 0;
  list->accLocation(&left, &top, &width, &height, child(2));
  EXPECT_EQ(list->accHitTest(left + 1, top + 1, &answer), S_OK);
  EXPECT_EQ(answer.lVal, 2);
  EXPECT_EQ(list->accSelect(SELFLAG_TAKESELECTION, child(5)), S_OK);
  EXPECT_EQ(model.SelCount(), 1U);
  EXPECT_TRUE(model.Selected(4));
  EXPECT_EQ(list->accNavigate(NAVDIR_NEXT, child(32'000), &answer), S_FALSE);
}

TEST(Accessible, ControlsWithoutATextHaveANameAndLinksAreOpened) {
  TreeView tree;
  tree.AccessibleName = L"Quellbaum";
  Label label;
  test::HostWindow window;
  const TreeWidget treeWidget(window.host, tree, id::kTreeView1);
  StatusWidget link(window.host, label, id::kExportPfad);
  EXPECT_EQ(told(ask(treeWidget.hwnd())).substr(4), L"Quellbaum");
  int clicks = 0;
  label.Click = [&clicks] { ++clicks; };
  EXPECT_NE(told(ask(link.hwnd())).substr(0, 3), L"30:") << "nothing to open yet";
  label.Caption = L"C:\\a.htm";
  window.show(link);
  EXPECT_EQ(told(ask(link.hwnd())), L"30: C:\\a.htm");
  ask(link.hwnd())->accDoDefaultAction(child(CHILDID_SELF));
  EXPECT_TRUE(test::pumpUntil([&clicks] { return clicks == 1; }));
}

}  // namespace
}  // namespace tintline
