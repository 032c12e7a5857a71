; The installer for Windows, for one user without administrator rights or for all users.
;
; Setup.exe /S [/CurrentUser | /AllUsers] [/NOBACKUP] [/NODESKTOP] [/D=FOLDER] installs without a question.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
Name "Zomrel"
OutFile "${OUT}"
BrandingText "Zomrel ${VERSION}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
; A newer version replaces the older one, for whomever that was installed.
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "Software\Zomrel"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallDir"
!define MULTIUSER_INSTALLMODE_INSTDIR "Zomrel"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "Software\Zomrel"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallDir"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zomrel"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\Zomrel.exe"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
; The first language is used on a system whose language is neither.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Hebrew"
!insertmacro MUI_RESERVEFILE_LANGDLL

VIProductVersion "${VERSION}"
VIAddVersionKey /LANG=1033 "ProductName" "Zomrel"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileDescription" "Zomrel"
VIAddVersionKey /LANG=1033 "LegalCopyright" ""

LangString Program 1033 "Zomrel"
LangString Program 1037 "זומרל"
LangString Desktop 1033 "Shortcut on the desktop"
LangString Desktop 1037 "קיצור דרך בשולחן העבודה"
LangString Backup 1033 "Backup every night"
LangString Backup 1037 "גיבוי בכל לילה"
LangString AboutBackup 1033 "A scheduled task copies the store every night at 21:00 and keeps the newest 30 copies."
LangString AboutBackup 1037 "משימה מתוזמנת מעתיקה את קובץ הנתונים בכל לילה בשעה 21:00 ושומרת את 30 העותקים החדשים."
LangString Running 1033 "Close Zomrel first, then install again."
LangString Running 1037 "סגור קודם את זומרל, ואחר כך התקן שוב."
LangString NoStore 1033 "The store could not be made. Zomrel is installed; make a store with: zomrel-store create"
LangString NoStore 1037 "לא ניתן ליצור את קובץ הנתונים. זומרל מותקן; צור קובץ נתונים בעזרת: zomrel-store create"
LangString NoTask 1033 "The task of the nightly backup could not be made. Zomrel is installed."
LangString NoTask 1037 "לא ניתן ליצור את המשימה של הגיבוי הלילי. זומרל מותקן."

; The folder of the store and of the backups. For one user it is the program's own folder, for all users one that all of
; them can write to.
Var data

!include "${TASK}"

; A running program keeps its file from being opened for writing.
!macro REQUIRE_CLOSED_PROGRAM FILE
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION "$(Running)" /SD IDOK
      SetErrorLevel 2
      Abort "$(Running)"
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro REQUIRE_CLOSED
  !insertmacro REQUIRE_CLOSED_PROGRAM Zomrel.exe
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-store.exe
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-shop.exe
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-demo.exe
!macroend

Section "-$(Program)"
  !insertmacro REQUIRE_CLOSED
  SetOutPath "$INSTDIR"
  ; What an older version brought and this one does not. Another folder of the user keeps its files.
  ${If} ${FileExists} "$INSTDIR\Zomrel.exe"
  ${AndIf} ${FileExists} "$INSTDIR\uninstall.exe"
    Delete "$INSTDIR\*.dll"
    RMDir /r "$INSTDIR\plugins"
    RMDir /r "$INSTDIR\fonts"
    RMDir /r "$INSTDIR\translations"
    RMDir /r "$INSTDIR\manual"
    RMDir /r "$INSTDIR\licences"
  ${EndIf}
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ${If} $MultiUser.InstallMode == "AllUsers"
    StrCpy $data "$APPDATA\Zomrel"
    CreateDirectory "$data"
    ; Members of the group Users, whatever its name is here, may change what is in it.
    nsExec::Exec '"$SYSDIR\icacls.exe" "$data" /grant *S-1-5-32-545:(OI)(CI)M'
    Pop $0
  ${Else}
    StrCpy $data "$INSTDIR"
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\Aluminium.mdb"
    Call makeStore
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\Logo.jpg"
    CopyFiles /SILENT "$INSTDIR\delivered\Logo.jpg" "$INSTDIR\Logo.jpg"
  ${EndIf}

  CreateShortcut "$SMPROGRAMS\Zomrel.lnk" "$INSTDIR\Zomrel.exe"
  WriteRegStr SHCTX "Software\Zomrel" "InstallDir" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "Zomrel"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Zomrel.exe"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "$(Desktop)" desktop
  CreateShortcut "$DESKTOP\Zomrel.lnk" "$INSTDIR\Zomrel.exe"
SectionEnd

Section "$(Backup)" backup
  CreateDirectory "$data\backups"
  Call makeTask
SectionEnd

; Makes the store where there is none, and for all users a link to it beside the program.
Function makeStore
  StrCpy $0 0
  ${IfNot} ${FileExists} "$data\Aluminium.mdb"
    nsExec::Exec '"$INSTDIR\zomrel-store.exe" create "$data\Aluminium.mdb"'
    Pop $0
  ${EndIf}
  ${If} $0 == 0
  ${AndIf} $data != $INSTDIR
    nsExec::Exec '"$INSTDIR\zomrel-store.exe" link "$INSTDIR\Aluminium.mdb" --file "$data\Aluminium.mdb"'
    Pop $0
  ${EndIf}
  ${If} $0 != 0
    MessageBox MB_ICONEXCLAMATION "$(NoStore)" /SD IDOK
  ${EndIf}
FunctionEnd

Function .onInit
  ; The folder that the command line names.
  StrCpy $R0 $INSTDIR
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
  ${GetParameters} $R1
  ClearErrors
  ${GetOptions} $R1 "/NOBACKUP" $R2
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${backup}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R1 "/NODESKTOP" $R2
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${desktop}
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

; The store, its backups and the logo stay.
Section "Uninstall"
  !insertmacro REQUIRE_CLOSED
  Call un.removeTask
  !include "${INSTALLED}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Zomrel.lnk"
  Delete "$DESKTOP\Zomrel.lnk"
  DeleteRegKey SHCTX "${UNINSTALL}"
  DeleteRegKey SHCTX "Software\Zomrel"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${backup} "$(AboutBackup)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END
