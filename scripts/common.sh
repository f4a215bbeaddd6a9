# Shared by ./run and ./test: installing what is missing and building.
# shellcheck shell=bash

KV_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
KV_BUILD="${KV_BUILD:-$KV_ROOT/build}"

kv_say() { printf '\033[1m==> %s\033[0m\n' "$*"; }
kv_warn() { printf '\033[1;33m!!! %s\033[0m\n' "$*" >&2; }

# kv_ensure_packages pkg...: installs the Debian packages that are missing,
# with apt-get when running as root; otherwise names them and fails.
kv_ensure_packages() {
    local missing=()
    local pkg
    for pkg in "$@"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$pkg")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if [ "$(id -u)" -ne 0 ]; then
        kv_warn "missing packages: ${missing[*]}"
        kv_warn "install them with: sudo apt-get install ${missing[*]}"
        return 1
    fi
    kv_say "installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq >/dev/null
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

KV_BUILD_PACKAGES=(g++ cmake ninja-build qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql
    libsqlite3-dev libqt6svg6-dev libgl1-mesa-dev fonts-dejavu-core libpq-dev)

# CMake's automatic moc does not notice headers added since its last run;
# dropping its stamps makes it look again (moc itself reruns only on change).
kv_forget_moc_stamps() {
    find "$KV_BUILD" -path '*_autogen/timestamp' -delete 2>/dev/null || true
}

# Compiler cache, where the machine has one: rebuilds after a branch switch
# take seconds instead of minutes.
kv_cmake_configure() {
    local launcher=()
    command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    cmake -S "$KV_ROOT" -B "$KV_BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" >/dev/null
}

kv_build() {
    kv_say "building in $KV_BUILD"
    kv_cmake_configure
    kv_forget_moc_stamps
    cmake --build "$KV_BUILD" -j "$(nproc)" "$@"
}
