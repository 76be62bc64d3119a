# Sourced by the commands in the root: installs what is missing, builds.

build_packages=(g++ cmake ninja-build pkg-config libfreetype-dev libpixman-1-dev libpng-dev libcli11-dev
                libsdl2-dev libwayland-dev libfftw3-dev libtiff-dev libtomlplusplus-dev libpango1.0-dev libcups2-dev libjs-leaflet
                fonts-urw-base35 fonts-dejavu-core ghostscript)
# The printer's, which all else does without.
printer_packages=(libpappl-dev zlib1g-dev bubblewrap)
# Displays without a person, programs that act for one, those whose jobs are screened, and disks to mount.
test_packages=(libgtest-dev xvfb xauth xdotool xclip x11-apps weston imagemagick
               groff enscript a2ps libcairo2-dev librsvg2-bin poppler-utils gnuplot-nox netpbm psutils qpdf mupdf-tools
               chromium cups-daemon cups-client cups-filters cups-ipp-utils printer-driver-gutenprint xfsprogs btrfs-progs
               mandoc bash-completion zsh fish desktop-file-utils appstream shared-mime-info xdg-utils libglib2.0-bin
               curl iproute2)
fuzz_packages=(clang libclang-rt-14-dev lld)
package_packages=(debhelper dpkg-dev lintian librsvg2-bin)
check_packages=(clang clang-tidy cppcheck shellcheck libgtest-dev libcairo2-dev)

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# need PACKAGE...: installs those that are missing. Hundreds of packages need not
# wait for the disk at every file: an interrupted installation is repeated.
need() {
  local missing=() package
  for package in "$@"; do
    [ -e "/usr/share/doc/$package" ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing ${missing[*]}" >&2
  as_root apt-get update -q >&2
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends \
    -o Dpkg::Options::=--force-unsafe-io "${missing[@]}" >&2
}

# build PRESET FOLDER TARGET...: configures once for each state of the presets,
# then builds what changed and shows the compiler's output only when it fails.
build() {
  local preset=$1 folder=$2 log
  shift 2
  log=$(mktemp)
  if { [ "$folder/build.ninja" -nt CMakePresets.json ] || cmake --fresh --preset "$preset"; } >"$log" 2>&1 &&
     cmake --build "$folder" --target "$@" >>"$log" 2>&1; then
    rm -f "$log"
  else
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
}
