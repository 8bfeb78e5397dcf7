// See frmPrePostCode.h. Tested by tests/unit/app/dialogs_test.cpp.
#include "app/frmPrePostCode/frmPrePostCode.h"

#include <string_view>
#include <utility>

#include "base/codepage.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

constexpr std::string_view kTerminator = ",";  // of every value in the settings file

}  // namespace

frmPrePostCode::frmPrePostCode(std::filesystem::path settingsFile)
    : settingsFile_(std::move(settingsFile)) {
  Caption = L"TINTLINE PreCode/PostCode konfigurieren";
  Label1.Caption = L"PreCode:";
  Label2.Caption = L"PostCode:";
  txtPostCode.AccessibleName = Label2.Caption;  // which comes behind it
  OKButton.Caption = L"Speichern";
  CancelButton.Caption = L"Abbrechen";
  OKButton.Click = [this] { OKButton_Click(); };
  CancelButton.Click = [this] { CancelButton_Click(); };
}

void frmPrePostCode::Form_Load() {
  txtPreCode.Text = fromAnsi(modIniSave::fkt_IniWertLesen(settingsFile_, "PreCode"));
  txtPostCode.Text = fromAnsi(modIniSave::fkt_IniWertLesen(settingsFile_, "PostCode"));
}

void frmPrePostCode::OKButton_Click() {
  const auto write = [this](std::string_view key, const TextBox& field) {
    modIniSave::IniWertSchreiben(settingsFile_, key, toAnsi(field.Text()).append(kTerminator));
  };
  write("PreCode", txtPreCode);
  write("PostCode", txtPostCode);
  Unload();
}

void frmPrePostCode::CancelButton_Click() { Unload(); }

}  // namespace tintline
