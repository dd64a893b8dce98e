; The installer for Windows. package calls it with VERSION, LISTS (a folder with install.nsh, remove.nsh and
; quintara.ico) and OUTPUT.
;
; setup.exe [/S] [/AllUsers | /CurrentUser] [/D=FOLDER]: /S asks nothing; /D comes last and takes no quotes. Ends with
; 0, with 1 when the user gave up, with 2 when something could not be put in place or registered: then nothing stays.

Unicode true
Name "Quintara"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
SetDateSave off
CRCCheck on
ManifestDPIAware true
BrandingText "Quintara ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Quintara"
VIAddVersionKey CompanyName "Quintara"
VIAddVersionKey FileDescription "Quintara setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright ""

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quintara"

; Whoever may change the machine chooses between all users and himself; another one installs for himself.
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "Quintara"
!define MULTIUSER_USE_PROGRAMFILES64
!define MUI_ICON "${LISTS}/quintara.ico"
!define MUI_UNICON "${LISTS}/quintara.ico"
!define MUI_ABORTWARNING

!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include x64.nsh
!include "${LISTS}/install.nsh"
!include "${LISTS}/remove.nsh"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "German"

Var problem ; what went wrong, empty so far

; What regsvr32 ends with, as words.
!macro Functions un
Function ${un}Reason
  Exch $0
  ${Select} $0
    ${Case} 3
      StrCpy $0 "it could not be loaded"
    ${Case} 4
      StrCpy $0 "it has no entry for that"
    ${Case} 5
      StrCpy $0 "it could not write to the registry, or not read its type library"
    ${CaseElse}
      StrCpy $0 "regsvr32 ended with $0"
  ${EndSelect}
  Exch $0
FunctionEnd

; Stack: the library's path, then regsvr32 with its switches.
Function ${un}RunRegsvr
  Exch $1
  Exch
  Exch $0
  Push $2
  Push $3
  ClearErrors
  ExecWait '$1 /s "$0"' $2
  ${If} ${Errors}
    StrCpy $2 "regsvr32 could not be started"
  ${ElseIf} $2 <> 0
    Push $2
    Call ${un}Reason
    Pop $2
  ${EndIf}
  ${If} $2 != 0
  ${AndIf} $problem == ""
    StrCpy $problem "$0: $2"
  ${EndIf}
  Pop $3
  Pop $2
  Pop $0
  Pop $1
FunctionEnd

; Tells the problem: in a box, or, when nobody may be asked, on the standard error of whoever called.
Function ${un}TellProblem
  SetErrorLevel 2
  DetailPrint "$problem"
  ${IfNot} ${Silent}
    MessageBox MB_OK|MB_ICONSTOP "$problem"
    Return
  ${EndIf}
  System::Call 'kernel32::AttachConsole(i -1)'
  System::Call 'kernel32::GetStdHandle(i -12) p .r9'
  FileWrite $9 "$problem$\r$\n"
FunctionEnd
!macroend
!insertmacro Functions ""
!insertmacro Functions "un."

; A library is registered by a regsvr32 of its own bitness. Which users it serves it learns from the environment.
!macro Regsvr un switches
  ${If} $MultiUser.InstallMode == "CurrentUser"
    System::Call 'kernel32::SetEnvironmentVariable(t "QUINTARA_REGISTER", t "user")'
  ${EndIf}
  Push "$INSTDIR\Quintara.dll"
  Push '"$WINDIR\Sysnative\regsvr32.exe" ${switches}'
  Call ${un}RunRegsvr
  Push "$INSTDIR\x86\Quintara.dll"
  Push '"$SYSDIR\regsvr32.exe" ${switches}'
  Call ${un}RunRegsvr
!macroend

!macro RemoveAll
  !insertmacro RemoveFiles
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey SHCTX "${KEY}"
!macroend

Section "Quintara"
  ; An older one goes first, from wherever it is.
  ReadRegStr $0 SHCTX "${KEY}" "InstallLocation"
  ${If} $0 != ""
    ExecWait '"$0\uninstall.exe" /S /$MultiUser.InstallMode _?=$0'
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}

  SetOutPath "$INSTDIR"
  ClearErrors
  !insertmacro BringFiles
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    StrCpy $problem "$INSTDIR: a file could not be written"
  ${Else}
    !insertmacro Regsvr "" ""
  ${EndIf}
  ${If} $problem != ""
    StrCpy $8 $problem
    !insertmacro Regsvr "" "/u"
    StrCpy $problem $8
    SetOutPath "$TEMP"
    !insertmacro RemoveAll
    Call TellProblem
    Abort
  ${EndIf}

  WriteRegStr SHCTX "${KEY}" "DisplayName" "Quintara"
  WriteRegStr SHCTX "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${KEY}" "DisplayIcon" "$INSTDIR\QuintaraHosts.exe"
  WriteRegStr SHCTX "${KEY}" "Publisher" "Quintara"
  WriteRegStr SHCTX "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  ExecWait '"$INSTDIR\QuintaraHosts.exe" /unregserver'
  !insertmacro Regsvr "un." "/u"
  !insertmacro RemoveAll
  ${If} $problem != ""
    Call un.TellProblem
  ${EndIf}
SectionEnd

Function .onInit
  ${IfNot} ${RunningX64}
    StrCpy $problem "Quintara's setup needs a 64-bit Windows; the 32-bit library alone comes in the zip file."
    Call TellProblem
    Abort
  ${EndIf}
  SetRegView 64
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd
