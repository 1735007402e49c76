#!/usr/bin/env bash
# Builds the Debian package from this build tree, checks what it holds and declares, unpacks it
# into a temporary root with dpkg -x and runs the installed companion and program from there.
# Usage: package_test.sh CPACK BUILD_DIR
set -euo pipefail
cpack=$1
build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

"$cpack" -G DEB --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log"; fail "cpack"; }
deb=$(ls "$work"/out/tallora5_*.deb)
[ -f "$deb" ] || fail "no .deb written"

contents=$(dpkg-deb -c "$deb" | awk '{print $NF}')
for f in ./usr/bin/tallora5 ./usr/bin/tallora5-cli \
    ./usr/share/applications/tallora5.desktop \
    ./usr/share/tallora5/esp_help/indice.html ./usr/share/tallora5/cat_help/indice.html \
    ./usr/share/tallora5/esp_help/ayuda.css ./usr/share/tallora5/reports/recibo.rpt \
    ./usr/share/tallora5/charts/chart_esp.tsv ./usr/share/tallora5/messages/messages.tsv \
    ./usr/share/doc/tallora5/copyright; do
    grep -qxF "$f" <<<"$contents" || fail "package lacks $f"
done
for size in 16 22 24 32 48 64 128 256; do
    grep -qxF "./usr/share/icons/hicolor/${size}x${size}/apps/tallora5.png" <<<"$contents" ||
        fail "package lacks the ${size}px icon"
done
# Nothing of the build or the tests travels.
if grep -E 'test|bench|screenshots|tallora5-icons|\.a$' <<<"$contents" | grep -v '/share/tallora5/'; then
    fail "package holds build or test files"
fi

depends=$(dpkg-deb -f "$deb" Depends)
for d in qt6-translations-l10n xdg-utils libqt6widgets6 libsqlite3-0 libc6; do
    grep -q "$d" <<<"$depends" || fail "Depends lacks $d: $depends"
done
[ "$(dpkg-deb -f "$deb" Package)" = tallora5 ] || fail "package name"

root="$work/root"
dpkg -x "$deb" "$root"
grep -qx 'Exec=tallora5' "$root/usr/share/applications/tallora5.desktop" || fail "desktop entry Exec"
grep -qx 'Icon=tallora5' "$root/usr/share/applications/tallora5.desktop" || fail "desktop entry Icon"
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$root/usr/share/applications/tallora5.desktop"
fi

# The installed companion, on the installed resources: help, then a company and an exercise
# (the chart of accounts comes from share/tallora5/charts).
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config"
mkdir -p "$HOME"
cli="$root/usr/bin/tallora5-cli"
# Outputs are taken whole before they are searched: grep -q would leave early, and the
# writer's broken pipe would fail the pipeline now and then.
help=$("$cli" --help) || fail "installed tallora5-cli --help"
grep -q 'Usage: tallora5-cli' <<<"$help" || fail "installed tallora5-cli --help text"
unit="$work/unit"
mkdir -p "$unit"
"$cli" --unit "$unit" --yes company-create --name 'Ferretería Sol' --nif B12345678 >/dev/null
nif=$("$cli" --unit "$unit" companies | cut -f1)
"$cli" --unit "$unit" --yes exercise-create "$nif" --year 2026 >/dev/null
"$cli" --unit "$unit" exercise-open "$nif" 2026 >/dev/null
accounts=$("$cli" --unit "$unit" accounts "$nif" 2026 Compres)
[ -n "$accounts" ] || fail "no chart of accounts from the installed resources"

# The installed program answers --version without a display, and starts: the first settings
# on a first run, then the company list.
version=$(env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM= "$root/usr/bin/tallora5" --version) ||
    fail "installed tallora5 --version"
grep -q 'Tallora 5' <<<"$version" || fail "installed tallora5 --version text"
export QT_QPA_PLATFORM=offscreen
first=$("$root/usr/bin/tallora5" --check-start) || fail "installed tallora5 did not start"
[ "$first" = FormConfiguracio ] || fail "first run showed: $first"
printf '44' >"$XDG_CONFIG_HOME/tallora5/tallora3.cfg"
shown=$("$root/usr/bin/tallora5" --check-start) || fail "installed tallora5 did not start"
[ "$shown" = FormSeleccio ] || fail "second start showed: $shown"
echo "package ok: $(basename "$deb")"
