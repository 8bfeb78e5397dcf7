// See frmSplash.h. Tested by tests/app/start_test.cpp.
#include "app/frmSplash/frmSplash.h"

#include <string_view>
#include <vector>

#include "base/codepage.h"
#include "base/text.h"

namespace tintline {
namespace {

// Where feedback is sent to; as long as there is no address there is no link.
constexpr std::wstring_view kFeedbackAddress = L"";

}  // namespace

frmSplash::frmSplash(Shell& shell) : shell_(shell) {
  Caption = L"TINTLINE";
  lblProductName.Caption = L"Produkt";
  lblVersion.Caption = L"- Version -";
  lblCopyright.Caption = L"© 2026 Die TINTLINE-Autoren";
  Label1.Caption = L"Schlüsselworte werden eingelesen...";
  Label2.Caption = L"- Freeware für Privatanwender -";
  Label3.Caption = L"Feedback: " + std::wstring(kFeedbackAddress);
  Label3.Visible = !kFeedbackAddress.empty();
  Frame1.Click = [this] { Frame1_Click(); };
  Label3.Click = [this] { Label3_Click(); };
}

void frmSplash::Form_Load() {
  lblVersion.Caption = versionText();
  lblProductName.Caption = L"TINTLINE";
}

void frmSplash::Form_KeyPress() {
  if (Check1) Unload();
  Check1 = false;
}

void frmSplash::Form_MouseUp() { Form_KeyPress(); }

// Closes the splash while the program starts, too: kept on purpose.
void frmSplash::Frame1_Click() {
  Unload();
  Check1 = false;
}

void frmSplash::Label3_Click() {
  shell_.open(L"mailto:" + std::wstring(kFeedbackAddress) + L"?subject=Feedback");
}

std::wstring versionText() {
  const std::vector<std::string_view> numbers = Split(TINTLINE_VERSION, '.');
  return L"Version " + fromAnsi(numbers.at(0)) + L"." + fromAnsi(numbers.at(1)) + L" (Build " +
         fromAnsi(numbers.at(2)) + L")";
}

}  // namespace tintline
