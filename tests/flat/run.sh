#!/bin/sh
# Runs a host of the flat interface in an empty folder of its own.
#   run.sh HOST FOLDER [COMMAND...]      COMMAND, if any, is put before the host
set -eu
host=$1 folder=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder"
exec "$@" "$host" "$folder"
