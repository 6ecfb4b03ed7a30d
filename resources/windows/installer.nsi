; The installer: scripts/windows/package calls makensis with VERSION, COPYRIGHT, ICON, the folder STAGE
; that holds what is installed (x64\, x86\, examples\, docs\, licences\ and the texts), the file
; REMOVALS with a line for each of its texts, and the file OUTPUT to make.
; For the user alone: no administrator is needed, and nothing outside the user's folders is touched.

Unicode true
; As a program for x64 it never takes the way for x86.
!pragma warning disable 6012
!include "MUI2.nsh"
!include "x64.nsh"
!include "FileFunc.nsh"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarn"
!define CLASSES "Software\Classes"
!define NETWORK_CLASS "Tarn.Network"

Name "Tarn ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarn"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tarn"
VIAddVersionKey "FileDescription" "Installs Tarn"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "${COPYRIGHT}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Tarn"
!define MUI_FINISHPAGE_RUN_FUNCTION StartTarn

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; The programs look for their own files in the folder that they are started in.
Function StartTarn
  SetOutPath "$INSTDIR"
  Exec '"$INSTDIR\tarn.exe"'
FunctionEnd

Section "Tarn" SectionProgram
  SectionIn RO
  ; A folder that holds other things stays theirs.
  ${If} ${FileExists} "$INSTDIR\*.*"
  ${AndIfNot} ${FileExists} "$INSTDIR\uninstall.exe"
    StrCpy $INSTDIR "$INSTDIR\Tarn"
  ${EndIf}
  SetOutPath "$INSTDIR"
  ${If} ${IsNativeAMD64}
    File "${STAGE}\x64\tarn.exe"
    File "${STAGE}\x64\tarn-cli.exe"
  ${Else}
    File "${STAGE}\x86\tarn.exe"
    File "${STAGE}\x86\tarn-cli.exe"
  ${EndIf}
  File "${STAGE}\x64\TARN.HLP"
  File "${STAGE}\*.txt"
  SetOutPath "$INSTDIR\docs"
  File /r "${STAGE}\docs\*"
  SetOutPath "$INSTDIR\licences"
  File "${STAGE}\licences\*"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Tarn"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tarn.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Tarn developers"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

; What a user has trained in an example stays as it is, here and when Tarn is removed.
Section "Examples, in Documents\Tarn examples" SectionExamples
  SetOverwrite off
  SetOutPath "$DOCUMENTS\Tarn examples"
  File /r "${STAGE}\examples\*"
  SetOverwrite on
SectionEnd

Section "Start menu" SectionMenu
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\Tarn.lnk" "$INSTDIR\tarn.exe"
SectionEnd

; Other programs have files of this name too, so it is offered and left out unless it is chosen. Without
; an answer of the user's to what opens them, Windows then takes Tarn; with one it lists Tarn.
Section /o "Open network files (.net) with Tarn" SectionFiles
  WriteRegStr HKCU "${CLASSES}\${NETWORK_CLASS}" "" "Tarn network"
  WriteRegStr HKCU "${CLASSES}\${NETWORK_CLASS}\DefaultIcon" "" "$INSTDIR\tarn.exe,0"
  WriteRegStr HKCU "${CLASSES}\${NETWORK_CLASS}\shell\open\command" "" '"$INSTDIR\tarn.exe" "%1"'
  WriteRegStr HKCU "${CLASSES}\.net\OpenWithProgids" "${NETWORK_CLASS}" ""
  ReadRegStr $0 HKCR ".net" ""
  ${If} $0 == ""
    WriteRegStr HKCU "${CLASSES}\.net" "" "${NETWORK_CLASS}"
  ${EndIf}
  ${RefreshShellIcons}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "The program, its command line and its texts."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionExamples} "Networks with their data to begin with. Files that are there already stay as they are."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionMenu} "Tarn in the start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionFiles} "A double click on a network file opens it in Tarn, unless another program opens such files already."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Only what was installed goes; whatever else stands in the folder stays.
Section "Uninstall"
  Delete "$INSTDIR\tarn.exe"
  ${If} ${FileExists} "$INSTDIR\tarn.exe"
    MessageBox MB_OK|MB_ICONEXCLAMATION "Tarn is running. Close it, then remove it again." /SD IDOK
    Abort
  ${EndIf}
  Delete "$INSTDIR\tarn-cli.exe"
  Delete "$INSTDIR\TARN.HLP"
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Tarn.lnk"
  ReadRegStr $0 HKCU "${CLASSES}\.net" ""
  ${If} $0 == "${NETWORK_CLASS}"
    DeleteRegValue HKCU "${CLASSES}\.net" ""
  ${EndIf}
  DeleteRegValue HKCU "${CLASSES}\.net\OpenWithProgids" "${NETWORK_CLASS}"
  DeleteRegKey /ifempty HKCU "${CLASSES}\.net\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "${CLASSES}\.net"
  DeleteRegKey HKCU "${CLASSES}\${NETWORK_CLASS}"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  ${RefreshShellIcons}
SectionEnd
