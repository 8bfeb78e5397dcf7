; The folder of the program on the search path (PATH): of this user, or of all when $ForAll is 1.
; Part of setup.nsi. Tested by tests/package/run.py.
;
; A search path can be longer than a text of NSIS, so it stays in memory of its own: as ";A;B;",
; where each folder is found between two semicolons.

!define PATH_OF_USER "Environment"
!define PATH_OF_ALL "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define HKEY_CURRENT_USER 0x80000001
!define HKEY_LOCAL_MACHINE 0x80000002
!define REG_SZ 1
!define REG_EXPAND_SZ 2
!define SEMICOLON 59
!define ROOM 4096  ; bytes behind the text: for the folder, which has up to 1023 characters

Var PathKey    ; opened key, 0: none
Var PathKind   ; of text
Var PathText   ; its address
Var PathEntry  ; ";FOLDER;"
Var PathFound  ; address of the entry in the text, 0: it is not there

!macro SearchPath un
Function ${un}OpenPath
  ${If} $ForAll = 1
    System::Call 'advapi32::RegCreateKeyW(p ${HKEY_LOCAL_MACHINE}, w "${PATH_OF_ALL}", *p .r0)'
  ${Else}
    System::Call 'advapi32::RegCreateKeyW(p ${HKEY_CURRENT_USER}, w "${PATH_OF_USER}", *p .r0)'
  ${EndIf}
  StrCpy $1 0
  System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, p 0, p 0, *i .r1)'
  IntOp $2 $1 + ${ROOM}
  System::Alloc $2  ; filled with zeros
  Pop $PathText
  IntPtrOp $2 $PathText + 2
  System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, *i .r3, p r2, *i r1) i .r4'
  ${If} $4 <> 0
    StrCpy $3 ${REG_EXPAND_SZ}  ; there is none yet
  ${EndIf}
  StrCpy $PathKey $0
  StrCpy $PathKind $3
  StrCpy $1 $PathText
  System::Call '*$1(&i2 ${SEMICOLON})'
  Call ${un}PathEnd
  ${If} $2 <> ${SEMICOLON}
    IntPtrOp $0 $0 + 2
    System::Call '*$0(&i2 ${SEMICOLON})'
  ${EndIf}
  StrCpy $PathEntry ";$INSTDIR;"
  Call ${un}FindInPath
FunctionEnd

; $0 becomes the address of the last character of the text, $2 that character.
Function ${un}PathEnd
  System::Call 'kernel32::lstrlenW(p $PathText) i .r0'
  IntOp $0 $0 * 2
  IntPtrOp $0 $PathText + $0
  IntPtrOp $0 $0 - 2
  System::Call '*$0(&i2 .r2)'
FunctionEnd

Function ${un}FindInPath
  System::Call 'shlwapi::StrStrIW(p $PathText, w "$PathEntry") p .r0'
  StrCpy $PathFound $0
FunctionEnd

; The text, without the semicolons around it, becomes the search path; programs are told.
Function ${un}WritePath
  ${If} $PathKind = ${REG_SZ}
  ${OrIf} $PathKind = ${REG_EXPAND_SZ}
    Call ${un}PathEnd
    System::Call '*$0(&i2 0)'
    IntPtrOp $1 $PathText + 2
    IntPtrOp $2 $0 - $PathText
    ${If} $2 > 0
      System::Call 'advapi32::RegSetValueExW(p $PathKey, w "Path", i 0, i $PathKind, p r1, i r2)'
    ${Else}
      System::Call 'advapi32::RegDeleteValueW(p $PathKey, w "Path")'
    ${EndIf}
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
  ${EndIf}
FunctionEnd

Function ${un}ClosePath
  System::Free $PathText
  System::Call 'advapi32::RegCloseKey(p $PathKey)'
FunctionEnd
!macroend
!insertmacro SearchPath ""
!insertmacro SearchPath "un."

Function AddToPath
  Call OpenPath
  ${If} $PathFound P= 0
    StrCpy $0 "$INSTDIR;"
    System::Call 'kernel32::lstrcatW(p $PathText, w r0)'
    Call WritePath
  ${EndIf}
  Call ClosePath
FunctionEnd

Function un.RemoveFromPath
  Call un.OpenPath
  ${If} $PathFound P<> 0
    StrLen $1 ";$INSTDIR"
    IntOp $1 $1 * 2
    IntPtrOp $1 $PathFound + $1
    System::Call 'kernel32::lstrcpyW(p $PathFound, p r1)'
    Call un.WritePath
  ${EndIf}
  Call un.ClosePath
FunctionEnd
