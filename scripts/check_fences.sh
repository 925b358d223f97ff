#!/bin/bash
# The fences of src/: which folder may include which, the engine, Qt SQL,
# network and OS headers only in the libraries that own them, and no file too
# big to hold one job. The layer table is not written here: it is read from
# the libraries and links of src/CMakeLists.txt, so the table the compiler
# enforces through include roots and the one checked here are the same.
# Relative includes ("../app/X.h") pass the compiler's roots; this catches
# them. Prints every breach and fails when there is one.
root=${1:-.}
cd "$root/src" || exit 2

declare -A lib_of_dir links uses
while read -r name kind rest; do
    case "$kind" in
    DIRS) for dir in $rest; do lib_of_dir[$dir]=$name; done ;;
    LINKS) links[$name]=$rest ;;
    USES) uses[$name]=$rest ;;
    esac
done < <(awk '
    /^qub_library\(/ { call = ""; open = 1 }
    open { call = call " " $0 }
    open && /\)/ {
        open = 0
        gsub(/[()]/, " ", call)
        n = split(call, word, /[ \t]+/)
        name = ""; kind = ""; delete list
        for (i = 1; i <= n; i++) {
            w = word[i]
            if (w == "" || w == "qub_library") continue
            if (name == "") { name = w; continue }
            if (w == "DIRS" || w == "LINKS" || w == "USES") { kind = w; continue }
            if (kind == "DIRS" || w ~ /^qub_/) list[kind] = list[kind] " " w
        }
        for (k in list) print name, k, list[k]
    }' CMakeLists.txt)
# The program's main() links the program library.
lib_of_dir[.]=main
links[main]=qub_program

public_closure() { # a library and all it links, transitively
    local lib
    for lib in "$@"; do
        [[ " $seen " == *" $lib "* ]] && continue
        seen="$seen $lib"
        public_closure ${links[$lib]}
    done
}
declare -A visible
for lib in $(printf '%s\n' "${lib_of_dir[@]}" | sort -u); do
    seen=""
    public_closure ${links[$lib]} ${uses[$lib]}
    visible[$lib]="$lib $seen"
done

# Headers of a facility, and the libraries that may include them.
facilities=(
    'QWebEngine|QtWebEngine|QWebChannel|QtWebChannel:qub_engine:the engine'
    'QSql|QtSql:qub_history:Qt SQL'
    'QTcp|QUdp|QSsl|QNetwork|QHostAddress|QLocalServer|QLocalSocket|QtNetwork:qub_proxy qub_engine qub_instance:the network'
    'QProcess|QDesktopServices|QDBus|QtDBus|QSoundEffect|QMedia|QAudio|QtMultimedia|windows\.h|unistd\.h|malloc\.h|sys/:qub_platform qub_engine qub_instance:an OS facility'
)

breaches=0
breach() { echo "$1"; breaches=$((breaches + 1)); }

folder() { if [[ "$1" == */* ]]; then dir=${1%/*}; else dir=.; fi; } # in $dir
mapfile -t files < <(find . -name '*.h' -o -name '*.cpp' | sed 's#^\./##' | sort)
declare -A lib_of
for file in "${files[@]}"; do
    folder "$file"
    lib_of[$file]=${lib_of_dir[$dir]}
    [ -n "${lib_of[$file]}" ] ||
        breach "$file: its folder belongs to no library of src/CMakeLists.txt"
done

normal() { # a path with its "dir/.." steps taken out, in $path
    path=$1
    while [[ "$path" =~ (^|/)[^/.][^/]*/\.\./ ]]; do
        path=${path/"${BASH_REMATCH[0]}"/${BASH_REMATCH[1]}}
    done
    path=${path#./}
}
while IFS=: read -r file line; do
    lib=${lib_of[$file]}
    [ -n "$lib" ] || continue
    [[ "$line" =~ \"([^\"]+)\" ]] && included=${BASH_REMATCH[1]}
    folder "$file"
    normal "$dir/$included"
    [ -e "$path" ] || path=$included
    folder "$path"
    to=${lib_of_dir[$dir]}
    [ -z "$to" ] || [[ " ${visible[$lib]} " == *" $to "* ]] ||
        breach "$file: $lib may not include $included ($to)"
done < <(grep -HE '^\s*#\s*include\s*"' "${files[@]}")

for facility in "${facilities[@]}"; do
    IFS=: read -r pattern owners what <<<"$facility"
    while IFS= read -r file; do
        [[ " $owners " == *" ${lib_of[$file]} "* ]] ||
            breach "$file: $what is included outside $owners"
    done < <(grep -lE "#\s*include\s*[<\"]($pattern)" "${files[@]}")
done

while IFS=: read -r file lines; do
    limit=500
    [ "$file" = app/MainWindow.cpp ] && limit=250
    [ "$lines" -le "$limit" ] || breach "$file: $lines non-blank lines (at most $limit)"
done < <(grep -cv '^\s*$' "${files[@]}")

if [ "$breaches" -gt 0 ]; then
    echo "$breaches breaches of the fences"
    exit 1
fi
echo "fences hold: layers, facilities, file sizes"
