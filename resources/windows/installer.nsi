; The installer: scripts/windows/make_installer calls makensis with VERSION, PUBLISHER, COPYRIGHT,
; ICON, the folder STAGE that holds what is installed (x64\, x86\, examples\, docs\, licences\ and
; the texts), the file REMOVALS with a line for each of its texts, and the file OUTPUT to make.
; For the user alone: no administrator is needed, and nothing outside the user's folders is touched.
; Run with /S it asks nothing; its exit status is 2 when it has installed nothing.

Unicode true
; As a program for x64 it never takes the way for x86.
!pragma warning disable 6012
!include "MUI2.nsh"
!include "x64.nsh"
!include "FileFunc.nsh"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarn"
!define CLASSES "Software\Classes"
!define NETWORK_CLASS "Tarn.Network"
!define START_MENU_LINK "$SMPROGRAMS\Tarn.lnk"

Name "Tarn ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarn"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel user
SetCompressor /SOLID lzma
AllowSkipFiles off
ManifestDPIAware true

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tarn"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
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

; The folder of the copy that Windows knows of; empty when there is none.
Var Registered

!macro Stop TEXT
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel 2
  Abort
!macroend

; A program that runs cannot be written to.
!macro StopWhenFileIsInUse FILE
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $0 "${FILE}" a
    ${If} ${Errors}
      !insertmacro Stop "${FILE} is in use. Close Tarn, then try again. Nothing has been changed."
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

!macro StopWhenInUse FOLDER
  !insertmacro StopWhenFileIsInUse "${FOLDER}\tarn.exe"
  !insertmacro StopWhenFileIsInUse "${FOLDER}\tarn-cli.exe"
!macroend

; By its own uninstaller, which knows what belongs to it. Run in place, it cannot remove itself.
!macro RemoveCopy FOLDER OPTIONS
  ${If} ${FileExists} "${FOLDER}\uninstall.exe"
    ClearErrors
    ExecWait '"${FOLDER}\uninstall.exe" /S ${OPTIONS} _?=${FOLDER}' $0
    ${If} ${Errors}
    ${OrIf} $0 != 0
      !insertmacro Stop "The Tarn in ${FOLDER} could not be removed. Remove it, then try again."
    ${EndIf}
    Delete "${FOLDER}\uninstall.exe"
    RMDir "${FOLDER}"
  ${EndIf}
!macroend

; The programs look for their own files in the folder that they are started in.
Function StartTarn
  SetOutPath "$INSTDIR"
  Exec '"$INSTDIR\tarn.exe"'
FunctionEnd

; $0: whether $INSTDIR holds anything that is not Tarn's (1 or 0).
Function HoldsOtherThings
  StrCpy $0 0
  ${If} ${FileExists} "$INSTDIR\tarn.exe"
  ${AndIf} ${FileExists} "$INSTDIR\uninstall.exe"
  ${OrIf} $INSTDIR == $Registered
    Return
  ${EndIf}
  FindFirst $1 $2 "$INSTDIR\*"
  ${DoUntil} $2 == ""
    ${If} $2 != "."
    ${AndIf} $2 != ".."
    ${AndIf} $2 != "tarn.cfg"
      StrCpy $0 1
    ${EndIf}
    FindNext $1 $2
  ${Loop}
  FindClose $1
FunctionEnd

; A folder that holds other things stays theirs: Tarn then has a folder of its own within it.
Function ChooseFolder
  Call HoldsOtherThings
  ${If} $0 = 1
    StrCpy $INSTDIR "$INSTDIR\Tarn"
    Call HoldsOtherThings
  ${EndIf}
  ${If} $0 = 1
    !insertmacro Stop "$INSTDIR holds other things. Choose another folder for Tarn."
  ${EndIf}
FunctionEnd

; Before anything is written. The copy that Windows knows of goes wherever it is: two would share
; one entry in the list of programs, and one in the start menu.
Function RemoveEarlierCopies
  ${If} $Registered != ""
    !insertmacro StopWhenInUse "$Registered"
  ${EndIf}
  !insertmacro StopWhenInUse "$INSTDIR"
  ${If} $Registered != ""
  ${AndIf} $Registered != $INSTDIR
    !insertmacro RemoveCopy "$Registered" ""
  ${EndIf}
  !insertmacro RemoveCopy "$INSTDIR" "/UPGRADE"
FunctionEnd

Section "Tarn" SectionProgram
  SectionIn RO
  Call ChooseFolder
  Call RemoveEarlierCopies
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
  ; What the texts lead to; the examples themselves are with the user's documents.
  SetOutPath "$INSTDIR\examples"
  File /r "${STAGE}\examples\*.md"
  SetOutPath "$INSTDIR\licences"
  File "${STAGE}\licences\*"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Tarn"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tarn.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
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
  CreateShortcut "${START_MENU_LINK}" "$INSTDIR\tarn.exe"
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

; What was chosen for the copy that is there is what a new one begins with.
Function .onInit
  ReadRegStr $Registered HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $Registered == ""
    Return
  ${EndIf}
  ${IfNot} ${FileExists} "${START_MENU_LINK}"
    !insertmacro UnselectSection ${SectionMenu}
  ${EndIf}
  ReadRegStr $0 HKCU "${CLASSES}\${NETWORK_CLASS}" ""
  ${If} $0 != ""
    !insertmacro SelectSection ${SectionFiles}
  ${EndIf}
FunctionEnd

; Only what was installed goes, and what the program writes there by itself; whatever else stands in
; the folder stays. With /UPGRADE a newer Tarn takes the same folder.
Section "Uninstall"
  !insertmacro StopWhenInUse "$INSTDIR"
  Delete "$INSTDIR\tarn.exe"
  Delete "$INSTDIR\tarn-cli.exe"
  Delete "$INSTDIR\TARN.HLP"
  !include "${REMOVALS}"
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  ${If} ${Errors}
    Delete "$INSTDIR\tarn.cfg"
  ${EndIf}
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Delete "${START_MENU_LINK}"
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
  ${EndIf}
SectionEnd
