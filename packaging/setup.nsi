; The setup program: installs Quillon for the current user, without administrator rights. script/package compiles it with these defines:
;   VERSION     1.2.3
;   SIZE        of the installed files, kB
;   FILES       the folder of the files
;   SOUNDS      a file with the macro EachSound, which lists the sounds among them
;   OUTFILE     the setup program
;   SIGN        a command that signs the file given as its argument (optional)
;
; Switches, exit codes and what is kept are documented in docs/administration.md.

Unicode true
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma
; Without file dates, so that builds are reproducible.
SetDateSave off
CRCCheck force
; A file that cannot be written ends the setup, even in silent mode.
AllowSkipFiles off

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include "${SOUNDS}"

!define APPS_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"
!define PROGRAM "$INSTDIR\Quillon.exe"

; Exit codes, besides NSIS's own: 0 (done), 1 (cancelled), 2 (aborted).
!define FOLDER_REFUSED 3
!define STILL_RUNNING 4
!define FIREWALL_UNCHANGED 5

Name "Quillon"
OutFile "${OUTFILE}"
InstallDir "$LOCALAPPDATA\Programs\Quillon"
InstallDirRegKey HKCU "${APPS_KEY}" "InstallLocation"
BrandingText "Quillon ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
SpaceTexts none
!ifdef SIGN
  !uninstfinalize `${SIGN} "%1"` = 0
!endif

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Quillon"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Quillon Setup"
VIAddVersionKey /LANG=0 "CompanyName" "Vextant"
VIAddVersionKey /LANG=0 "LegalCopyright" "Copyright (c) 2026 the Quillon authors"

Var ran       ; 1 if a copy was running, which is started again
Var update    ; 1 if the folder held settings before, which stay as they are

!define MUI_ICON "../res/quillon.ico"
!define MUI_UNICON "../res/quillon.ico"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_WELCOMEFINISHPAGE_BITMAP "side.bmp"

!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveDirectory
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipOptionsOfUpdate
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
; The firewall comes first: Windows would prompt if the program opened its port without a rule.
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "$(AllowInFirewallText)"
!define MUI_FINISHPAGE_RUN_FUNCTION AllowInFirewall
!define MUI_FINISHPAGE_SHOWREADME
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(StartText)"
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION StartProgram
!define MUI_PAGE_CUSTOMFUNCTION_SHOW ShowFinish
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES

; The first one is the default for systems in any other language.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "Spanish"
!include texts.nsh

; Shows a text, unless silent, and ends with an exit code.
!macro FailWith code text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel ${code}
  Quit
!macroend

; Closes the main window of the copy that runs from this folder, so that it leaves the network properly, and waits until the process has
; ended. Copies in other folders keep running. A macro, because setup and uninstaller cannot share functions.
!macro EndRunningCopy un
Function ${un}EndRunningCopy
  ; The canonical path, whatever the user typed. Fails if there is no program yet.
  System::Call 'kernel32::GetLongPathNameW(w "${PROGRAM}", w .r4, i ${NSIS_MAX_STRLEN}) i .r3'
  ${If} $3 = 0
    Return
  ${EndIf}
  StrCpy $0 0
  ${Do}
    FindWindow $0 "frmMain" "" 0 $0
    ${If} $0 = 0
      ${ExitDo}
    ${EndIf}
    System::Call 'user32::GetWindowThreadProcessId(p r0, *i .r1)'
    System::Call 'kernel32::OpenProcess(i 0x101000, i 0, i r1) p .r2' ; SYNCHRONIZE, PROCESS_QUERY_LIMITED_INFORMATION
    System::Call 'kernel32::QueryFullProcessImageNameW(p r2, i 0, w .r3, *i ${NSIS_MAX_STRLEN})'
    ${If} $3 == $4
      StrCpy $ran 1
      Call ${un}CloseAndWait
      ${ExitDo}
    ${EndIf}
    System::Call 'kernel32::CloseHandle(p r2)'
  ${Loop}
  ; A copy in another session of the same user locks the file, and its window cannot be found.
  ClearErrors
  FileOpen $0 "${PROGRAM}" a
  ${If} ${Errors}
    !insertmacro FailWith ${STILL_RUNNING} "$(StillRunningText)"
  ${EndIf}
  FileClose $0
FunctionEnd

; Closes the window $0 of the process $2.
Function ${un}CloseAndWait
  ${Do}
    System::Call 'user32::PostMessageW(p r0, i ${WM_CLOSE}, p 0, p 0)'
    System::Call 'kernel32::WaitForSingleObject(p r2, i 15000) i .r3'
    ${If} $3 = 0
      System::Call 'kernel32::CloseHandle(p r2)'
      Return
    ${EndIf}
  ${LoopWhile} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(StillRunningText)" /SD IDCANCEL IDRETRY`
  SetErrorLevel ${STILL_RUNNING}
  Quit
FunctionEnd
!macroend
!insertmacro EndRunningCopy ""
!insertmacro EndRunningCopy "un."

; Settings and log are in the program folder. Sets the error flag if the user may not write there.
Function TryFolder
  ClearErrors
  CreateDirectory $INSTDIR
  FileOpen $0 "$INSTDIR\Setup.tmp" w
  FileClose $0
  Delete "$INSTDIR\Setup.tmp"
FunctionEnd

Function LeaveDirectory
  Call TryFolder
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(FolderRefusedText)"
    Abort
  ${EndIf}
FunctionEnd

; The options of an installed copy are in its settings, and the user may have changed them.
Function SkipOptionsOfUpdate
  ${If} ${FileExists} "$INSTDIR\User.ini"
    Abort
  ${EndIf}
FunctionEnd

Function RegisterApp
  WriteRegStr HKCU "${APPS_KEY}" "DisplayName" "Quillon"
  WriteRegStr HKCU "${APPS_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${APPS_KEY}" "DisplayIcon" "${PROGRAM}"
  WriteRegStr HKCU "${APPS_KEY}" "Publisher" "Vextant"
  WriteRegStr HKCU "${APPS_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${APPS_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${APPS_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${APPS_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${APPS_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${APPS_KEY}" "NoRepair" 1
FunctionEnd

!macro InstallSound name size
  File "${FILES}/${name}"
!macroend

Section "$(ProgramText)" SecProgram
  SectionIn RO
  Call TryFolder
  ${If} ${Errors}
    !insertmacro FailWith ${FOLDER_REFUSED} "$(FolderRefusedText)"
  ${EndIf}
  Call EndRunningCopy

  StrCpy $update 0
  ${If} ${FileExists} "$INSTDIR\User.ini"
    StrCpy $update 1
  ${EndIf}
  SetOutPath $INSTDIR
  File "${FILES}/Quillon.exe"
  File "${FILES}/Lang.con"
  File "${FILES}/LICENSE.txt"
  SetOverwrite off ; a sound of this name may be the user's own
  !insertmacro EachSound InstallSound
  SetOverwrite on
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Quillon.lnk" "${PROGRAM}"
  Call RegisterApp

  ${If} $update = 0
    Call WriteFirstSettings
  ${EndIf}
  ${If} $ran = 1
    Call StartProgram
  ${EndIf}
SectionEnd

Section /o "$(LogonText)" SecLogon
SectionEnd

; Writes the initial settings, with the language of this setup and the user's choice. Language names are Windows-1252, as in Lang.con,
; whatever the system's code page.
Function WriteFirstSettings
  System::Call 'advapi32::GetUserNameW(w .r1, *i ${NSIS_MAX_STRLEN})'
  StrCpy $2 0
  ${If} ${SectionIsSelected} ${SecLogon}
    StrCpy $2 1
    ; The value that the program itself writes on exit when this setting is on.
    WriteRegStr HKCU "${RUN_KEY}" "Quillon" "$INSTDIR\Quillon"
  ${EndIf}
  FileOpen $0 "$INSTDIR\User.ini" w
  ${Select} $LANGUAGE
    ${Case} ${LANG_FRENCH}
      FileWrite $0 '"Fran'
      FileWriteByte $0 0xE7
      FileWrite $0 'ais"'
    ${Case} ${LANG_GERMAN}
      FileWrite $0 '"Deutsch"'
    ${Case} ${LANG_SPANISH}
      FileWrite $0 '"Espa'
      FileWriteByte $0 0xF1
      FileWrite $0 'ol"'
    ${CaseElse}
      FileWrite $0 '"English"'
  ${EndSelect}
  FileWrite $0 '$\r$\n0$\r$\n0,0,2505,4605$\r$\n"$1",0,4,"(B)",$2$\r$\n0,0,0,0$\r$\n0$\r$\n0$\r$\n'
  FileClose $0
FunctionEnd

Function StartProgram
  SetOutPath $INSTDIR
  Exec '"${PROGRAM}"'
FunctionEnd

; Elevates these commands only. Rules that Windows made when it asked the user are deleted first: a blocking one would take
; precedence. The elevated process returns no exit code, so the rule is looked up, which needs no elevation.
Function AllowInFirewall
  StrCpy $1 'program="${PROGRAM}"'
  StrCpy $2 '"$SYSDIR\netsh.exe" advfirewall firewall'
  StrCpy $3 '$2 add rule name="Quillon" dir=in action=allow protocol=UDP localport=1414 remoteip=localsubnet $1'
  ExecShellWait "runas" "$SYSDIR\cmd.exe" '/s /c "$2 delete rule name=all dir=in $1 & $3"' SW_HIDE
  nsExec::Exec '"$SYSDIR\cmd.exe" /s /c "$2 show rule name="Quillon" verbose | "$SYSDIR\find.exe" /i "${PROGRAM}""'
  Pop $0
  ${If} $0 != 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(FirewallText)" /SD IDOK
    SetErrorLevel ${FIREWALL_UNCHANGED}
  ${EndIf}
FunctionEnd

; By default an update does not change the firewall. A copy that was running has already been started again.
Function ShowFinish
  ${If} $update = 1
    ${NSD_Uncheck} $mui.FinishPage.Run
  ${EndIf}
  ${If} $ran = 1
    ${NSD_Uncheck} $mui.FinishPage.ShowReadme
    ShowWindow $mui.FinishPage.ShowReadme ${SW_HIDE}
  ${EndIf}
FunctionEnd

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/LOGON" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${SecLogon} ${SF_SELECTED}
  ${EndIf}
FunctionEnd

Function .onInstSuccess
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/FIREWALL" $1
  ${IfNot} ${Errors}
  ${AndIf} ${Silent}
    Call AllowInFirewall
  ${EndIf}
FunctionEnd

; Keeps the user's own file if it has the same name; it differs in size.
!macro RemoveSound name size
  FileOpen $0 "$INSTDIR\${name}" r
  FileSeek $0 0 END $1
  FileClose $0
  ${If} $1 = ${size}
    Delete "$INSTDIR\${name}"
  ${EndIf}
!macroend

Section "un.$(ProgramText)"
  SectionIn RO
  Call un.EndRunningCopy
  Delete "${PROGRAM}"
  Delete "$INSTDIR\Lang.con"
  Delete "$INSTDIR\LICENSE.txt"
  !insertmacro EachSound RemoveSound
  Delete "$INSTDIR\Uninstall.exe"
  ; Entries that point to a copy in another folder stay.
  ReadRegStr $0 HKCU "${APPS_KEY}" "InstallLocation"
  ${IfNot} ${FileExists} "$0\Quillon.exe"
    Delete "$SMPROGRAMS\Quillon.lnk"
    DeleteRegKey HKCU "${APPS_KEY}"
  ${EndIf}
  ReadRegStr $0 HKCU "${RUN_KEY}" "Quillon"
  ${IfNot} ${FileExists} "$0.exe"
    DeleteRegValue HKCU "${RUN_KEY}" "Quillon"
  ${EndIf}
SectionEnd

Section /o "un.$(DataText)" UnSecData
  Delete "$INSTDIR\User.ini"
  Delete "$INSTDIR\Log.txt"
  Delete "$INSTDIR\*.wav"
SectionEnd

Section /o "un.$(FirewallRuleText)" UnSecFirewall
  ExecShellWait "runas" "$SYSDIR\netsh.exe" 'advfirewall firewall delete rule name="Quillon" dir=in program="${PROGRAM}"' SW_HIDE
SectionEnd

; Removed only if it is empty.
Section "-un.Folder"
  SetOutPath $TEMP
  RMDir $INSTDIR
SectionEnd

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/DATA" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${UnSecData} ${SF_SELECTED}
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/FIREWALL" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${UnSecFirewall} ${SF_SELECTED}
  ${EndIf}
FunctionEnd
