; Windows installer. A RECIPE: NOT BUILT HERE.
;   cmake --preset release -B build/windows -DBUILD_TESTING=OFF -DTARVEL_BENCH=OFF
;   cmake --build build/windows
;   cmake --install build/windows --prefix build/windows/stage
;   windeployqt build/windows/stage/tarvel.exe
;   makensis -DSTAGE=..\..\build\windows\stage -DVERSION=0.1.0 packaging\windows\tarvel.nsi
;
; It installs for one user into a folder that user can write to: the program keeps Index.ini beside
; itself. Index.ini and results files stay when Tarvel is removed.

Unicode true
!include MUI2.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvel"

Name "Tarvel"
OutFile "Tarvel-${VERSION}-setup.exe"
InstallDir "$LOCALAPPDATA\Programs\Tarvel"
InstallDirRegKey HKCU "Software\Tarvel" "Folder"
RequestExecutionLevel user
SetCompressor /SOLID lzma

!insertmacro MUI_PAGE_LICENSE "..\..\LICENSE"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\tarvel.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"

!macro FileType EXTENSION NAME DESCRIPTION
  WriteRegStr HKCU "Software\Classes\${EXTENSION}" "" "${NAME}"
  WriteRegStr HKCU "Software\Classes\${NAME}" "" "${DESCRIPTION}"
  WriteRegStr HKCU "Software\Classes\${NAME}\DefaultIcon" "" "$INSTDIR\tarvel.exe,0"
  WriteRegStr HKCU "Software\Classes\${NAME}\shell\open\command" "" '"$INSTDIR\tarvel.exe" "%1"'
!macroend

Section
  SetOutPath "$INSTDIR"
  File /r "${STAGE}\*"
  CreateShortcut "$SMPROGRAMS\Tarvel.lnk" "$INSTDIR\tarvel.exe"
  !insertmacro FileType ".tdb" "Tarvel.Results" "Tarvel"
  !insertmacro FileType ".bee" "Tarvel.Measurement" "Tarvel"
  WriteRegStr HKCU "Software\Tarvel" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "DisplayName" "Tarvel"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\tarvel.exe"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteUninstaller "$INSTDIR\uninstall.exe"
SectionEnd

Section Uninstall
  ; By name: what else lies in the folder is the user's.
  Delete "$INSTDIR\tarvel.exe"
  Delete "$INSTDIR\tarvel-batch.exe"
  Delete "$INSTDIR\*.dll"
  Delete "$INSTDIR\Tarvel.chm"
  Delete "$INSTDIR\musterblatt.png"
  Delete "$INSTDIR\LICENSE"
  Delete "$INSTDIR\uninstall.exe"
  RMDir /r "$INSTDIR\guide"
  RMDir /r "$INSTDIR\platforms"
  RMDir /r "$INSTDIR\styles"
  RMDir /r "$INSTDIR\imageformats"
  RMDir /r "$INSTDIR\iconengines"
  RMDir /r "$INSTDIR\generic"
  RMDir /r "$INSTDIR\networkinformation"
  RMDir /r "$INSTDIR\tls"
  RMDir /r "$INSTDIR\translations"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Tarvel.lnk"
  DeleteRegKey HKCU "Software\Classes\.tdb"
  DeleteRegKey HKCU "Software\Classes\.bee"
  DeleteRegKey HKCU "Software\Classes\Tarvel.Results"
  DeleteRegKey HKCU "Software\Classes\Tarvel.Measurement"
  DeleteRegKey HKCU "Software\Tarvel"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
