#!/bin/sh
# Installs Zomrel without a question, uses it, installs it again and removes it, for one user and for all users.
set -eu
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine.sh"
cd "$sources"
version=$this_version
. packaging/windows/common.sh

# The exit statuses of the installer.
no_rights=5
in_use=32

desktop_of() {
  find "$drive/users" "$HOME" -name Zomrel.lnk -path '*Desktop*' | head -n 1
}
menu_of() {
  find "$drive" -name Zomrel.lnk -path '*Start Menu*' | head -n 1
}
tasks=$drive/windows/system32/tasks
task_of() {
  find "$tasks" -type f -name 'Zomrel backup*' 2>/dev/null | head -n 1
}

# task_says FOLDER TEXT: the task's definition contains the text. Wine registers the task without its command.
task_says() {
  iconv -f UTF-16 -t UTF-8 "$1/nightly-backup.xml" | grep -qF "$2"
}

# listed MODE NAME: prints a value that the system's list of programs shows.
listed() {
  root=HKCU
  [ "$1" = CurrentUser ] || root=HKLM
  wine reg query "$root\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Zomrel" /v "$2" 2>/dev/null |
    tr -d '\r' | sed -nE "s/^ *$2 +REG_[A-Z]+ +//p"
}

is_listed() {
  expect "$1: it is listed with its version" [ "$(listed "$1" DisplayVersion)" = "$2" ]
  expect "$1: it is listed with its publisher" [ "$(listed "$1" Publisher)" = "Zomrel developers" ]
  # The programs, Qt and the fonts are 30 to 100 MB.
  size=$(($(listed "$1" EstimatedSize)))
  expect "$1: it is listed with its size" [ "$size" -gt 30000 -a "$size" -lt 100000 ]
}

# in_place FOLDER: prints the argument that makes the uninstaller run in its own folder. It stands without quotation
# marks even if the name has blanks, so it is given as several words, which Wine joins.
in_place() {
  printf '_?=%s\n' "$(winepath --windows "$1")"
}

# remove MODE FOLDER: runs the uninstaller in its own folder, so that its end is seen.
remove() {
  # shellcheck disable=SC2046 # word splitting is intended
  windows "$2/uninstall.exe" /S "/$1" $(in_place "$2") && rm -f "$2/uninstall.exe"
}

# use MODE FOLDER DATA: works with an installation.
use() {
  cd "$2"
  expect "$1: the store is sound" windows zomrel-store.exe check Aluminium.mdb
  expect "$1: the window is shown" shows_main_window Zomrel.exe
  beside=yes
  expect "$1: nothing is installed over the open program" ends_with $in_use "$setup" /S "/$1"
  # shellcheck disable=SC2046 # word splitting is intended
  expect "$1: the open program is not removed" ends_with $in_use "$2/uninstall.exe" /S "/$1" $(in_place "$2")
  beside=
  end_programs
  expect "$1: what the task runs makes a backup" windows cmd /c nightly-backup.cmd "$(winepath --windows "$3/backups")"
  expect "$1: the backup is there" [ -n "$(ls "$3/backups" | grep '^zomrel-.*\.mdb$')" ]
  expect "$1: the log says so" grep -q 'zomrel-.*\.mdb' "$3/backups/backup.log"
}

# try_setup MODE FOLDER DATA: MODE is CurrentUser or AllUsers, FOLDER and DATA are those of the program and of the
# store.
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
  expect "$mode: the nightly task is there" [ -n "$(task_of)" ]
  expect "$mode: the task names its command" task_says "$folder" \
    "\"$(winepath --windows "$folder")\\nightly-backup.cmd\""
  expect "$mode: the task names the folder of the backups" task_says "$folder" \
    "\"$(winepath --windows "$data")\\backups\"</Arguments>"
  is_listed "$mode" "$this_version"
  use "$mode" "$folder" "$data"
  echo "the workshop's own" >"$folder/Logo.jpg"
  before=$(sum "$data/Aluminium.mdb")
  expect "$mode: it is installed again" windows "$setup" /S "/$mode"
  expect "$mode: the store is kept" unchanged "$data/Aluminium.mdb" "$before"
  expect "$mode: the logo is kept" grep -q "the workshop's own" "$folder/Logo.jpg"
  expect "$mode: it is removed" remove "$mode" "$folder"
  expect "$mode: the programs are gone" [ -z "$(find "$folder" -name '*.exe' -o -name '*.dll')" ]
  expect "$mode: the shortcuts are gone" [ -z "$(menu_of)$(desktop_of)" ]
  expect "$mode: the task is gone" [ -z "$(task_of)" ]
  expect "$mode: it is listed no more" [ -z "$(listed "$mode" DisplayName)" ]
  expect "$mode: the store is kept byte for byte" unchanged "$data/Aluminium.mdb" "$before"
  expect "$mode: the backup is kept" [ -n "$(ls "$data/backups")" ]
  expect "$mode: the logo is kept" [ -e "$folder/Logo.jpg" ]
}

# An upgrade from an older version, which had files that are gone now. The user has changed its task.
try_upgrade() {
  old=$work/old/zomrel
  rm -rf "$work/old" "$own"
  mkdir -p "$work/old"
  cp -r "$sources/build/windows/stage/zomrel" "$old"
  cp "$old/Zomrel.exe" "$old/older.dll"
  echo older >"$old/manual/older.html"
  old_setup=$work/old/Zomrel-older.exe
  (cd "$sources" && make_setup 1.9.0.7 "$old" "$old_setup")
  expect "the older version is installed" windows "$old_setup" /S
  is_listed CurrentUser 1.9.0.7
  echo '<!-- at another time -->' >>"$(task_of)"
  cp "$(task_of)" "$work/task"
  before=$(sum "$own/Aluminium.mdb")
  expect "the newer version is installed over it" windows "$setup" /S
  is_listed CurrentUser "$this_version"
  expect "the store is kept" unchanged "$own/Aluminium.mdb" "$before"
  expect "what is gone from the program is removed" [ ! -e "$own/older.dll" -a ! -e "$own/manual/older.html" ]
  expect "the task stays as it is" cmp "$work/task" "$(task_of)"
  expect "the newer version is removed" remove CurrentUser "$own"
}

# The answers of an installation hold for the next one.
try_choices() {
  rm -rf "$own"
  expect "it is installed without a task and a shortcut" windows "$setup" /S /NOBACKUP /NODESKTOP
  expect "neither is there" [ -z "$(task_of)$(desktop_of)" ]
  expect "it is installed again" windows "$setup" /S
  expect "neither is there after that" [ -z "$(task_of)$(desktop_of)" ]
  expect "both are asked for" windows "$setup" /S /BACKUP /DESKTOP
  expect "the task is there" [ -n "$(task_of)" ]
  expect "the shortcut is there" [ -n "$(desktop_of)" ]
  expect "both are given up" windows "$setup" /S /NOBACKUP /NODESKTOP
  expect "both are gone" [ -z "$(task_of)$(desktop_of)" ]
  expect "it is removed" remove CurrentUser "$own"
}

# A folder with Hebrew letters and blanks. The installer wants its name without quotation marks.
try_named_folder() {
  named="$drive/המפעל שלי/זומרל חדש"
  rm -rf "$drive/המפעל שלי"
  expect "it is installed in a named folder" windows "$setup" /S '/D=C:\המפעל' 'שלי\זומרל' חדש
  expect "the store is there" [ -s "$named/Aluminium.mdb" ]
  expect "the task names the folder" task_says "$named" 'C:\המפעל שלי\זומרל חדש\nightly-backup.cmd'
  expect "a newer version finds the folder" windows "$setup" /S
  expect "there is no second one" is_missing "$own/Zomrel.exe"
  use CurrentUser "$named" "$named"
  expect "it is removed" remove CurrentUser "$named"
  expect "its programs are gone" [ -z "$(find "$named" -name '*.exe' -o -name '*.dll')" ]
}

# A restore that was stopped while it replaced the store.
try_stopped_restore() {
  rm -rf "$own"
  windows "$setup" /S
  before=$(sum "$own/Aluminium.mdb")
  mv "$own/Aluminium.mdb" "$own/Aluminium.mdb.zomrel-previous"
  expect "it is installed over a stopped restore" windows "$setup" /S
  expect "the store has its name again" unchanged "$own/Aluminium.mdb" "$before"
  mv "$own/Aluminium.mdb" "$own/Aluminium.mdb.before-restore.2"
  expect "it is installed beside a kept store" windows "$setup" /S
  expect "no empty store takes its place" is_missing "$own/Aluminium.mdb"
  cd "$own"
  expect "nor does the first start make one" fails_with "is kept here" start.cmd </dev/null
  expect "there is none after that" is_missing Aluminium.mdb
  mv Aluminium.mdb.before-restore.2 Aluminium.mdb.zomrel-previous
  expect "the first start gives the store its name" shows_main_window start.cmd
  end_programs
  expect "it is the same store" windows zomrel-store.exe check Aluminium.mdb
  expect "it is removed" remove CurrentUser "$own"
}

# A user who is no administrator, and an installation for one user beside the one for all users.
try_rights() {
  rm -rf "$own" "$shared" "$shared_data"
  $triple-g++-posix -O1 -static -o "$work/as_standard_user.exe" "$sources/tests/packages/as_standard_user.cpp"
  here=$(winepath --windows "$setup")
  cd "$work"
  expect "a user without rights cannot install for all users" \
    ends_with $no_rights as_standard_user.exe "$here" /S /AllUsers
  expect "nothing is installed" [ ! -e "$shared" -a ! -e "$own" ]
  windows "$setup" /S /AllUsers
  expect "a user without rights gets no second store by accident" ends_with $no_rights as_standard_user.exe "$here" /S
  expect "there is none" is_missing "$own"
  expect "such a user may ask for it" windows as_standard_user.exe "$here" /S /CurrentUser
  expect "there is one" [ -s "$own/Aluminium.mdb" ]
  # shellcheck disable=SC2046 # word splitting is intended
  expect "such a user cannot remove the one for all users" ends_with $no_rights as_standard_user.exe \
    "$(winepath --windows "$shared/uninstall.exe")" /S $(in_place "$shared")
  expect "it is there" [ -e "$shared/Zomrel.exe" ]
  # shellcheck disable=SC2046 # word splitting is intended
  expect "its uninstaller removes it" windows "$shared/uninstall.exe" /S $(in_place "$shared")
  expect "it is gone" is_missing "$shared/Zomrel.exe"
  expect "the user's own is there" [ -e "$own/Zomrel.exe" ]
  expect "the user's own is listed" [ -n "$(listed CurrentUser DisplayName)" ]
  expect "the user's own is removed" remove CurrentUser "$own"
}

# A link in the place of the folder of the store would lead Setup to another one.
try_link() {
  rm -rf "$shared" "$shared_data" "$work/elsewhere"
  mkdir "$work/elsewhere"
  ln -s "$work/elsewhere" "$shared_data"
  expect "a link in the place of the store's folder is refused" ends_with $no_rights "$setup" /S /AllUsers
  expect "nothing is written where it leads" [ -z "$(ls "$work/elsewhere")" ]
  rm "$shared_data"
}

cd "$work"
# What a run that was stopped has left.
for root in HKCU HKLM; do
  wine reg delete "$root\\Software\\Zomrel" /f >/dev/null 2>&1 || true
done
rm -rf "$tasks"/Zomrel*
find "$drive" "$HOME" -name Zomrel.lnk -delete
user=$(ls "$drive/users" | grep -vx Public | head -n 1)
own="$drive/users/$user/AppData/Local/Programs/Zomrel"
shared="$drive/Program Files/Zomrel"
shared_data="$drive/ProgramData/Zomrel"
try_setup CurrentUser "$own" "$own"
try_setup AllUsers "$shared" "$shared_data"
try_upgrade
try_choices
try_named_folder
try_stopped_restore
try_rights
try_link
