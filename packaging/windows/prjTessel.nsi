; The installer. scripts/windows/package calls makensis with VERSION, STAGE (the files) and OUT (the installer).
; /S installs silently, /D=folder (last) names the folder. Status 4 when the servers cannot be registered.
Target amd64-unicode
!include LogicLib.nsh
Name "prjTessel ${VERSION}"
OutFile "${OUT}"
InstallDir "$PROGRAMFILES64\prjTessel"
RequestExecutionLevel admin
SetCompressor /SOLID lzma
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\prjTessel"
InstallDirRegKey HKLM "${UNINSTALL}" "InstallLocation"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!macro Server regsvr32 options file
  ExecWait '"${regsvr32}" ${options} /s "${file}"' $0
!macroend

Section
  SetRegView 64
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  File /r /x prjTessel.ini "${STAGE}/*.*"
  ; The settings of an earlier version stay.
  SetOverwrite off
  File "${STAGE}/prjTessel.ini"
  SetOverwrite on
  WriteUninstaller "$INSTDIR\uninstall.exe"
  !insertmacro Server "$SYSDIR\regsvr32.exe" "" "$INSTDIR\prjTessel.dll"
  ${If} $0 != 0
    SetErrorLevel 4
    Abort "prjTessel.dll cannot be registered ($0)"
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\x86\prjTessel.dll"
    !insertmacro Server "$WINDIR\SysWOW64\regsvr32.exe" "" "$INSTDIR\x86\prjTessel.dll"
    ${If} $0 != 0
      SetErrorLevel 4
      Abort "x86\prjTessel.dll cannot be registered ($0)"
    ${EndIf}
  ${EndIf}
  CreateDirectory "$SMPROGRAMS\prjTessel"
  CreateShortcut "$SMPROGRAMS\prjTessel\Documentation.lnk" "$INSTDIR\docs"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "prjTessel supplier data exchange"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
SectionEnd

; The settings file goes with the program; what lies elsewhere (traces, databases) is the site's.
Section Uninstall
  SetRegView 64
  SetShellVarContext all
  ${If} ${FileExists} "$INSTDIR\x86\prjTessel.dll"
    !insertmacro Server "$WINDIR\SysWOW64\regsvr32.exe" "/u" "$INSTDIR\x86\prjTessel.dll"
  ${EndIf}
  !insertmacro Server "$SYSDIR\regsvr32.exe" "/u" "$INSTDIR\prjTessel.dll"
  RMDir /r "$SMPROGRAMS\prjTessel"
  DeleteRegKey HKLM "${UNINSTALL}"
  ; Only what was installed: the folder may have been named by hand.
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\examples"
  RMDir /r "$INSTDIR\x86"
  RMDir /r "$INSTDIR\trial"
  Delete "$INSTDIR\*.dll"
  Delete "$INSTDIR\tessel.exe"
  Delete "$INSTDIR\*.md"
  Delete "$INSTDIR\*.idl"
  Delete "$INSTDIR\prjTessel.ini"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
SectionEnd
