#!/bin/bash
# Fails when code outside src/platform/ includes the engine or OS facilities.
root=${1:-.}
cd "$root" || exit 2
leaks=$(grep -rlE '#\s*include\s*[<"](QWebEngine|QtWebEngine|QWebChannel|QProcess|QDesktopServices|windows\.h|unistd\.h)' src \
    | grep -v '^src/platform/')
if [ -n "$leaks" ]; then
    echo "engine or OS headers included outside src/platform/:"
    echo "$leaks"
    exit 1
fi
echo "include boundary holds"
