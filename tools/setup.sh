#!/usr/bin/env bash
# Installs what building (and, with "test", testing) needs and is missing, on Debian 12. Goes on at once when
# everything is there.
set -euo pipefail
build="g++ cmake ninja-build ccache libfmt-dev nlohmann-json3-dev libsqlite3-dev libsqlitecpp-dev libcli11-dev libcsv-dev qt6-base-dev libqt6svg6 qt6-svg-dev fonts-liberation"
test="dpkg-dev lintian desktop-file-utils appstream man-db locales clang clang-format clang-tidy codespell libclang-rt-14-dev libgtest-dev libgmock-dev librapidcheck-dev python3 python3-jsonschema python3-dev pybind11-dev python3-pytest python3-hypothesis python3-pandas python3-distributed mypy"

wanted=$build
[ "${1:-build}" = test ] && wanted="$build $test"

missing=""
for package in $wanted; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
done
[ -z "$missing" ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo=sudo
echo "Installing:$missing" >&2
$sudo apt-get update -q >&2
# shellcheck disable=SC2086  # the list is meant to be split
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing >&2
