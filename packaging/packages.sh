# The Debian packages that the commands `run` and `test` need, in one place. Both source this file.
# shellcheck shell=bash disable=SC2016,SC2034

# To build the two programs and their tests, to show a window, to keep what the maker's service is told.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libcurl4-openssl-dev libx11-dev
  libgtest-dev fonts-liberation libqt6sql6-sqlite libqt6sql6-psql)

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

# Run as root with the packages as arguments. Debian starts the servers that are among them, and again with the machine: a web
# server on port 80, a database. Nobody asked for that by running our tests, so a policy forbids it while we install, where the
# machine has none of its own, and what was not there before is not started with the machine. The tests start their own.
install_quietly='
  policy=/usr/sbin/policy-rc.d
  if [ ! -e "$policy" ]; then
    trap "rm -f $policy" EXIT
    trap "exit 130" HUP INT TERM
    printf "#!/bin/sh\nexit 101\n" >"$policy"
    chmod 755 "$policy"
  fi
  new=
  for server in nginx postgresql; do
    [ -e "/lib/systemd/system/$server.service" ] || new="$new $server"
  done
  apt-get -qq update && apt-get -qq -o Dpkg::Use-Pty=0 install --yes --no-install-recommends "$@" || exit
  for server in $new; do
    if [ -e "/lib/systemd/system/$server.service" ]; then systemctl --quiet disable "$server" || true; fi
  done'

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
    "${as_root[@]}" sh -c "$install_quietly" sh "${missing[@]}" && return
  fi
  echo "These Debian packages are missing and could not be installed from here: ${missing[*]}" >&2
  exit 2
}
