@echo off
rem Starts Zomrel. If this folder has no store yet, a new one with the delivered catalogue is made first. An existing
rem store and an existing logo are never changed. A store that a restore was about to replace gets its name back.
if exist "%~dp0Aluminium.mdb" goto start
if exist "%~dp0Aluminium.mdb.zomrel-previous" ren "%~dp0Aluminium.mdb.zomrel-previous" Aluminium.mdb
if exist "%~dp0Aluminium.mdb" goto start
if exist "%~dp0Aluminium.mdb.before-restore*" goto kept
"%~dp0zomrel-store.exe" create "%~dp0Aluminium.mdb"
if errorlevel 1 (
  pause
  exit /b 1
)
if not exist "%~dp0Logo.jpg" copy "%~dp0delivered\Logo.jpg" "%~dp0Logo.jpg" >nul
:start
start "" "%~dp0Zomrel.exe" %*
exit /b 0
:kept
echo The store Aluminium.mdb is missing, and an earlier one is kept here: Aluminium.mdb.before-restore
echo Give it the name Aluminium.mdb, or move it to another folder to begin with a new store.
pause
exit /b 1
