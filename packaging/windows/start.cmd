@echo off
rem Starts Zomrel. If this folder has no store yet, a new one with the delivered catalogue is made first. An existing
rem store and an existing logo are never changed.
if exist "%~dp0Aluminium.mdb" goto start
"%~dp0zomrel-store.exe" create "%~dp0Aluminium.mdb"
if errorlevel 1 (
  pause
  exit /b 1
)
if not exist "%~dp0Logo.jpg" copy "%~dp0delivered\Logo.jpg" "%~dp0Logo.jpg" >nul
:start
start "" "%~dp0Zomrel.exe" %*
