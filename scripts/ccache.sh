# Sourced by the build scripts: compile through ccache when it is there, with
# paths taken relative to the checkout, so a fresh clone elsewhere on the same
# machine (as CI makes) reuses what an earlier build compiled.
launcher=()
if command -v ccache > /dev/null; then
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
