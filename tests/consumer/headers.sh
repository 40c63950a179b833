#!/bin/sh
# Promises about the headers installed under INCLUDE: each compiles by itself, without a warning, and they are
# exactly those that the umbrella header reaches, so nothing private is among them. That of the flat interface compiles
# as C11, too.
#   headers.sh COMPILER INCLUDE
set -eu
compiler=$1 include=$2
flags="-std=c++20 -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Wold-style-cast -Werror"

cd "$include"
installed=$(find OrvikDTMAlgorithm -type f | LC_ALL=C sort)
failed=0
for header in $installed; do
  # shellcheck disable=SC2086
  echo "#include <$header>" | "$compiler" $flags -I. -x c++ -fsyntax-only - || { echo "$header does not compile by itself"; failed=1; }
done

echo '#include <OrvikDTMAlgorithm/api/orvikdtm.h>' |
  "$compiler" -std=c11 -Wall -Wextra -pedantic -Werror -I. -x c -fsyntax-only - || { echo "orvikdtm.h is no C11"; failed=1; }

reached=$(echo '#include <OrvikDTMAlgorithm/OrvikDTMAlgorithm.h>' | "$compiler" -std=c++20 -I. -x c++ -MM - |
  tr ' ' '\n' | grep -o 'OrvikDTMAlgorithm/.*\.h' | LC_ALL=C sort -u)
if [ "$installed" != "$reached" ]; then
  echo "The installed headers are not those that OrvikDTMAlgorithm.h includes; see PublicHeaders.cmake."
  echo "Installed:"; echo "$installed"
  echo "Included:"; echo "$reached"
  failed=1
fi
echo "$(echo "$installed" | wc -l) headers looked at"
exit $failed
