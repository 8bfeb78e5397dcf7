Target amd64-unicode
; The installer for Windows, made by package/build.py, which gives
;   VERSION  VERSION_NUMBERS (four)  STAGE (folder with the program's files)  SIZE (their KB)
;   REFERENCE (folder with the settings of a first start)
;   PICTURES (folder with icon and picture)  TARGET (the installer).
;
; Without administrator rights it installs for this user; for all users it asks Windows for
; them. Silent: x-setup.exe /S [/AllUsers] [/ContextMenu] [/Path] [/D=FOLDER]
; Exit codes: 0 done, 1 ended by the user, 2 not possible (TINTLINE or its help is open, rights
; are missing, the folder cannot be written).
; Tested by tests/package/run.py.
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TINTLINE"
!define NOT_POSSIBLE 2

Name "TINTLINE"
OutFile "${TARGET}"
BrandingText "TINTLINE ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

Var ForAll        ; 1: for all users
Var ModeIsGiven   ; 1: by an option, nobody is asked
Var Parameters    ; all that this installer was started with
Var GivenFolder   ; by /D, or empty
Var New           ; folder where the new files wait until the older version is gone
Var RadioForMe
Var RadioForAll
Var UserSettings  ; folder of the settings file of an installed program
Var Changed       ; settings that the user changed, a line each

; ------------------------------------------------------------------------------- pages
!define MUI_ICON "${PICTURES}\tintline.ico"
!define MUI_UNICON "${PICTURES}\tintline.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURES}\setup.bmp"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC  ; room for the names
; By the shell, which runs it with the rights of the user and not with those of the installer.
!define MUI_FINISHPAGE_RUN "$WINDIR\explorer.exe"
!define MUI_FINISHPAGE_RUN_PARAMETERS '$\"$INSTDIR\TINTLINE.exe$\"'
!define MUI_FINISHPAGE_RUN_TEXT "$(RunText)"

Page custom ModePage ModePageLeave
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "German"  ; the first is for all languages but those named here
!insertmacro MUI_LANGUAGE "English"

!macro Text NAME GERMAN ENGLISH
  LangString ${NAME} ${LANG_GERMAN} "${GERMAN}"
  LangString ${NAME} ${LANG_ENGLISH} "${ENGLISH}"
!macroend
!insertmacro Text RunText "TINTLINE starten" "Start TINTLINE"
!insertmacro Text ModeTitle "Für wen?" "For whom?"
!insertmacro Text ModeSubtitle "TINTLINE kann für Sie allein oder für alle Benutzer installiert werden." \
  "TINTLINE can be installed for you only or for all users."
!insertmacro Text ModeForMe "Nur für &mich (ohne Administratorrechte)" \
  "Only for &me (no administrator rights needed)"
!insertmacro Text ModeForAll "Für &alle Benutzer (mit Administratorrechten)" \
  "For &all users (needs administrator rights)"
!insertmacro Text RightsAreMissing "Dafür sind Administratorrechte nötig." \
  "This needs administrator rights."
!insertmacro Text IsInUse "$0$\r$\nkann nicht ersetzt oder gelöscht werden. Bitte beenden Sie zuerst TINTLINE und schließen Sie seine Hilfe." \
  "$0$\r$\ncannot be replaced or deleted. Please close TINTLINE and its help first."
!insertmacro Text NotAFolder "In diesen Ordner kann TINTLINE nicht installiert werden:$\r$\n$0" \
  "TINTLINE cannot be installed in this folder:$\r$\n$0"
!insertmacro Text NotWritten "In diesen Ordner kann nicht geschrieben werden, oder sein Datenträger ist voll:$\r$\n$INSTDIR" \
  "This folder cannot be written, or its disk is full:$\r$\n$INSTDIR"
!insertmacro Text SomethingStays "Nicht alle Dateien von TINTLINE konnten gelöscht werden. Bitte schließen Sie, was sie benutzt, und entfernen Sie TINTLINE noch einmal." \
  "Some files of TINTLINE could not be deleted. Please close what uses them and remove TINTLINE again."
!insertmacro Text OldStays "Die ältere Version konnte nicht entfernt werden." \
  "The older version could not be removed."
!insertmacro Text SectionProgram "Programm" "Program"
!insertmacro Text SectionMenu "Mit TINTLINE konvertieren" "Mit TINTLINE konvertieren"
!insertmacro Text SectionPath "In den Suchpfad (PATH)" "On the search path (PATH)"
!insertmacro Text AboutProgram "TINTLINE, die Befehlszeile und die Hilfe." \
  "TINTLINE, its command line and its help (in German)."
!insertmacro Text AboutMenu "Ein Eintrag im Kontextmenü von .bas, .cls, .frm und Office-Dateien mit Makros, der die Datei öffnet." \
  "An entry in the context menu of .bas, .cls, .frm and Office files with macros that opens the file."
!insertmacro Text AboutPath "Der Ordner kommt in den Suchpfad: jede neue Eingabeaufforderung kennt dann den Befehl tintline." \
  "The folder is put on the search path: new consoles know the command tintline then."
!insertmacro Text KeepSettings "Sie haben Einstellungen von TINTLINE geändert:$\r$\n$Changed$\r$\n$\r$\nSollen diese Dateien bleiben?" \
  "You changed settings of TINTLINE:$\r$\n$Changed$\r$\n$\r$\nShall these files stay?"

; The properties of the installer.
VIProductVersion "${VERSION_NUMBERS}"
!macro Property NAME VALUE
  VIAddVersionKey /LANG=${LANG_GERMAN} "${NAME}" "${VALUE}"
  VIAddVersionKey /LANG=${LANG_ENGLISH} "${NAME}" "${VALUE}"
!macroend
!insertmacro Property CompanyName "Die TINTLINE-Autoren"
!insertmacro Property ProductName "TINTLINE"
!insertmacro Property ProductVersion "${VERSION}"
!insertmacro Property FileVersion "${VERSION}"
!insertmacro Property FileDescription "TINTLINE Setup"
!insertmacro Property LegalCopyright "© 2026 Die TINTLINE-Autoren"

; ---------------------------------------------------- what installing and removing share
!macro Shared un
; Ends a run that cannot go on, with a message unless it is silent. On the stack: the message.
Function ${un}NotPossible
  Exch $0
  MessageBox MB_ICONSTOP "$0" /SD IDOK
  SetErrorLevel ${NOT_POSSIBLE}
  Quit
FunctionEnd

; A program that runs, or a file that is open, cannot be opened for writing. On the stack: its
; path.
Function ${un}WaitUntilClosed
  Exch $0
  Push $1
  again:
  ${If} ${FileExists} "$0"
    ClearErrors
    FileOpen $1 "$0" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION|MB_RETRYCANCEL "$(IsInUse)" /SD IDCANCEL IDRETRY again
      SetErrorLevel ${NOT_POSSIBLE}
      Quit
    ${EndIf}
    FileClose $1
  ${EndIf}
  Pop $1
  Pop $0
FunctionEnd

Function ${un}RefreshMenus
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'  ; associations changed
FunctionEnd
!macroend
!insertmacro Shared ""
!insertmacro Shared "un."
!include "${__FILEDIR__}\search_path.nsh"

; For each file that is ours alone, but for the uninstaller: MACRO NAME
!macro ForProgramFiles MACRO
  !insertmacro ${MACRO} "TINTLINE.exe"
  !insertmacro ${MACRO} "TINTLINE.com"
  !insertmacro ${MACRO} "TINTLINE2.chm"
  !insertmacro ${MACRO} "LIESMICH.txt"
  !insertmacro ${MACRO} "README.txt"
  !insertmacro ${MACRO} "LIZENZ.txt"
!macroend

; For each kind of file with code: MACRO KIND
!macro ForFilesWithCode MACRO
  ; Modules
  !insertmacro ${MACRO} ".bas"
  !insertmacro ${MACRO} ".cls"
  !insertmacro ${MACRO} ".frm"
  ; Office files that may hold macros
  !insertmacro ${MACRO} ".xlsm"
  !insertmacro ${MACRO} ".xlsb"
  !insertmacro ${MACRO} ".xltm"
  !insertmacro ${MACRO} ".xlam"
  !insertmacro ${MACRO} ".xls"
  !insertmacro ${MACRO} ".xlt"
  !insertmacro ${MACRO} ".xla"
  !insertmacro ${MACRO} ".docm"
  !insertmacro ${MACRO} ".dotm"
  !insertmacro ${MACRO} ".doc"
  !insertmacro ${MACRO} ".dot"
  !insertmacro ${MACRO} ".pptm"
  !insertmacro ${MACRO} ".potm"
  !insertmacro ${MACRO} ".ppsm"
  !insertmacro ${MACRO} ".ppam"
  !insertmacro ${MACRO} ".ppt"
  !insertmacro ${MACRO} ".pot"
  !insertmacro ${MACRO} ".ppa"
!macroend
!define MENU_KEY "Software\Classes\SystemFileAssociations"

; ------------------------------------------------------------------------ installing
!macro WaitUntilClosed NAME
  Push "$INSTDIR\${NAME}"
  Call WaitUntilClosed
!macroend
!macro WriteNewFile NAME
  File "${STAGE}\${NAME}"
!macroend
!macro PlaceNewFile NAME
  Delete "$INSTDIR\${NAME}"
  Rename "$New\${NAME}" "$INSTDIR\${NAME}"
!macroend

Section "!$(SectionProgram)" ProgramSection
  SectionIn RO
  AddSize ${SIZE}  ; of what functions write
  !insertmacro ForProgramFiles WaitUntilClosed
  !insertmacro WaitUntilClosed "Uninstall.exe"
  Call WriteNewFiles
  Call RemoveOlderVersion
  Call PlaceNewFiles
  CreateShortcut "$SMPROGRAMS\TINTLINE.lnk" "$INSTDIR\TINTLINE.exe"

  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "TINTLINE"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\TINTLINE.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Die TINTLINE-Autoren"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${ProgramSection} $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

!macro AddMenu KIND
  WriteRegStr SHCTX "${MENU_KEY}\${KIND}\shell\TINTLINE" "" "Mit TINTLINE konvertieren"
  WriteRegStr SHCTX "${MENU_KEY}\${KIND}\shell\TINTLINE" "Icon" "$INSTDIR\TINTLINE.exe"
  WriteRegStr SHCTX "${MENU_KEY}\${KIND}\shell\TINTLINE\command" "" '"$INSTDIR\TINTLINE.exe" "%1"'
!macroend

Section /o "$(SectionMenu)" MenuSection
  !insertmacro ForFilesWithCode AddMenu
  Call RefreshMenus
SectionEnd

Section /o "$(SectionPath)" PathSection
  Call AddToPath
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "OnPath" 1
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${ProgramSection} "$(AboutProgram)"
  !insertmacro MUI_DESCRIPTION_TEXT ${MenuSection} "$(AboutMenu)"
  !insertmacro MUI_DESCRIPTION_TEXT ${PathSection} "$(AboutPath)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Everything is written, in a folder beside its place, before the older version goes: what cannot
; be written takes nothing away.
Function WriteNewFiles
  CreateDirectory "$INSTDIR"
  ClearErrors
  GetTempFileName $New "$INSTDIR"
  ${If} ${Errors}
    StrCpy $New ""
    Push "$(NotWritten)"
    Call GiveUp
  ${EndIf}
  Delete "$New"  ; only its name is wanted
  SetOutPath "$New"
  ClearErrors
  SetOverwrite try  ; errors are looked at here, once for all files
  !insertmacro ForProgramFiles WriteNewFile
  !insertmacro WriteNewFile "vb.ini"
  SetOverwrite on
  WriteUninstaller "$New\Uninstall.exe"
  ${If} ${Errors}
    Push "$(NotWritten)"
    Call GiveUp
  ${EndIf}
FunctionEnd

; On the stack: the message.
Function GiveUp
  Call DropNewFiles
  Call NotPossible
FunctionEnd

Function DropNewFiles
  SetOutPath "$TEMP"  ; a folder that is in use would stay
  ${If} $New != ""
    RMDir /r "$New"
  ${EndIf}
  RMDir "$INSTDIR"  ; only when it is empty
FunctionEnd

Function .onInstFailed  ; called by NSIS when a disk is full
  Call DropNewFiles
FunctionEnd

; Nothing is left of an older version but what the user changed.
Function RemoveOlderVersion
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\Uninstall.exe"
    ExecWait '"$0\Uninstall.exe" /S _?=$0' $1
    ${If} $1 <> 0
      Push "$(OldStays)"
      Call GiveUp
    ${EndIf}
    Delete "$0\Uninstall.exe"
    RMDir "$0"  ; only when it is empty
  ${EndIf}
FunctionEnd

Function PlaceNewFiles
  ClearErrors
  !insertmacro ForProgramFiles PlaceNewFile
  !insertmacro PlaceNewFile "Uninstall.exe"
  ${IfNot} ${FileExists} "$INSTDIR\vb.ini"  ; one that is still there was extended by the user
    Rename "$New\vb.ini" "$INSTDIR\vb.ini"
  ${EndIf}
  ${If} ${Errors}
    Push "$(NotWritten)"
    Call GiveUp
  ${EndIf}
  SetOutPath "$INSTDIR"  ; a folder that is in use would stay; the program starts here, too
  RMDir /r "$New"
FunctionEnd

Function .onInit
  ; Of Windows, as NSIS takes /D from the parameters that it gives.
  System::Call 'kernel32::GetCommandLineW() p .r0'
  System::Call 'shlwapi::PathGetArgsW(p r0) w .r1'
  System::Call 'shlwapi::PathGetArgsW(p r0) p .r0'
  System::Call 'shlwapi::StrStrIW(p r0, w "/D=") p .r2'
  StrCpy $Parameters $1
  StrCpy $GivenFolder $INSTDIR
  ${If} $2 P<> 0
  ${AndIf} $GivenFolder == ""  ; NSIS passes over a folder that cannot be
    System::Call 'shlwapi::StrStrIW(p r0, w "/D=") w .r0'
    StrCpy $0 $0 "" 3
    Push "$(NotAFolder)"
    Call NotPossible
  ${EndIf}
  ClearErrors
  ${GetOptions} $Parameters "/ContextMenu" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${MenuSection}
  ${EndIf}
  ClearErrors
  ${GetOptions} $Parameters "/Path" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${PathSection}
  ${EndIf}
  StrCpy $ForAll 0
  StrCpy $ModeIsGiven 0
  ClearErrors
  ${GetOptions} $Parameters "/AllUsers" $1
  ${IfNot} ${Errors}
    StrCpy $ForAll 1
    StrCpy $ModeIsGiven 1
    Call IsAdministrator
    Pop $0
    ${If} $0 = 0
      Push "$(RightsAreMissing)"
      Call NotPossible
    ${EndIf}
  ${EndIf}
  Call UseMode
FunctionEnd

; 1 or 0 on the stack.
Function IsAdministrator
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    Push 1
  ${Else}
    Push 0
  ${EndIf}
FunctionEnd

; Places of this mode; what an older version has is taken over.
Function UseMode
  ${If} $ForAll = 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
  StrCpy $INSTDIR $GivenFolder
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${EndIf}
  ${If} $INSTDIR == ""
    ${If} $ForAll = 1
      StrCpy $INSTDIR "$PROGRAMFILES64\TINTLINE"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\TINTLINE"
    ${EndIf}
  ${EndIf}
  ReadRegStr $0 SHCTX "${MENU_KEY}\.bas\shell\TINTLINE" ""
  ${If} $0 != ""
    !insertmacro SelectSection ${MenuSection}
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "OnPath"
  ${If} $0 = 1
    !insertmacro SelectSection ${PathSection}
  ${EndIf}
FunctionEnd

Function ModePage
  ${If} $ModeIsGiven = 1
    Abort  ; the page is left out
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "$(ModeTitle)" "$(ModeSubtitle)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 10u 20u 90% 12u "$(ModeForMe)"
  Pop $RadioForMe
  ${NSD_CreateRadioButton} 10u 40u 90% 12u "$(ModeForAll)"
  Pop $RadioForAll
  ${If} $ForAll = 1
    ${NSD_Check} $RadioForAll
  ${Else}
    ${NSD_Check} $RadioForMe
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function ModePageLeave
  ${NSD_GetState} $RadioForAll $0
  ${If} $0 <> ${BST_CHECKED}
    StrCpy $1 0
  ${Else}
    StrCpy $1 1
    Call IsAdministrator
    Pop $0
    ${If} $0 = 0
      ClearErrors
      ; Again, with rights that Windows asks for.
      ExecShell "runas" "$EXEPATH" "/AllUsers $Parameters"
      ${IfNot} ${Errors}
        Quit
      ${EndIf}
      MessageBox MB_ICONEXCLAMATION "$(RightsAreMissing)"
      Abort  ; the page stays
    ${EndIf}
  ${EndIf}
  ${If} $1 <> $ForAll
    StrCpy $ForAll $1
    Call UseMode
  ${EndIf}
FunctionEnd

; -------------------------------------------------------------------------- removing
!macro RemoveMenu KIND
  DeleteRegKey SHCTX "${MENU_KEY}\${KIND}\shell\TINTLINE"
  DeleteRegKey /ifempty SHCTX "${MENU_KEY}\${KIND}\shell"
  DeleteRegKey /ifempty SHCTX "${MENU_KEY}\${KIND}"
!macroend

!macro un.WaitUntilClosed NAME
  Push "$INSTDIR\${NAME}"
  Call un.WaitUntilClosed
!macroend
!macro un.DeleteFile NAME
  Delete "$INSTDIR\${NAME}"
!macroend

Section "Uninstall"
  !insertmacro ForProgramFiles un.WaitUntilClosed
  ClearErrors
  !insertmacro ForProgramFiles un.DeleteFile
  !insertmacro un.DeleteFile "dummy.html"  ; the page of the preview
  ${If} ${Errors}  ; it stays registered, so that it can be removed again
    Push "$(SomethingStays)"
    Call un.NotPossible
  ${EndIf}
  Call un.RemoveSettings
  Delete "$INSTDIR\Uninstall.exe"
  SetOutPath "$TEMP"  ; a folder that is in use would stay
  RMDir "$INSTDIR"    ; only when it is empty, and so the folder that it lies in by default
  ${GetParent} "$INSTDIR" $0
  ${If} $0 == "$LOCALAPPDATA\Programs"
    RMDir "$0"
  ${EndIf}
  RMDir "$UserSettings"
  Delete "$SMPROGRAMS\TINTLINE.lnk"
  ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "OnPath"
  ${If} $0 = 1
    Call un.RemoveFromPath
  ${EndIf}
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  !insertmacro ForFilesWithCode RemoveMenu
  Call un.RefreshMenus
SectionEnd

; Settings that nobody changed go; about the others the user is asked.
!macro RemoveSetting PATH REFERENCE
  StrCpy $0 "${PATH}"
  ${If} ${FileExists} "$0"
    StrCpy $1 "$PLUGINSDIR\reference"
    File "/oname=$1" "${REFERENCE}"
    Call un.AreEqual
    ${If} $2 = 1
      Delete "$0"
    ${Else}
      StrCpy $Changed "$Changed$\r$\n$0"
    ${EndIf}
  ${EndIf}
!macroend

Function un.RemoveSettings
  InitPluginsDir
  StrCpy $Changed ""
  !insertmacro RemoveSetting "$INSTDIR\vb.ini" "${STAGE}\vb.ini"
  !insertmacro RemoveSetting "$INSTDIR\TINTLINE.ini" "${REFERENCE}\TINTLINE.ini"
  !insertmacro RemoveSetting "$UserSettings\TINTLINE.ini" "${REFERENCE}\TINTLINE.ini"
  ${If} $Changed != ""
    MessageBox MB_ICONQUESTION|MB_YESNO "$(KeepSettings)" /SD IDYES IDYES keep
    Delete "$INSTDIR\vb.ini"
    Delete "$INSTDIR\TINTLINE.ini"
    Delete "$UserSettings\TINTLINE.ini"
    keep:
  ${EndIf}
FunctionEnd

; $2 becomes 1 when the files $0 and $1 hold the same bytes, else 0.
Function un.AreEqual
  StrCpy $2 0
  ClearErrors
  FileOpen $3 "$0" r
  FileOpen $4 "$1" r
  ${If} ${Errors}
    Return
  ${EndIf}
  FileSeek $3 0 END $5
  FileSeek $4 0 END $6
  ${If} $5 = $6
    System::Alloc $5
    Pop $7
    System::Alloc $5
    Pop $8
    FileSeek $3 0
    FileSeek $4 0
    System::Call 'kernel32::ReadFile(p r3, p r7, i r5, *i, p 0)'
    System::Call 'kernel32::ReadFile(p r4, p r8, i r5, *i, p 0)'
    System::Call 'ntdll::RtlCompareMemory(p r7, p r8, p r5) p .r9'
    System::Free $7
    System::Free $8
    ${If} $9 = $5
      StrCpy $2 1
    ${EndIf}
  ${EndIf}
  FileClose $3
  FileClose $4
FunctionEnd

Function un.onInit
  SetShellVarContext current
  StrCpy $ForAll 0
  StrCpy $UserSettings "$APPDATA\TINTLINE"  ; of this user, also when all users have the program
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    SetShellVarContext all
    StrCpy $ForAll 1
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 != "Admin"
      ${IfNot} ${Silent}
        ClearErrors
        ExecShell "runas" "$INSTDIR\Uninstall.exe"  ; again, with rights that Windows asks for
        ${IfNot} ${Errors}
          Quit
        ${EndIf}
      ${EndIf}
      Push "$(RightsAreMissing)"
      Call un.NotPossible
    ${EndIf}
  ${EndIf}
FunctionEnd
