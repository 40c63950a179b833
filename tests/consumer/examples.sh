#!/bin/sh
# Follows examples/README.md to the letter, from the installed library on: each indented line is a command.
#   examples.sh SOURCE INSTALLED LIBDIR SCRATCH
set -eu
source=$1 installed=$2 libdir=$3 scratch=$4
rm -rf "$scratch"
mkdir -p "$scratch/build"
cp -R "$source/examples" "$scratch"
ln -s "$installed" "$scratch/build/installed"
cd "$scratch"
sed -n 's/^    //p' examples/README.md | sed '1,/--install/d' | sed "s|installed/lib/|installed/$libdir/|" >commands
sh -eux commands
for host in c cpp python; do
  for file in design.svg design.ttin volume.html volume.txt; do
    cmp "build/site-$host/$file" "build/site-cpp/$file"
  done
done
