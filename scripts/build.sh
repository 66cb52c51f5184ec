# What ./run and ./test share in building: the locale, the configured directory of a preset, one build at a time.
# Sourced; the functions expect the project's root as working directory, and pipefail to be set.

# Names of people and texts are UTF-8 everywhere; a bare machine has no locale set.
if [[ -z ${LC_ALL:-}${LC_CTYPE:-}${LANG:-} ]]; then
    export LANG=C.UTF-8
fi

# configurePreset PRESET [CMAKE ARGUMENTS]: configures build/PRESET where it never was with these arguments, the presets
# have changed since, or folders have come or gone. Of changes within a CMake list ninja knows by itself.
configurePreset() {
    local stamp=build/$1/.configured state
    state=$(echo "$*" && find . -path ./build -prune -o -path ./.git -prune -o -name CMakeLists.txt -print | sort)
    if [[ -f build/$1/build.ninja && -f $stamp && $stamp -nt CMakePresets.json && $(<"$stamp") == "$state" ]]; then
        return
    fi
    cmake --preset "$@" </dev/null >&2 && echo "$state" >"$stamp"
}

# buildPreset PRESET [CMAKE ARGUMENTS]: configures and builds, everything it says on the standard error. Waits while
# another shell builds the same preset; says nothing when all is up to date.
buildPreset() {
    if ! grep --quiet "\"name\": \"$1\"" CMakePresets.json; then
        echo "There is no preset $1: CMakePresets.json lists them." >&2
        return 1
    fi
    mkdir -p "build/$1"
    (
        flock 9
        configurePreset "$@" || exit 1
        ninja -C "build/$1" -j "$(nproc)" </dev/null 2>&1 9>&- |
            sed --unbuffered '/^ninja: Entering directory\|^ninja: no work to do\|Re-checking globbed directories/d' >&2
    ) 9>"build/$1/.lock"
}
