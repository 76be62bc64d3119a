# Sourced by run, test and measure: installs what is missing.

build_packages=(g++ cmake ninja-build pkg-config libfreetype-dev libpixman-1-dev libpng-dev libcli11-dev
                fonts-urw-base35 ghostscript)
test_packages=(libgtest-dev clang libclang-rt-14-dev)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: asks apt for those that are not there.
need() {
  local missing=() package
  for package in "$@"; do
    [ -e "/usr/share/doc/$package" ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing ${missing[*]}" >&2
  as_root apt-get update -q >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" >&2
}

# build FOLDER TARGETS... -- OPTIONS...: configures once, then builds what changed.
build() {
  local folder=$1 targets=() log
  shift
  while [ $# -gt 0 ] && [ "$1" != -- ]; do targets+=("$1"); shift; done
  [ $# -gt 0 ] && shift
  if [ ! -e "$folder/build.ninja" ]; then
    cmake -S . -B "$folder" -G Ninja "$@" >&2
  fi
  log=$(mktemp)
  if ! cmake --build "$folder" --target "${targets[@]}" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
}
