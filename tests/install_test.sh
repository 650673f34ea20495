#!/usr/bin/env bash
# Installs the program into scratch folders, both in a folder of its own and as Debian packages, starts both programs there,
# and removes it again. Looks over what goes with it by the desktop's and Debian's own tools.
# Usage: tests/install_test.sh BUILD
set -euo pipefail
build=$1
uninstall=$(cd "$(dirname "$0")" && pwd)/../packaging/uninstall
export LC_ALL=C QT_QPA_PLATFORM=offscreen DEBIAN_FRONTEND=noninteractive
for tool in appstreamcli desktop-file-validate dpkg-shlibdeps fakeroot file lintian man; do
  command -v $tool >/dev/null || { echo "$tool is not installed" >&2; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { echo "$*" >&2; exit 1; }

mkdir "$scratch/site"
echo '<A HREF="missing.htm">x</A>' > "$scratch/site/index.htm"

# check_starts PREFIX: both programs run from there.
check_starts() {
  local prefix=$1 pid ended=0
  "$prefix/bin/tsl" --version | grep -q '^tsl [0-9.]*$' || fail "$prefix: no version"
  "$prefix/bin/tsl" entities "$scratch/site" >/dev/null || fail "$prefix: tsl does not find its data"
  ! ldd "$prefix"/lib/tessaril/*.so | grep 'not found' || fail "$prefix: libraries are missing"
  "$prefix/bin/tessaril" "$scratch/site/index.htm" & pid=$!
  for _ in {1..200}; do # until it takes the wish to end for one
    [ -e /proc/$pid ] || break
    [ $((0x$(sed -n 's/^SigCgt:[[:space:]]*//p' /proc/$pid/status) >> 14 & 1)) -eq 0 ] || break
    sleep 0.1
  done
  kill -TERM $pid || fail "$prefix: tessaril does not start"
  wait $pid || ended=$?
  [ $ended -eq 0 ] || fail "$prefix: tessaril ends with $ended"
  grep -q '^   LastDir = ' "$prefix/lib/tessaril/TSL32.ini" || fail "$prefix: no settings"
}

# check_files PREFIX: what the desktop and the shell look for.
check_files() {
  local share=$1/share page size
  desktop-file-validate "$share/applications/tessaril.desktop"
  appstreamcli validate --no-net "$share"/metainfo/*.xml >/dev/null
  bash -n "$share/bash-completion/completions/tsl"
  for page in "$share"/man/man1/*.gz; do
    [ -z "$(man --warnings -E UTF-8 -l -Tutf8 "$page" 2>&1 >/dev/null)" ] || fail "$page: not well written"
  done
  [ -e "$share/icons/hicolor/scalable/apps/tessaril.svg" ] || fail "the drawing of the icon is missing"
  for size in 16 22 24 32 48 64 128 256; do
    file "$share/icons/hicolor/${size}x$size/apps/tessaril.png" | grep -q "PNG image data, $size x $size" || fail "no icon of $size"
  done
}

# What is left, but for the list of packages.
left() { (cd "$1" && find . -mindepth 1 -not -path './var' -not -path './var/*' | sort | paste -sd' '); }

# In parts, as their lists are not those of whoever installed this build in earnest.
home="$scratch/mü [x]"
echo precious > "$scratch/m"
for part in program browser; do
  cmake --install "$build" --prefix "$home" --component $part >/dev/null
  sed "" "$build/install_manifest_$part.txt" >> "$scratch/manifest"
  [ -z "$(tail -c 1 "$scratch/manifest")" ] || echo >> "$scratch/manifest"
done
check_files "$home"
mv "$home" "$scratch/other place" # it needs nothing of where it was
check_starts "$scratch/other place"
cp "$scratch/manifest" "$scratch/list"
! "$uninstall" "$scratch/list" 2>/dev/null || fail "uninstalls what is not there"
mv "$scratch/other place" "$home"
touch "$home/lib/tessaril/help/404-NOTFOUND" "$home/lib/tessaril/.hidden"
"$uninstall" "$scratch/manifest"
expected='./lib ./lib/tessaril ./lib/tessaril/.hidden ./lib/tessaril/TSL32.ini ./lib/tessaril/help ./lib/tessaril/help/404-NOTFOUND'
[ "$(left "$home")" = "$expected" ] || fail "left: $(left "$home")"
[ -e "$scratch/m" ] || fail "removes files of others"

cpack --config "$build/CPackConfig.cmake" -B "$scratch/packages" >/dev/null
packages=("$scratch"/packages/*.deb)
lintian --fail-on error "${packages[@]}" >&2
root=$scratch/root
mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers} "$scratch/tools"
touch "$root"/var/lib/dpkg/{status,available}
ln -s "$(command -v true)" "$scratch/tools/ldconfig" # this system's libraries stay as they are
debian() {
  PATH=$scratch/tools:$PATH fakeroot dpkg --root="$root" --log=/dev/null --force-depends --force-script-chrootless "$@" \
    >"$scratch/log" 2>&1 || fail "$(cat "$scratch/log")"
}
version=$("$build/cli/tsl" --version)
version=${version#tsl }
for name in tessaril tessaril-browser; do
  [ "$(dpkg-deb -f "$scratch/packages/${name}_${version}"_*.deb Package Version)" = "Package: $name
Version: $version" ] || fail "$name: another version"
done
dpkg-deb -f "$scratch/packages/tessaril_"*.deb Recommends | grep -q "tessaril-browser (= $version)" || fail "no browser"
! dpkg-deb -f "$scratch/packages/tessaril_"*.deb Depends | grep webengine || fail "does not do without the browser"
debian --install "${packages[@]}"
check_files "$root/usr"
check_starts "$root/usr"
debian --remove tessaril-browser tessaril
debian --purge tessaril-browser tessaril
[ -z "$(left "$root")" ] || fail "left: $(left "$root")"
