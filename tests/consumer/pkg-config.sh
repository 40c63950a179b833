#!/bin/sh
# Builds a program with what pkg-config says about the library installed under PREFIX, and runs it.
#   pkg-config.sh COMPILER PREFIX LIBDIR SOURCE
set -eu
compiler=$1 prefix=$2 libdir=$3 source=$4

export PKG_CONFIG_PATH="$prefix/$libdir/pkgconfig"
cflags=$(pkg-config --cflags OrvikDTMAlgorithm)
libs=$(pkg-config --libs OrvikDTMAlgorithm)
echo "flags: $cflags $libs"
case " $cflags " in
*" -ffp-contract=off "*) ;;
*) echo "the flags lack -ffp-contract=off" >&2; exit 1 ;;
esac

# The flags are lists of words.
# shellcheck disable=SC2086
"$compiler" -std=c++20 $cflags "$source" $libs -o "$prefix/stranger"
LD_LIBRARY_PATH="$prefix/$libdir" "$prefix/stranger"
