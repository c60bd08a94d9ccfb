# The Debian packages that each task needs, one place for all scripts.
build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-serialport-dev qt6-multimedia-dev
  qt6-svg-dev libsqlite3-dev libmicrohttpd-dev libgnutls28-dev nlohmann-json3-dev libxcb1-dev libqrencode-dev
  libsystemd-dev libpocketsphinx-dev flite1-dev pkg-config libgtest-dev libgmock-dev
  libbenchmark-dev)
package_packages=(dpkg-dev file gzip)
package_check_packages=(python3 lintian desktop-file-utils appstream mandoc bash zsh fish mmdebstrap
  curl iproute2 util-linux)
window_packages=(libgl1 libegl1 fonts-dejavu-core xdg-utils)
test_packages=(python3 curl iproute2 util-linux chromium chromium-driver python3-selenium
  xvfb openbox trayer dbus-daemon python3-dbus python3-dbusmock python3-gi systemd xdotool
  at-spi2-core python3-pyatspi
  x11-utils x11-apps desktop-file-utils libglib2.0-bin pocketsphinx-en-us nodejs npm python3-jsonschema)
check_packages=(clang-format clang-tidy git python3)
fuzz_packages=(clang libclang-rt-14-dev)
web_bench_packages=(nginx-light wrk curl python3 gnutls-bin)
screenshot_packages=(xvfb xauth xdotool imagemagick openbox x11-utils x11-apps dbus-daemon python3-dbus
  python3-dbusmock python3-gi at-spi2-core python3-pyatspi)
