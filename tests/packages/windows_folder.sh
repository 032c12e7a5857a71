#!/bin/sh
# Unpacks the portable folder under a name with Hebrew letters and blanks, and uses it.
set -eu
. "$(dirname "$0")/common.sh"
. "$(dirname "$0")/wine.sh"

unpack "$work/בית המלאכה שלי"
folder="$work/בית המלאכה שלי/zomrel"
cd "$folder"

expect "the archive contains no store" is_missing Aluminium.mdb
expect "the archive contains no logo beside the program" is_missing Logo.jpg
expect "the first start makes a store and shows the window" shows_main_window start.cmd
expect "the logo is copied" cmp Logo.jpg delivered/Logo.jpg
import -window root "$work/windows-main.png"
end_programs

expect "the store is sound" windows zomrel-store.exe check Aluminium.mdb
expect "the console gets UTF-8" windows zomrel-store.exe create 'חדש ויפה.mdb'
expect "the file name is printed in Hebrew" says 'created חדש ויפה.mdb'
expect "an existing store is not replaced" fails_with "already exists" zomrel-store.exe create 'חדש ויפה.mdb'

cp "$sources/tests/packages/opening.csv" .
expect "an order is entered" windows zomrel-demo.exe opening.csv --store Aluminium.mdb --out 'תמונות'
expect "its report contains the cuts" has_order 'תמונות/order-1.pdf'
expect "the shop pack is planned" windows zomrel-shop.exe plan 1 --store Aluminium.mdb --out 'חבילה'
expect "the workbook is written" unzip -tq 'חבילה/workbook.xlsx'
expect "the documents are set in the program's fonts" sh -c "pdffonts 'חבילה/order-1.pdf' | grep -q CLM"

ln -sfn "$folder" "$WINEPREFIX/dosdevices/t:"
expect "a backup is made through a drive letter" windows zomrel-store.exe backup 'T:\Aluminium.mdb' 'T:\backup.mdb'
expect "nothing is left of its files" no_rest_in "$folder"
mkdir -p backups
expect "the daily backup is made" windows zomrel-store.exe backup --daily Aluminium.mdb backups
expect "the daily backup is there" windows zomrel-store.exe backup --daily Aluminium.mdb backups
expect "this is said" says "nothing to do"
expect "the daily backup is good" windows zomrel-store.exe backup --status backups

cp Aluminium.mdb before.mdb
windows zomrel-demo.exe opening.csv --store Aluminium.mdb --out more
expect "a restore replaces the store" windows zomrel-store.exe restore backup.mdb Aluminium.mdb
expect "the replaced store is kept" [ -e Aluminium.mdb.before-restore ]
expect "the restored store is sound" windows zomrel-store.exe check Aluminium.mdb
expect "the restored store has the order" windows zomrel-shop.exe pieces 1
expect "the restored store lacks the later order" fails_with "2" zomrel-shop.exe pieces 2
expect "a second restore replaces the store" windows zomrel-store.exe restore backup.mdb Aluminium.mdb
expect "both replaced stores are kept" [ -e Aluminium.mdb.before-restore -a -e Aluminium.mdb.before-restore.2 ]
expect "nothing is left of the restores" no_rest_in "$folder"

expect "a station opens the store" shows_main_window Zomrel.exe
beside=yes
expect "a restore is refused while the program is open" \
  fails_with "a program on this or another computer" zomrel-store.exe restore backup.mdb Aluminium.mdb
expect "a forced restore replaces the open store" windows zomrel-store.exe restore --force backup.mdb Aluminium.mdb
beside=
end_programs
expect "the replaced store is sound" windows zomrel-store.exe check Aluminium.mdb
expect "nothing is left of the forced restore" no_rest_in "$folder"

mkdir -p "$WINEPREFIX/dosdevices/unc/server"
ln -sfn "$folder" "$WINEPREFIX/dosdevices/unc/server/share"
expect "a store on a share is sound" windows zomrel-store.exe check '\\server\share\Aluminium.mdb'
expect "a store on a share is backed up" \
  windows zomrel-store.exe backup '\\server\share\Aluminium.mdb' '\\server\share\backup-2.mdb'
expect "a store on a share is restored" \
  windows zomrel-store.exe restore '\\server\share\backup-2.mdb' '\\server\share\Aluminium.mdb'
expect "a link names a store on a share" windows zomrel-store.exe link share.mdb --file '\\server\share\Aluminium.mdb'
expect "the store that it names is sound" windows zomrel-store.exe check share.mdb

mkdir -p elsewhere
expect "a link names a store in another folder" \
  windows zomrel-store.exe link 'elsewhere\link.mdb' --file "T:\\Aluminium.mdb"
expect "the linked store is sound" windows zomrel-store.exe check 'elsewhere\link.mdb'
expect "the import says how old stores are taken over" fails_with "on a Linux computer" zomrel-store.exe import old.mdb new.mdb
