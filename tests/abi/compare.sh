#!/bin/sh
# Compares what a shared library exports with a list that is kept, or brings the list up to date.
#   compare.sh [--update] LIBRARY LIST
# Weak symbols are left out: they are inline functions and the standard library's templates, which each compiler puts in
# or leaves out as it pleases.
set -eu
update=no
if [ "$1" = --update ]; then
  update=yes
  shift
fi
library=$1 list=$2

exported() {
  nm --dynamic --defined-only --demangle "$library" |
    sed 's/^[0-9a-f]* //' |
    grep -v '^[WVu] ' |
    sed 's/^. //' | LC_ALL=C sort -u
}

if [ $update = yes ]; then
  exported >"$list"
  echo "$list: $(wc -l <"$list") symbols"
  exit 0
fi
if exported | diff -u --label "promised" --label "exported" "$list" -; then
  echo "All $(wc -l <"$list") exported symbols are as promised."
  exit 0
fi
echo
echo "The library no longer exports what it promised (- is missing, + is new). A missing symbol breaks programs that"
echo "are already built. When the change is meant, say so in CHANGELOG.md and run, in a build folder:"
echo "    cmake --build . --target update-exported-symbols"
exit 1
