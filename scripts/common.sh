# Shared by the scripts in this folder: make sure the Debian packages a step needs are present.
# As root the missing ones are installed with apt-get; otherwise the script says what to install.

# zt_need_packages PKG... : each PKG is a Debian package name.
zt_need_packages() {
  local missing=()
  local pkg
  for pkg in "$@"; do
    dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$pkg")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -eq 0 ] && command -v apt-get >/dev/null; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq && apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  else
    echo "Missing packages: ${missing[*]}" >&2
    echo "Install them with: sudo apt-get install ${missing[*]}" >&2
    return 1
  fi
}

# The packages every build of the project needs.
ZT_BUILD_PACKAGES=(cmake ninja-build g++ libgtest-dev pkg-config libxml2-utils)

# What the native test runs add: GDB for the debugger views, dpkg-shlibdeps for the Debian package.
ZT_TEST_PACKAGES=(gdb dpkg-dev)

# The cross build for 64-bit Windows: the MinGW-w64 compiler, GoogleTest's sources and Wine.
ZT_WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix googletest wine64)

# zt_start_wine: a quiet Wine in a fresh temporary prefix for this shell, ready before the first
# test runs, and removed when the shell exits. The prefix is set up once (wineboot) by a
# wineserver that stays up until then, so each test starts in a fraction of a second and no test
# becomes the parent of Wine's background services (which would hold CTest's output open).
zt_start_wine() {
  local wine wineserver
  wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
  wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)
  export WINEDEBUG=-all
  export WINEDLLOVERRIDES="mscoree,mshtml="  # no prompt to install .NET or HTML support
  WINEPREFIX=$(mktemp -d)
  export WINEPREFIX
  ZT_WINESERVER=$wineserver
  trap 'zt_stop_wine' EXIT
  "$wineserver" -p </dev/null >/dev/null 2>&1
  if ! timeout 300 "$wine" wineboot --init </dev/null >/dev/null 2>&1; then
    echo "Wine could not set up its prefix in $WINEPREFIX" >&2
    return 1
  fi
}

zt_stop_wine() {
  [ -n "${WINEPREFIX:-}" ] || return 0
  "$ZT_WINESERVER" -k >/dev/null 2>&1 || true
  rm -rf "$WINEPREFIX"
}

# The extra packages a benchmark build (the bench preset) needs.
ZT_BENCH_PACKAGES=(libbenchmark-dev libboost-graph-dev)
