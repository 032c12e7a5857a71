; The scheduled task of the nightly backup. It runs as soon as possible if the computer was off at its time. For one user
; it runs while that user is logged on; for all users it runs as the system.

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
  ${Else}
    StrCpy $1 "<LogonType>InteractiveToken</LogonType><RunLevel>LeastPrivilege</RunLevel>"
  ${EndIf}
  InitPluginsDir
  FileOpen $0 "$PLUGINSDIR\task.xml" w
  FileWriteUTF16LE /BOM $0 '<?xml version="1.0" encoding="UTF-16"?>$\r$\n'
  FileWriteUTF16LE $0 '<Task version="1.2" xmlns="http://schemas.microsoft.com/windows/2004/02/mit/task">$\r$\n'
  FileWriteUTF16LE $0 '<RegistrationInfo><Description>$(AboutBackup)</Description></RegistrationInfo>$\r$\n'
  FileWriteUTF16LE $0 '<Triggers><CalendarTrigger><StartBoundary>2026-01-01T21:00:00</StartBoundary>'
  FileWriteUTF16LE $0 '<ScheduleByDay><DaysInterval>1</DaysInterval></ScheduleByDay></CalendarTrigger></Triggers>$\r$\n'
  FileWriteUTF16LE $0 '<Principals><Principal id="Author">$1</Principal></Principals>$\r$\n'
  FileWriteUTF16LE $0 '<Settings><StartWhenAvailable>true</StartWhenAvailable>'
  FileWriteUTF16LE $0 '<DisallowStartIfOnBatteries>false</DisallowStartIfOnBatteries>'
  FileWriteUTF16LE $0 '<StopIfGoingOnBatteries>false</StopIfGoingOnBatteries></Settings>$\r$\n'
  FileWriteUTF16LE $0 '<Actions Context="Author"><Exec><Command>"$3\zomrel-store.exe"</Command>'
  FileWriteUTF16LE $0 '<Arguments>backup --daily "$3\Aluminium.mdb" "$4\backups"</Arguments>'
  FileWriteUTF16LE $0 '</Exec></Actions>$\r$\n</Task>$\r$\n'
  FileClose $0
  nsExec::Exec '"$SYSDIR\schtasks.exe" /Create /F /TN "$2" /XML "$PLUGINSDIR\task.xml"'
  Pop $0
  ${If} $0 != 0
    MessageBox MB_ICONEXCLAMATION "$(NoTask)" /SD IDOK
  ${EndIf}
FunctionEnd

Function un.removeTask
  !insertmacro TASK_NAME $2
  nsExec::Exec '"$SYSDIR\schtasks.exe" /Delete /F /TN "$2"'
  Pop $0
FunctionEnd
