#!/bin/bash
# The fences of src/: which folder may include which (the layer table), the
# engine and OS headers only behind platform/, and no file too big to hold one
# job. Prints every breach and fails when there is one.
root=${1:-.}
cd "$root/src" || exit 2

# Folders each layer may include from, besides its own.
declare -A allowed=(
    [platform]="platform"
    [engine]="platform"
    [core]="platform"
    [tabs]="core platform"
    [history]="tabs core platform"
    [commands]="tabs core platform"
    [favorites]="tabs core platform"
    [protect]="tabs core platform"
    [translate]="commands tabs core platform"
    [net]="commands tabs core platform"
    [app]="commands favorites history net protect translate tabs core platform"
    [program]="app commands favorites history net protect translate tabs core platform engine"
    [main]="program app"
)

layer_of() { # path relative to src/
    case "$1" in
    platform/engine/*) echo engine ;;
    */*) echo "${1%%/*}" ;;
    *) echo main ;;
    esac
}

breaches=0
breach() { echo "$1"; breaches=$((breaches + 1)); }

while IFS= read -r file; do
    layer=$(layer_of "$file")
    dir=$(dirname "$file")
    while IFS= read -r included; do
        case "$included" in
        app/* | commands/* | core/* | favorites/* | history/* | net/* | platform/* | program/* | protect/* | tabs/* | translate/*)
            target=$included ;;
        *) target=$(realpath -m --relative-to=. "$dir/$included") ;;
        esac
        to=$(layer_of "$target")
        [ "$to" = "$layer" ] && continue
        [[ " ${allowed[$layer]} " == *" $to "* ]] ||
            breach "$file: $layer may not include $included ($to)"
    done < <(sed -nE 's/^\s*#\s*include\s*"([^"]+)".*/\1/p' "$file")

    if grep -qE '#\s*include\s*[<"](QWebEngine|QtWebEngine|QWebChannel|QtWebChannel)' "$file" &&
        [ "$layer" != engine ]; then
        breach "$file: the engine is included outside platform/engine/"
    fi
    if grep -qE '#\s*include\s*[<"](QProcess|QDesktopServices|windows\.h|unistd\.h)' "$file" &&
        [ "$layer" != platform ] && [ "$layer" != engine ]; then
        breach "$file: an OS facility is included outside platform/"
    fi

    lines=$(grep -cv '^\s*$' "$file")
    limit=500
    [ "$file" = app/MainWindow.cpp ] && limit=250
    [ "$lines" -le "$limit" ] || breach "$file: $lines non-blank lines (at most $limit)"
done < <(find . -name '*.h' -o -name '*.cpp' | sed 's#^\./##' | sort)

if [ "$breaches" -gt 0 ]; then
    echo "$breaches breaches of the fences"
    exit 1
fi
echo "fences hold: layers, engine and OS headers, file sizes"
