; Windows installer, made by scripts/windows:
;   makensis -DSTAGE=FOLDER -DVERSION=0.1.0 -DOUT=FILE packaging/windows/tarvel.nsi
;
; It installs for one user into a folder that user can write to: the program keeps Index.ini beside
; itself. Index.ini and results files stay when Tarvel is removed.

Unicode true
Target amd64-unicode
ManifestDPIAware true
!include FileFunc.nsh
!include MUI2.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvel"

Name "Tarvel"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarvel"
InstallDirRegKey HKCU "Software\Tarvel" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Tarvel"
VIAddVersionKey FileDescription "Tarvel"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "The Tarvel authors"

!define MUI_ICON "tarvel.ico"
!define MUI_UNICON "tarvel.ico"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "..\..\LICENSE"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\tarvel.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "French"

LangString RUNNING ${LANG_ENGLISH} "Tarvel is running. Close it, then choose Retry."
LangString RUNNING ${LANG_GERMAN} "Tarvel läuft. Schliessen Sie es und wählen Sie dann Wiederholen."
LangString RUNNING ${LANG_FRENCH} "Tarvel est ouvert. Fermez-le, puis choisissez Réessayer."
LangString RESULTS ${LANG_ENGLISH} "Tarvel results"
LangString RESULTS ${LANG_GERMAN} "Tarvel-Ergebnisse"
LangString RESULTS ${LANG_FRENCH} "Résultats de Tarvel"
LangString MEASUREMENT ${LANG_ENGLISH} "Tarvel measurements"
LangString MEASUREMENT ${LANG_GERMAN} "Tarvel-Messwerte"
LangString MEASUREMENT ${LANG_FRENCH} "Mesures de Tarvel"

; A program that runs keeps its file: half of a new version beside half of the old one helps nobody.
!macro WaitUntilClosed
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\tarvel.exe"
      ${ExitDo}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\tarvel.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(RUNNING)" /SD IDCANCEL IDRETRY +2
    Abort
  ${Loop}
!macroend

; Another program that opens such files keeps them.
!macro FileType EXTENSION NAME DESCRIPTION
  WriteRegStr HKCU "Software\Classes\${NAME}" "" "${DESCRIPTION}"
  WriteRegStr HKCU "Software\Classes\${NAME}\DefaultIcon" "" "$INSTDIR\tarvel.exe,0"
  WriteRegStr HKCU "Software\Classes\${NAME}\shell\open\command" "" '"$INSTDIR\tarvel.exe" "%1"'
  WriteRegStr HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${NAME}" ""
  ReadRegStr $0 HKCU "Software\Classes\${EXTENSION}" ""
  ${If} $0 == ""
    WriteRegStr HKCU "Software\Classes\${EXTENSION}" "" "${NAME}"
  ${EndIf}
!macroend

!macro NoFileType EXTENSION NAME
  ReadRegStr $0 HKCU "Software\Classes\${EXTENSION}" ""
  ${If} $0 == "${NAME}"
    DeleteRegValue HKCU "Software\Classes\${EXTENSION}" ""
  ${EndIf}
  DeleteRegValue HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${NAME}"
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}"
  DeleteRegKey HKCU "Software\Classes\${NAME}"
!macroend

; By name: what else lies in the folder is the user's.
!macro RemoveProgram
  Delete "$INSTDIR\tarvel.exe"
  Delete "$INSTDIR\tarvel-batch.exe"
  Delete "$INSTDIR\Qt6*.dll"
  Delete "$INSTDIR\lib*.dll"
  Delete "$INSTDIR\Tarvel.chm"
  Delete "$INSTDIR\musterblatt.png"
  Delete "$INSTDIR\LICENSE"
  RMDir /r "$INSTDIR\guide"
  RMDir /r "$INSTDIR\licenses"
  RMDir /r "$INSTDIR\platforms"
  RMDir /r "$INSTDIR\styles"
  RMDir /r "$INSTDIR\imageformats"
  RMDir /r "$INSTDIR\translations"
!macroend

!macro TellTheShell
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section
  !insertmacro WaitUntilClosed
  !insertmacro RemoveProgram
  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*"
  CreateShortcut "$SMPROGRAMS\Tarvel.lnk" "$INSTDIR\tarvel.exe"
  !insertmacro FileType ".tdb" "Tarvel.Results" "$(RESULTS)"
  !insertmacro FileType ".bee" "Tarvel.Measurement" "$(MEASUREMENT)"
  !insertmacro TellTheShell
  WriteRegStr HKCU "Software\Tarvel" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "DisplayName" "Tarvel"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\tarvel.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Tarvel authors"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
  WriteUninstaller "$INSTDIR\uninstall.exe"
SectionEnd

Section Uninstall
  !insertmacro WaitUntilClosed
  !insertmacro RemoveProgram
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Tarvel.lnk"
  !insertmacro NoFileType ".tdb" "Tarvel.Results"
  !insertmacro NoFileType ".bee" "Tarvel.Measurement"
  !insertmacro TellTheShell
  DeleteRegKey HKCU "Software\Tarvel"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
