# deps.sh - sourced by run and test: install the Debian packages that are missing.
# $1: "build" for what building needs, "all" for the tests' peers as well.
qmr_missing_packages() {
    local want=$1 pkgs
    pkgs=$(grep -v '^#' "$QMR_ROOT/scripts/packages.txt")
    [ "$want" = build ] && pkgs="g++ cmake make libx11-dev"
    for p in $pkgs; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || echo "$p"
    done
}

qmr_install_missing() {
    local missing
    missing=$(qmr_missing_packages "$1")
    [ -z "$missing" ] && return 0
    echo "Installing: $missing"
    local sudo=""
    if [ "$(id -u)" != 0 ]; then
        if command -v sudo >/dev/null; then sudo=sudo; else
            echo "These Debian packages are missing: $missing" >&2
            echo "Ask an administrator to install them (apt-get install $missing)." >&2
            return 1
        fi
    fi
    $sudo apt-get update -qq && DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq $missing >/dev/null
}
