# The Debian packages that the commands `run` and `test` need, in one place. Both source this file.
# shellcheck shell=bash disable=SC2016,SC2034

# To build the two programs and their tests, to show a window, to sound an alarm, to store what the maker's service receives, to
# verify who sends the feeds of events.
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libcurl4-openssl-dev libx11-dev ca-certificates
  libgtest-dev fonts-liberation libpulse0 libqt6sql6-sqlite libqt6sql6-psql libtomlplusplus-dev libsimdjson-dev)

# To drive the real programs on a virtual screen: the screen, its window manager, keys and clicks, the session bus, the
# screen reader's view, the screenshot, the check of the autostart entry, a tray.
screen_packages=(xvfb xauth openbox xdotool x11-utils dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi python3 imagemagick
  desktop-file-utils trayer libglib2.0-bin)

# To record what the alarm sounds like, on a sound server that the tests start for themselves. Where there is one it is used as it
# is: pulseaudio would take the place of the packages by which PipeWire serves a desktop.
sound_packages=(pulseaudio-utils)
if ! command -v pulseaudio pipewire-pulse >/dev/null; then sound_packages+=(pulseaudio); fi

# To test the maker's service on a database server, the backup of its file, and what systemd thinks of the mirror's units; to make the
# certificates of a feed's server.
service_packages=(postgresql sqlite3 systemd openssl)

# To check the code. Format and findings depend on the version, so the version is fixed.
check_packages=(binutils ccache clang-format-14)
full_check_packages=(clang-14 clang-tidy-14 libclang-rt-14-dev)

# To measure, with the programs that serve as a comparison.
bench_packages=(libbenchmark-dev libxml2-dev libxcb1-dev libxcb-shm0-dev nginx-light wrk)

# To build a Debian package: what finds the libraries that the programs need.
deb_packages=(dpkg-dev file)

# Run as root with the packages as arguments. Debian starts the servers among them at once and at each boot: a web server
# on port 80, a database. Nobody asked for that by running our tests, so a policy forbids it during the installation, unless the
# machine has a policy of its own, and a server that is new here is disabled at boot. The tests start their own.
install_quietly='
  policy=/usr/sbin/policy-rc.d
  if [ ! -e "$policy" ] || grep -q "borvane tests" "$policy"; then
    trap "rm -f $policy" EXIT
    trap "exit 130" HUP INT TERM
    printf "#!/bin/sh\n# Of the borvane tests, for one installation.\nexit 101\n" >"$policy"
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

# require_packages PACKAGE...: installs those that are missing. If that is impossible, lists them and exits with status 2.
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
