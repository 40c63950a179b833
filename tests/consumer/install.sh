#!/bin/sh
# Installs a build tree into an empty folder. The tree is moved afterwards, as a package may be: nothing in it may know
# where it was installed.
#   install.sh CMAKE BUILD PREFIX
set -eu
rm -rf "$3" "$3.before"
"$1" --install "$2" --prefix "$3.before"
mv "$3.before" "$3"
