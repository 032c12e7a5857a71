; The installer for Windows, for one user without administrator rights or for all users.
;
; Setup.exe /S [/CurrentUser | /AllUsers] [/BACKUP | /NOBACKUP] [/DESKTOP | /NODESKTOP] [/D=FOLDER] installs without a
; question. The exit status is 5 if rights are missing and 32 if Zomrel is open, as Windows numbers these errors.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
Name "Zomrel"
OutFile "${OUT}"
BrandingText "Zomrel ${VERSION}"

; What an installation remembers: its folder and the answers to its questions.
!define SETTINGS "Software\Zomrel"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
; A newer version replaces the older one, for whomever that was installed.
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${SETTINGS}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallDir"
!define MULTIUSER_INSTALLMODE_INSTDIR "Zomrel"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${SETTINGS}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallDir"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh

!define NO_RIGHTS 5
!define IN_USE 32
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zomrel"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!define MUI_PAGE_CUSTOMFUNCTION_PRE readChoicesOfMode
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
LangString RunningRemove 1033 "Close Zomrel first, then remove it again."
LangString RunningRemove 1037 "סגור קודם את זומרל, ואחר כך הסר שוב."
LangString ForAllUsers 1033 "Zomrel is installed on this computer for all users. Ask an administrator to install the \
new version. To install a Zomrel of your own beside it, with a store of its own, start this program with /CurrentUser."
LangString ForAllUsers 1037 "זומרל מותקן במחשב הזה לכל המשתמשים. בקש ממנהל המחשב להתקין את הגרסה החדשה. כדי להתקין לצדו \
זומרל משלך, עם קובץ נתונים משלו, הפעל את התוכנה הזאת עם ‎/CurrentUser‎."
LangString NoRights 1033 "Only an administrator can install Zomrel for all users, or remove it."
LangString NoRights 1037 "רק מנהל המחשב יכול להתקין את זומרל לכל המשתמשים או להסיר אותו."
LangString OtherPlace 1033 "The folder of the store is a link to another place. Remove the link, then install again:"
LangString OtherPlace 1037 "התיקייה של קובץ הנתונים היא קישור למקום אחר. הסר את הקישור, ואחר כך התקן שוב:"
LangString NoAccess 1033 "The access to this folder could not be limited. Zomrel is installed."
LangString NoAccess 1037 "לא ניתן להגביל את הגישה לתיקייה הזאת. זומרל מותקן."
LangString KeptStore 1033 "No new store is made, because an earlier one is kept here. Give it the name Aluminium.mdb, or \
move it to another folder and install again:"
LangString KeptStore 1037 "לא נוצר קובץ נתונים חדש, כי כאן נשמר קובץ קודם. תן לו את השם Aluminium.mdb, או העבר אותו \
לתיקייה אחרת והתקן שוב:"
LangString NoStore 1033 "The store could not be made. Zomrel is installed; make a store with: zomrel-store create"
LangString NoStore 1037 "לא ניתן ליצור את קובץ הנתונים. זומרל מותקן; צור קובץ נתונים בעזרת: zomrel-store create"
LangString NoTask 1033 "The task of the nightly backup could not be made. Zomrel is installed."
LangString NoTask 1037 "לא ניתן ליצור את המשימה של הגיבוי הלילי. זומרל מותקן."

; The folder of the store and of the backups. For one user it is the program's own folder, for all users one that all of
; them can write to.
Var data
; The folder of the installation that this one replaces, and whether that one has made a shortcut and a task.
Var earlierFolder
Var hadDesktop
Var hadBackup
; The kind of installation whose choices are ticked.
Var modeOfChoices

!include "${ACCESS}"
!include "${TASK}"

; A running program keeps its file from being opened for writing.
!macro REQUIRE_CLOSED_PROGRAM FILE TEXT
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${FILE}" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION "${TEXT}" /SD IDOK
      SetErrorLevel ${IN_USE}
      Abort "${TEXT}"
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro REQUIRE_CLOSED TEXT
  !insertmacro REQUIRE_CLOSED_PROGRAM Zomrel.exe "${TEXT}"
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-store.exe "${TEXT}"
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-shop.exe "${TEXT}"
  !insertmacro REQUIRE_CLOSED_PROGRAM zomrel-demo.exe "${TEXT}"
!macroend

Section "-$(Program)" program
  !insertmacro REQUIRE_CLOSED "$(Running)"
  ReadRegStr $earlierFolder SHCTX "${SETTINGS}" "InstallDir"
  ReadRegDWORD $hadDesktop SHCTX "${SETTINGS}" "Desktop"
  ReadRegDWORD $hadBackup SHCTX "${SETTINGS}" "Backup"
  StrCpy $data "$INSTDIR"
  ${If} $MultiUser.InstallMode == "AllUsers"
    StrCpy $data "$APPDATA\Zomrel"
    Call makeDataFolder
  ${EndIf}
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

  ${IfNot} ${FileExists} "$INSTDIR\Aluminium.mdb"
    Call makeStore
  ${EndIf}
  ${IfNot} ${FileExists} "$INSTDIR\Logo.jpg"
    CopyFiles /SILENT "$INSTDIR\delivered\Logo.jpg" "$INSTDIR\Logo.jpg"
  ${EndIf}

  CreateShortcut "$SMPROGRAMS\Zomrel.lnk" "$INSTDIR\Zomrel.exe"
  WriteRegStr SHCTX "${SETTINGS}" "InstallDir" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "Zomrel"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "Publisher" "Zomrel developers"
  SectionGetSize ${program} $0
  WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" $0
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Zomrel.exe"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "$(Desktop)" desktop
  CreateShortcut "$DESKTOP\Zomrel.lnk" "$INSTDIR\Zomrel.exe"
  WriteRegDWORD SHCTX "${SETTINGS}" "Desktop" 1
SectionEnd

; An existing task is kept, because the user may have changed its time.
Section "$(Backup)" backup
  CreateDirectory "$data\backups"
  ${If} $MultiUser.InstallMode == "AllUsers"
    Call limitBackups
  ${EndIf}
  ${If} $hadBackup != 1
  ${OrIf} $earlierFolder != $INSTDIR
    Call makeTask
  ${EndIf}
SectionEnd

; What is not ticked any more is taken back.
Section "-choices"
  ${IfNot} ${SectionIsSelected} ${desktop}
    ${If} $hadDesktop == 1
      Delete "$DESKTOP\Zomrel.lnk"
    ${EndIf}
    WriteRegDWORD SHCTX "${SETTINGS}" "Desktop" 0
  ${EndIf}
  ${IfNot} ${SectionIsSelected} ${backup}
    ${If} $hadBackup == 1
      !insertmacro REMOVE_TASK
    ${EndIf}
    WriteRegDWORD SHCTX "${SETTINGS}" "Backup" 0
  ${EndIf}
SectionEnd

; Makes the store where there is none, and for all users a link to it beside the program. A store that a restore was
; about to replace gets its name back.
Function makeStore
  ${IfNot} ${FileExists} "$data\Aluminium.mdb"
    Rename "$data\Aluminium.mdb.zomrel-previous" "$data\Aluminium.mdb"
  ${EndIf}
  StrCpy $0 0
  ${IfNot} ${FileExists} "$data\Aluminium.mdb"
    ${If} ${FileExists} "$data\Aluminium.mdb.before-restore*"
      MessageBox MB_ICONEXCLAMATION "$(KeptStore)$\n$data" /SD IDOK
      Return
    ${EndIf}
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

; Setup runs with an administrator's rights if the user has them. The desktop starts the program without them.
Function startProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\Zomrel.exe"'
FunctionEnd

!macro READ_CHOICE SECTION NAME
  !insertmacro SelectSection ${SECTION}
  ReadRegDWORD $R2 SHCTX "${SETTINGS}" "${NAME}"
  ${If} $R2 == 0
    !insertmacro UnselectSection ${SECTION}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R1 "/${NAME}" $R2
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${SECTION}
  ${EndIf}
  ClearErrors
  ${GetOptions} $R1 "/NO${NAME}" $R2
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${SECTION}
  ${EndIf}
!macroend

; Ticks what the earlier installation of this kind has, unless the command line says otherwise.
Function readChoices
  StrCpy $modeOfChoices $MultiUser.InstallMode
  ${GetParameters} $R1
  !insertmacro READ_CHOICE ${desktop} "Desktop"
  !insertmacro READ_CHOICE ${backup} "Backup"
FunctionEnd

Function readChoicesOfMode
  ${If} $modeOfChoices != $MultiUser.InstallMode
    Call readChoices
  ${EndIf}
FunctionEnd

Function .onInit
  ; The folder that the command line names.
  StrCpy $R0 $INSTDIR
  !insertmacro REFUSE_WITHOUT_RIGHTS ""
  Call refuseSecondZomrel
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
  Call readChoices
FunctionEnd

; The uninstaller removes the installation in whose folder it is, even if there is another one.
Function un.onInit
  GetFullPathName $R0 $INSTDIR
  !insertmacro REFUSE_WITHOUT_RIGHTS un.
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $R1 HKLM "${SETTINGS}" "InstallDir"
  ReadRegStr $R2 HKCU "${SETTINGS}" "InstallDir"
  ${If} $R0 == $R2
    Call un.MultiUser.InstallMode.CurrentUser
  ${ElseIf} $R0 == $R1
    ${If} $mayInstallForAll != yes
      MessageBox MB_ICONSTOP "$(NoRights)" /SD IDOK
      SetErrorLevel ${NO_RIGHTS}
      Quit
    ${EndIf}
    Call un.MultiUser.InstallMode.AllUsers
  ${EndIf}
  StrCpy $INSTDIR $R0
FunctionEnd

; The store, its backups and the logo stay.
Section "Uninstall"
  !insertmacro REQUIRE_CLOSED "$(RunningRemove)"
  !insertmacro REMOVE_TASK
  !include "${INSTALLED}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Zomrel.lnk"
  Delete "$DESKTOP\Zomrel.lnk"
  DeleteRegKey SHCTX "${UNINSTALL}"
  DeleteRegKey SHCTX "${SETTINGS}"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${backup} "$(AboutBackup)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END
