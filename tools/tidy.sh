#!/usr/bin/env bash
# Runs clang-tidy on the sources that differ from the last commit, if those are few. With --all on every source; the preset "tidy" does that while it compiles.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

most=30
if [ "${1:-}" = --all ]; then
  most=100000
  files=$(git ls-files -co --exclude-standard -- src tests)
elif git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  files=$(git diff --name-only HEAD; git ls-files -o --exclude-standard)
else
  files="" # an unpacked archive has no history to differ from
fi
sources=$(echo "$files" | sort -u | grep -E '^(src|tests)/.*\.cpp$' | while read -r f; do [ -f "$f" ] && echo "$f"; done || true)
[ -n "$sources" ] || exit 0
# What a test compiles only in some build is not in the list of commands and cannot be judged.
known=$(echo "$sources" | while read -r f; do grep -qF "/$f\"" build/debug/compile_commands.json && echo "$f"; done || true)
[ -n "$known" ] || exit 0
if [ "$(echo "$known" | wc -l)" -gt "$most" ]; then
  echo "More than $most sources changed; clang-tidy reads them with tools/tidy.sh --all or the preset tidy." >&2
  exit 0
fi
echo "$known" | xargs -P "$(nproc)" -n 1 clang-tidy -p build/debug --quiet --warnings-as-errors='*' 2>/dev/null
