#!/usr/bin/env bash
# Installs the build into a temporary root (DESTDIR), starts the installed program as a
# user without a program folder, closes it, brings a changed caption table as an update of
# the package would, starts again and checks that the user's folder took the new rows and
# kept the user's own texts and files.
#   install_test.sh BUILD_DIR
set -euo pipefail
build=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
root=$tmp/root
fail() { echo "FAIL: $*" >&2; exit 1; }

DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null
share=$root/usr/share/quillotune
for f in usr/bin/quillotune usr/bin/quillotune-cli \
         usr/share/quillotune/qlt.ini usr/share/quillotune/Caption.qlt \
         usr/share/quillotune/language/qlt_Deutsch.lng usr/share/quillotune/language/qlt_English.lng \
         usr/share/quillotune/icons/VolOn.ico usr/share/quillotune/icons/quillotune-48.png \
         usr/share/quillotune/icons/NoPicture.jpg \
         usr/share/quillotune/skin/Default.scs usr/share/quillotune/skin/Night.scs \
         usr/share/quillotune/skin/Paper.scs \
         usr/share/applications/org.quillotune.Quillotune.desktop \
         usr/share/metainfo/org.quillotune.Quillotune.metainfo.xml \
         usr/share/icons/hicolor/scalable/apps/quillotune.svg \
         usr/share/icons/hicolor/16x16/apps/quillotune.png \
         usr/share/icons/hicolor/256x256/apps/quillotune.png \
         usr/share/doc/quillotune/copyright usr/share/doc/quillotune/changelog.gz; do
  [ -f "$root/$f" ] || fail "not installed: /$f"
done
if command -v help2man >/dev/null; then
  for f in quillotune quillotune-cli; do
    [ -f "$root/usr/share/man/man1/$f.1.gz" ] || fail "no manual page for $f"
  done
  # Every command of the tool's help is in its manual page.
  for verb in $("$root/usr/bin/quillotune-cli" --help | sed -n 's/^  \([a-z][a-z-]*\)\b.*/\1/p' | sort -u); do
    zcat "$root/usr/share/man/man1/quillotune-cli.1.gz" | grep -q "$verb" || fail "manual page lacks '$verb'"
  done
fi
# Nothing of a developer's run of the build folder is shipped.
for f in lnkpic.qlt data temp reference; do
  [ ! -e "$share/$f" ] || [ -z "$(ls -A "$share/$f" 2>/dev/null)" ] || fail "shipped a used $f"
done

version=$("$root/usr/bin/quillotune" --version)
[[ $version =~ ^quillotune\ [0-9]+\.[0-9]+ ]] || fail "quillotune --version gave '$version'"
version=$("$root/usr/bin/quillotune-cli" --version)
[[ $version =~ ^quillotune-cli\ [0-9]+\.[0-9]+ ]] || fail "quillotune-cli --version gave '$version'"

if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/org.quillotune.Quillotune.desktop" || fail "desktop entry"
fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net --pedantic "$root/usr/share/metainfo/org.quillotune.Quillotune.metainfo.xml" \
    >"$tmp/appstream.txt" 2>&1 || { cat "$tmp/appstream.txt"; fail "AppStream metadata"; }
fi

export XDG_DATA_HOME=$tmp/home/data
export HOME=$tmp/home
export QT_QPA_PLATFORM=offscreen
user=$XDG_DATA_HOME/quillotune

# Starts the installed program, lets its window come up and closes it as the end of a
# session does. The program ends with 0 only when the start-up got through its checks.
run_program() {
  "$root/usr/bin/quillotune" >"$tmp/out.txt" 2>&1 &
  local pid=$!
  sleep "${1:-4}"
  kill -TERM "$pid" 2>/dev/null || true
  local rc=0
  for _ in $(seq 1 100); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.1
  done
  if kill -0 "$pid" 2>/dev/null; then
    kill -KILL "$pid"
    cat "$tmp/out.txt"
    fail "the program did not close"
  fi
  wait "$pid" || rc=$?
  [ "$rc" -eq 0 ] || { cat "$tmp/out.txt"; fail "the program ended with $rc"; }
}

run_program 4
for f in qlt.ini Caption.qlt language/qlt_English.lng icons/quillotune-48.png skin/Night.scs; do
  [ -f "$user/$f" ] || fail "first start did not make $user/$f"
done
for d in data reference skin temp; do
  [ -d "$user/$d" ] || fail "first start did not make $user/$d"
done
[ ! -e "$root/usr/bin/qlt.ini" ] || fail "the program wrote beside its installed executable"

# The user translates a row and keeps a saved list.
sed -i 's/^\(r\t5k\t5\t\tTitel\t\)Title$/\1Song title/' "$user/Caption.qlt"
grep -q $'^r\t5k\t5\t\tTitel\tSong title$' "$user/Caption.qlt" || fail "could not change the user's caption"
echo "kept" >"$user/data/mine.data"

# The package is updated: a new caption row, a changed row the user never touched, and a
# changed row the user did translate.
cp "$share/Caption.qlt" "$tmp/Caption.qlt"
sed -e 's/^\(r\t4k\t4\t\tInterpret\t\)Artist$/\1Performer/' \
    -e 's/^\(r\t5k\t5\t\tTitel\t\)Title$/\1Name/' \
    -e 's/^r\t1399k\t1399$/r\t1399k\t1399\t\tNeue Zeile\tNew row/' "$tmp/Caption.qlt" >"$share/Caption.qlt"
grep -q $'New row' "$share/Caption.qlt" || fail "could not add a row to the shipped table"

run_program 4
grep -q $'^r\t4k\t4\t\tInterpret\tPerformer$' "$user/Caption.qlt" || fail "untouched row did not take the new text"
grep -q $'^r\t5k\t5\t\tTitel\tSong title$' "$user/Caption.qlt" || fail "the user's translation was lost"
grep -q $'^r\t1399k\t1399\t\tNeue Zeile\tNew row$' "$user/Caption.qlt" || fail "the new row did not arrive"
[ "$(cat "$user/data/mine.data")" = kept ] || fail "the user's saved list was touched"

# The command-line tool of the package uses the same folder.
"$root/usr/bin/quillotune-cli" --help >/dev/null
echo "install test passed"
