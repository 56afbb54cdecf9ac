# The Debian packages that the commands `run` and `test` need, in one place. Both source this file.
# shellcheck shell=bash disable=SC2034

# To build the two programs and their tests, to show a window, to keep what the maker's service is told.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libcurl4-openssl-dev libgtest-dev fonts-liberation
  libqt6sql6-sqlite libqt6sql6-psql)

# To drive the real programs on a virtual screen: the screen, its window manager, keys and clicks, the session bus, the
# screen reader's view, the screenshot.
screen_packages=(xvfb openbox xdotool x11-utils dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi python3 imagemagick)

# To test the maker's service on a database server.
service_packages=(postgresql)

# To check the code. The form and the findings depend on the version, so the version is named.
check_packages=(binutils ccache clang-format-14)
full_check_packages=(clang-14 clang-tidy-14 libclang-rt-14-dev)

# To measure, with the peers that are measured beside.
bench_packages=(libbenchmark-dev libxml2-dev libxcb1-dev libxcb-shm0-dev nginx-light wrk)

# require_packages PACKAGE...: installs those that are missing. Where that cannot be done, lists them and ends with status 2.
require_packages() {
  local package missing=()
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return

  local as_root=(env DEBIAN_FRONTEND=noninteractive)
  if [ "$(id -u)" -ne 0 ]; then as_root=(sudo "${as_root[@]}"); fi
  if command -v apt-get >/dev/null && { [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null; }; then
    echo "Installing ${#missing[@]} missing packages: ${missing[*]}"
    "${as_root[@]}" apt-get -qq update &&
      "${as_root[@]}" apt-get -qq -o Dpkg::Use-Pty=0 install --yes --no-install-recommends "${missing[@]}" && return
  fi
  echo "These Debian packages are missing and could not be installed from here: ${missing[*]}" >&2
  exit 2
}
