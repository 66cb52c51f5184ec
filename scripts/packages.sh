# The Debian packages that the project stands on, and the one function that installs what is missing of them.
# Sourced by ./run and ./test.

# What building and running the Phone takes.
packagesToRun=(
    build-essential g++ cmake ninja-build ccache pkg-config
    libobjc-12-dev libgnustep-base-dev libblocksruntime-dev libffi-dev
    libsdl2-dev libcairo2-dev libpango1.0-dev
    libsqlite3-dev libicu-dev libphonenumber-dev libasio-dev libcli11-dev libturbojpeg0-dev
    libexpat1-dev libxml2-dev
    fonts-inter fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji tzdata
)

# What the tests and the benchmarks take beside that.
packagesToTest=(
    libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev
    clang-format clang-19 libclang-rt-19-dev sqlite3 libxml2-utils xvfb xauth mandoc desktop-file-utils shared-mime-info
    python3 python3-clang-19
)

# What the handset's images and package take.
packagesForHandset=(clang-19 lld-19 llvm-19 libc++-19-dev musl-dev dpkg)

# Prints those of the named packages that are not installed, a line each.
missingPackages() {
    local installed
    installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
        sed --quiet 's/^installed //p')
    comm -23 <(printf '%s\n' "$@" | sort --unique) <(sort --unique <<<"$installed")
}

# Whether asRoot can do anything: as root itself, or through sudo, which may ask for a password at a terminal alone.
canBeRoot() {
    [[ $EUID -eq 0 ]] && return 0
    command -v sudo >/dev/null || return 1
    sudo --non-interactive true 2>/dev/null || { [[ -t 0 && -t 2 ]] && sudo --validate; }
}

# Runs a command, which may begin with settings of the environment, as root.
asRoot() {
    if [[ $EUID -eq 0 ]]; then env "$@"; else sudo env "$@"; fi
}

# Makes sure of the named packages. Says nothing and touches nothing when all are there; ends the program with
# status 1, naming what is missing and how to install it, when they cannot be installed from here.
requirePackages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This is not a Debian system. Needed are what Debian 12 calls: $*" >&2
        exit 1
    fi
    local missing
    mapfile -t missing < <(missingPackages "$@")
    [[ ${#missing[@]} -eq 0 ]] && return

    echo "Missing packages: ${missing[*]}" >&2
    if ! canBeRoot; then
        echo "Install them as root, then try again:  apt-get install ${missing[*]}" >&2
        exit 1
    fi
    local quiet=(DEBIAN_FRONTEND=noninteractive apt-get --yes --quiet=2 -o Dpkg::Use-Pty=0)
    if ! asRoot "${quiet[@]}" update </dev/null >&2 ||
        ! asRoot "${quiet[@]}" install --no-install-recommends "${missing[@]}" </dev/null >&2; then
        echo "The packages could not be installed. Once apt-get works, try again, or install them yourself:" \
            " apt-get install ${missing[*]}" >&2
        exit 1
    fi
}
