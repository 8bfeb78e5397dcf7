// Numbers of the controls and commands in the windows: they stay as they are, so that
// a program that drives the windows from outside finds every control by its number.
#pragma once

#include "app/frmVBACode/commands.h"

namespace tintline {

// Class names of the top-level windows.
inline constexpr wchar_t kMainClass[] = L"TINTLINE_Main";
inline constexpr wchar_t kSplashClass[] = L"TINTLINE_Splash";
inline constexpr wchar_t kColorsClass[] = L"TINTLINE_Farbeinstellung";
inline constexpr wchar_t kPrePostClass[] = L"TINTLINE_PrePostCode";
inline constexpr wchar_t kProceduresClass[] = L"TINTLINE_Prozeduren";
inline constexpr wchar_t kInputClass[] = L"TINTLINE_Eingabe";

// Sent to a list with a line's index in wParam and in lParam the address of a buffer
// in this program's memory: as LB_GETTEXT, with the bytes that the list holds and a NUL
// behind them. With no buffer it only gives the length. LB_GETTEXT itself copies no
// texts between processes for lists that draw themselves.
inline constexpr unsigned kGetLine = 0x8000 + 1;  // WM_APP + 1

// The number of WM_COMMAND for a command of menu, tool bar or keys.
inline constexpr int kCommandBase = 2000;
constexpr int commandId(Command command) { return kCommandBase + static_cast<int>(command); }

namespace id {

enum ControlId : int {
  // Of every dialog: what Enter and Escape stand for.
  kOk = 1,
  kCancel = 2,

  // frmVBACode
  kTreeView1 = 1001,
  kFrame1,
  kList1,
  kCmdModul,
  kCmdMakro,
  kCmdAuswahl,
  kCmdVBAClp,
  kCheck1,
  kCheck2,
  kOptClass,
  kOptStyle,
  kFrame2,
  kList2,
  kCmdHTMClp,
  kCmdExport,
  kCmdWord,
  kFrameVorschau,
  kBrowser,
  kLabel9,
  kLabel10,
  kExportPfad,
  kToolbar1,
  kOptKlassisch,
  kOptGenau,
  kFortschritt,

  // frmSplash
  kSplashLogo = 1101,
  kSplashProductName,
  kSplashVersion,
  kSplashCopyright,
  kSplashLabel1,
  kSplashLabel2,
  kSplashLabel3,
  kSplashEinstellungen,
  kSplashProgressBar,
  kSplashFrame1,

  // frmFarbeinstellung
  kLblKategorie = 1201,
  kCboKategorie,
  kLblText,
  kTxtFarbe,
  kCmdFarbe,
  kLblHintergrund,
  kTxtHintergrund,
  kCmdHintergrund,
  kChkTransparent,
  kLblKlassisch,
  kLblMusterKlassisch,
  kLblGenau,
  kLblHinweis,
  kCmdStandard,
  kCmdHilfe,
  kLblMusterGenau,
  kLblFarbe,
  kLblHintergrundfarbe,

  // frmPrePostCode
  kPreLabel = 1301,
  kTxtPreCode,
  kPostLabel,
  kTxtPostCode,

  // The input box
  kInputPrompt = 1401,
  kInputText,

  // frmProzeduren
  kLblFilter = 1501,
  kTxtFilter,
  kLstProzeduren,
  kLblAnzahl,
};

}  // namespace id

// Numbers of the program's resources (resources.rc names them by the same numbers).
enum ResourceId : int {
  kProgramIcon = 1,
  kToolbarStrip16 = 201,
  kToolbarStrip24,
  kToolbarStrip32,
  kTreeStrip16 = 211,
  kTreeStrip24,
  kTreeStrip32
};

}  // namespace tintline
