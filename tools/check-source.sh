#!/usr/bin/env bash
# Checks the sources: formatting, trailing blanks, tabs, spelling. Prints what is off and fails.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Outside a checkout (an unpacked archive) the folders themselves are looked through.
list() {
  if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git ls-files -co --exclude-standard -- "$@"
  else
    find src tests bench tools -type f
  fi
}

status=0
sources=$(list src tests bench tools | grep -E '\.(h|cpp)$' | while read -r f; do [ -f "$f" ] && echo "$f"; done || true)
if [ -n "$sources" ] && ! echo "$sources" | xargs clang-format --dry-run -Werror; then
  echo "Run clang-format -i on the files above." >&2
  status=1
fi
if echo "$sources" | xargs grep -nE '[[:blank:]]+$|	' -- ; then
  echo "Trailing blanks or tabs in the lines above." >&2
  status=1
fi
# Tables, pictures, files of users and what the program is expected to print hold words that are not ours.
own=$(list src tests bench tools docs resources packaging samples README.md CHANGELOG.md | grep -E '\.(h|cpp|py|sh|md|html|txt|1|bash|in)$|CMakeLists' |
  grep -vE '^tests/golden/|/fuzz/corpus/|known-words' | while read -r f; do [ -f "$f" ] && echo "$f"; done || true)
if ! echo "$own" | xargs codespell --ignore-words tools/known-words.txt; then
  echo "Misspelt words in the lines above; what must stand goes into tools/known-words.txt." >&2
  status=1
fi
exit $status
