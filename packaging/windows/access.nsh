; Who may install for all users, and who may write to which folder.

; yes or no.
Var mayInstallForAll

; REFUSE_WITHOUT_RIGHTS FUNCTION_PREFIX: ends a call with /AllUsers by a user without the rights of an administrator.
!macro REFUSE_WITHOUT_RIGHTS PREFIX
  UserInfo::GetAccountType
  Pop $0
  StrCpy $mayInstallForAll no
  ${If} $0 == "Admin"
  ${OrIf} $0 == "Power"
    StrCpy $mayInstallForAll yes
  ${EndIf}
  ${${PREFIX}GetParameters} $R1
  ClearErrors
  ${${PREFIX}GetOptions} $R1 "/AllUsers" $R2
  ${IfNot} ${Errors}
  ${AndIf} $mayInstallForAll != yes
    MessageBox MB_ICONSTOP "$(NoRights)" /SD IDOK
    SetErrorLevel ${NO_RIGHTS}
    Quit
  ${EndIf}
!macroend

; A user without the rights to replace the installation for all users would get a second one with an empty store. That
; is done only if the user says so.
Function refuseSecondZomrel
  ReadRegStr $1 HKLM "${SETTINGS}" "InstallDir"
  ReadRegStr $2 HKCU "${SETTINGS}" "InstallDir"
  ${GetParameters} $R1
  ClearErrors
  ${GetOptions} $R1 "/CurrentUser" $R2
  ${If} ${Errors}
  ${AndIf} $mayInstallForAll != yes
  ${AndIf} $1 != ""
  ${AndIf} $2 == ""
    MessageBox MB_ICONSTOP "$(ForAllUsers)" /SD IDOK
    SetErrorLevel ${NO_RIGHTS}
    Quit
  ${EndIf}
FunctionEnd

; REFUSE_LINK FOLDER: all users may make folders where the data of programs are. A link that one of them has laid there
; would make Setup and the nightly backup, which have more rights, write to another place.
!macro REFUSE_LINK FOLDER
  StrCpy $1 "${FOLDER}"
  System::Call 'kernel32::GetFileAttributes(t r1) i .r0'
  ${If} $0 != -1
    IntOp $0 $0 & 0x400
    ${If} $0 != 0
      MessageBox MB_ICONSTOP "$(OtherPlace)$\n$1" /SD IDOK
      SetErrorLevel ${NO_RIGHTS}
      Abort "$(OtherPlace) $1"
    ${EndIf}
  ${EndIf}
!macroend

!macro ICACLS FOLDER OPTIONS
  nsExec::Exec '"$SYSDIR\icacls.exe" "${FOLDER}" ${OPTIONS}'
  Pop $0
  ${If} $0 != 0
    StrCpy $1 failed
  ${EndIf}
!macroend

; LIMIT_ACCESS FOLDER RIGHTS: administrators own the folder and may do everything in it, and members of the group Users,
; whatever its name is here, have the given rights. What another owner has allowed before is taken back.
!macro LIMIT_ACCESS FOLDER RIGHTS
  StrCpy $1 ""
  !insertmacro ICACLS "${FOLDER}" "/setowner *S-1-5-32-544"
  !insertmacro ICACLS "${FOLDER}" "/reset"
  !insertmacro ICACLS "${FOLDER}" "/inheritance:r /grant:r *S-1-5-18:(OI)(CI)F *S-1-5-32-544:(OI)(CI)F"
  !insertmacro ICACLS "${FOLDER}" "/grant:r *S-1-5-32-545:(OI)(CI)${RIGHTS}"
  ${If} $1 != ""
    MessageBox MB_ICONEXCLAMATION "$(NoAccess)$\n${FOLDER}" /SD IDOK
  ${EndIf}
!macroend

; All users work with the store.
Function makeDataFolder
  !insertmacro REFUSE_LINK "$data"
  !insertmacro REFUSE_LINK "$data\backups"
  CreateDirectory "$data"
  !insertmacro LIMIT_ACCESS "$data" M
FunctionEnd

; Users may read the backups. Since the first look at the folder, one of them may have laid a link there.
Function limitBackups
  !insertmacro REFUSE_LINK "$data\backups"
  !insertmacro LIMIT_ACCESS "$data\backups" RX
FunctionEnd
