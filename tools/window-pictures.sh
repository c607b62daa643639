#!/usr/bin/env bash
# Takes pictures of every window, at 100 % and 200 %, light and dark, into build/pictures: to be looked at after a
# change of the windows.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
cmake --preset release -DBUILD_TESTING=ON >/dev/null
cmake --build --preset release --target window_tests forms_tests analysis_tests
for scale in 1 2; do
  for theme in light dark; do
    folder=$root/build/pictures/$theme-$scale
    mkdir -p "$folder"
    for program in window_tests forms_tests analysis_tests; do
      env QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale GENVARA_PICTURES="$folder" ${GENVARA_DARK+-u GENVARA_DARK} \
        $([ $theme = dark ] && echo GENVARA_DARK=1) "build/release/bin/$program" --gtest_filter='WindowPictures*:AnalysisPictures*:*CanBeLookedAt' >/dev/null 2>&1 ||
        echo "$program: some pictures were not taken" >&2
    done
  done
done
echo "Pictures are in $root/build/pictures"
