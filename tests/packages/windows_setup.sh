#!/bin/sh
# Installs Zomrel without a question, uses it, installs it again and removes it, for one user and for all users.
set -eu
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine.sh"

desktop_of() {
  find "$drive/users" "$HOME" -name Zomrel.lnk -path '*Desktop*' | head -n 1
}
menu_of() {
  find "$drive" -name Zomrel.lnk -path '*Start Menu*' | head -n 1
}

# try_setup MODE FOLDER DATA: MODE is CurrentUser or AllUsers, FOLDER and DATA are those of the program and of the store.
try_setup() {
  mode=$1
  folder=$2
  data=$3
  rm -rf "$folder" "$data"
  expect "$mode: it is installed" windows "$setup" /S "/$mode"
  expect "$mode: the programs are there" [ -e "$folder/Zomrel.exe" ]
  expect "$mode: the store is there" [ -s "$data/Aluminium.mdb" ]
  expect "$mode: the start menu has it" [ -n "$(menu_of)" ]
  expect "$mode: the desktop has it" [ -n "$(desktop_of)" ]
  cd "$folder"
  expect "$mode: the store is sound" windows zomrel-store.exe check Aluminium.mdb
  expect "$mode: the window is shown" shows_main_window Zomrel.exe
  expect "$mode: nothing is installed over the open program" fails "$setup" /S "/$mode"
  end_programs
  mkdir -p "$data/backups"
  expect "$mode: what the task runs makes a backup" windows zomrel-store.exe backup --daily Aluminium.mdb \
    "$(winepath --windows "$data/backups")"
  echo "the workshop's own" >"$folder/Logo.jpg"
  before=$(sum "$data/Aluminium.mdb")
  expect "$mode: it is installed again" windows "$setup" /S "/$mode"
  expect "$mode: the store is kept" unchanged "$data/Aluminium.mdb" "$before"
  expect "$mode: the logo is kept" grep -q "the workshop's own" "$folder/Logo.jpg"
  expect "$mode: it is removed" windows "$folder/uninstall.exe" /S "/$mode" "_?=$(winepath --windows "$folder")"
  expect "$mode: the programs are gone" [ -z "$(find "$folder" -name '*.exe' ! -name uninstall.exe -o -name '*.dll')" ]
  expect "$mode: the shortcuts are gone" [ -z "$(menu_of)$(desktop_of)" ]
  expect "$mode: the store is kept byte for byte" unchanged "$data/Aluminium.mdb" "$before"
  expect "$mode: the backup is kept" [ -n "$(ls "$data/backups")" ]
  expect "$mode: the logo is kept" [ -e "$folder/Logo.jpg" ]
}

cd "$work"
user=$(ls "$drive/users" | grep -vx Public | head -n 1)
own="$drive/users/$user/AppData/Local/Programs/Zomrel"
try_setup CurrentUser "$own" "$own"
try_setup AllUsers "$drive/Program Files/Zomrel" "$drive/ProgramData/Zomrel"
