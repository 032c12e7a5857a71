@echo off
rem nightly-backup.cmd FOLDER: the scheduled task runs this. It makes today's backup in the folder, and adds what
rem zomrel-store says to the file backup.log there.
if not exist "%~1" exit /b 1
>>"%~1\backup.log" echo %DATE% %TIME%
"%~dp0zomrel-store.exe" backup --daily "%~dp0Aluminium.mdb" "%~1" >>"%~1\backup.log" 2>&1
exit /b %ERRORLEVEL%
