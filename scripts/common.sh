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
ZT_BUILD_PACKAGES=(cmake ninja-build g++ libgtest-dev pkg-config)

# The extra packages a benchmark build (the bench preset) needs.
ZT_BENCH_PACKAGES=(libbenchmark-dev)
