; The scheduled task of the nightly backup. It runs as soon as possible if the computer was off at its time. For one user
; it runs while that user is logged on; for all users it runs as the system. The console program conhost keeps the
; user's one from showing a window. The task's definition stays beside the program, in nightly-backup.xml.

; Each user who installs Zomrel has a task of his own.
!macro TASK_NAME RESULT
  StrCpy ${RESULT} "Zomrel backup"
  ${If} $MultiUser.InstallMode != "AllUsers"
    ReadEnvStr $9 USERNAME
    StrCpy ${RESULT} "Zomrel backup ($9)"
  ${EndIf}
!macroend

Function makeTask
  !insertmacro TASK_NAME $2
  ${WordReplace} "$INSTDIR" "&" "&amp;" "+" $3
  ${WordReplace} "$data" "&" "&amp;" "+" $4
  ${If} $MultiUser.InstallMode == "AllUsers"
    StrCpy $1 "<UserId>S-1-5-18</UserId><RunLevel>LeastPrivilege</RunLevel>"
    StrCpy $5 '<Command>"$3\nightly-backup.cmd"</Command><Arguments>"$4\backups"</Arguments>'
  ${Else}
    StrCpy $1 "<LogonType>InteractiveToken</LogonType><RunLevel>LeastPrivilege</RunLevel>"
    StrCpy $5 '<Command>"$SYSDIR\conhost.exe"</Command>'
    StrCpy $5 '$5<Arguments>--headless "$3\nightly-backup.cmd" "$4\backups"</Arguments>'
  ${EndIf}
  FileOpen $0 "$INSTDIR\nightly-backup.xml" w
  FileWriteUTF16LE /BOM $0 '<?xml version="1.0" encoding="UTF-16"?>$\r$\n'
  FileWriteUTF16LE $0 '<Task version="1.2" xmlns="http://schemas.microsoft.com/windows/2004/02/mit/task">$\r$\n'
  FileWriteUTF16LE $0 '<RegistrationInfo><Description>$(AboutBackup)</Description></RegistrationInfo>$\r$\n'
  FileWriteUTF16LE $0 '<Triggers><CalendarTrigger><StartBoundary>2026-01-01T21:00:00</StartBoundary>'
  FileWriteUTF16LE $0 '<ScheduleByDay><DaysInterval>1</DaysInterval></ScheduleByDay></CalendarTrigger></Triggers>$\r$\n'
  FileWriteUTF16LE $0 '<Principals><Principal id="Author">$1</Principal></Principals>$\r$\n'
  FileWriteUTF16LE $0 '<Settings><StartWhenAvailable>true</StartWhenAvailable>'
  FileWriteUTF16LE $0 '<DisallowStartIfOnBatteries>false</DisallowStartIfOnBatteries>'
  FileWriteUTF16LE $0 '<StopIfGoingOnBatteries>false</StopIfGoingOnBatteries></Settings>$\r$\n'
  FileWriteUTF16LE $0 '<Actions Context="Author"><Exec>$5</Exec></Actions>$\r$\n</Task>$\r$\n'
  FileClose $0
  nsExec::Exec '"$SYSDIR\schtasks.exe" /Create /F /TN "$2" /XML "$INSTDIR\nightly-backup.xml"'
  Pop $0
  ${If} $0 == 0
    WriteRegDWORD SHCTX "${SETTINGS}" "Backup" 1
  ${Else}
    MessageBox MB_ICONEXCLAMATION "$(NoTask)" /SD IDOK
  ${EndIf}
FunctionEnd

!macro REMOVE_TASK
  !insertmacro TASK_NAME $2
  nsExec::Exec '"$SYSDIR\schtasks.exe" /Delete /F /TN "$2"'
  Pop $0
  Delete "$INSTDIR\nightly-backup.xml"
!macroend
