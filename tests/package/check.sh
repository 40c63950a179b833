#!/usr/bin/env bash
# Unpacks the Debian packages of a build folder into an empty root and tries what is there: fields and dependencies, the
# program with the library beside it, its manual page and completions, programs built with find_package and
# pkg-config, the headers, and that nothing tells of the machine that they were built on.
#   check.sh BUILD
set -euo pipefail
build=$(realpath "$1")
source=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
version=$(sed -n 's/^project(OrvikDTMAlgorithm VERSION \([0-9.]*\).*/\1/p' "$source/CMakeLists.txt")
series=${version%.*}
libdir=lib/$(dpkg-architecture --query DEB_HOST_MULTIARCH)
library=liborvikdtmalgorithm$series
scratch=$build/check
root=$scratch/root
compiler=${CXX:-g++}
c_compiler=${CC:-gcc}

fail() {
  echo "packages: $*" >&2
  exit 1
}

# The package of a name, which there is once.
file_of() {
  local found=("$build/$1"_*.deb)
  [ -f "${found[0]}" ] && [ ${#found[@]} -eq 1 ] || fail "there should be one package $1"
  echo "${found[0]}"
}

field() { dpkg-deb --field "$(file_of "$1")" "$2"; }

expect_field() {
  local value
  value=$(field "$1" "$2")
  [[ "$value" =~ $3 ]] || fail "$1 has $2: $value, where $3 is expected"
}

check_fields() {
  local package
  for package in "${packages[@]}"; do
    expect_field "$package" Version "^$version-[0-9]+$"
    expect_field "$package" Architecture "^$(dpkg --print-architecture)$"
    expect_field "$package" Maintainer "."
    expect_field "$package" Description "."
  done
  if $shared; then
    expect_field "$library" Depends "libtinyxml"
    expect_field "$library" Depends "libstdc\+\+6 \(>= "
    expect_field liborvikdtmalgorithm-dev Depends "^$library \(= $(field "$library" Version)\)$"
    expect_field orvikdtm Depends "$library \(= $(field "$library" Version)\)"
    dpkg-deb --info "$(file_of "$library")" shlibs | grep -q "^libOrvikDTMAlgorithm $series $library (>= $version" ||
      fail "$library does not tell which packages depend on it"
  else
    expect_field liborvikdtmalgorithm-dev Depends "^libtinyxml-dev$"
    expect_field orvikdtm Depends "libtinyxml"
  fi
}

unpack() {
  local package
  rm -rf "$scratch"
  mkdir -p "$root"
  for package in "${packages[@]}"; do
    dpkg-deb --contents "$(file_of "$package")" | awk '$1 !~ /^d/ { print $6 }' >>"$scratch/files"
    dpkg -x "$(file_of "$package")" "$root"
  done
  [ -z "$(sort "$scratch/files" | uniq -d)" ] || fail "in two packages: $(sort "$scratch/files" | uniq -d)"
  [ "$(ls "$root")" = usr ] || fail "something lies outside /usr: $(ls "$root")"
}

check_licences() {
  local package
  for package in "${packages[@]}"; do
    grep -q "three.js" "$root/usr/share/doc/$package/copyright" || fail "$package does not name its licences"
    gzip -t "$root/usr/share/doc/$package/changelog.gz" "$root/usr/share/doc/$package/changelog.Debian.gz"
  done
}

check_nothing_of_this_machine() {
  if grep -rlF -e "$source" -e "$build" "$root"; then fail "these files name the folder that they were built in"; fi
  if [ -n "${HOME-}" ] && [ "$HOME" != / ] && grep -rlF "$HOME/" "$root"; then fail "these files name a home"; fi
  find "$root/usr/bin" "$root/usr/$libdir" -type f | while read -r file; do
    if readelf -d "$file" 2>/dev/null | grep -E "\((RPATH|RUNPATH)\)"; then fail "$file searches a folder of its own"; fi
  done
}

# Runs the program as installed, with the library of the packages.
orvikdtm() { LD_LIBRARY_PATH=$root/usr/$libdir "$root/usr/bin/orvikdtm" "$@"; }

check_program() {
  local site=$source/examples/sample-site printed
  [ "$(orvikdtm --version)" = "orvikdtm $version" ] || fail "the program is of another version: $(orvikdtm --version)"
  if $shared; then
    LD_LIBRARY_PATH=$root/usr/$libdir ldd "$root/usr/bin/orvikdtm" | grep -qF "=> $root/usr/$libdir/libOrvikDTMAlgorithm.so.$series" ||
      fail "the program does not run with the library of the packages"
  fi
  printed=$(orvikdtm volume "$site/ground.csv" --level 78.5 --html "$scratch/page.html" --quiet)
  grep -q "^Cut volume  *[1-9]" <<<"$printed" || fail "the program measures nothing: $printed"
  [ -s "$scratch/page.html" ] || fail "the program has written no page"
}

check_help() {
  local page=$root/usr/share/man/man1/orvikdtm.1.gz
  gzip -dc "$page" | cmp - <(orvikdtm generate man) || fail "the manual page is another"
  gzip -dc "$page" | head -1 | grep -qF "orvikdtm $version" || fail "the manual page is of another version"
  if command -v man >/dev/null; then
    [ -z "$(LC_ALL=C.UTF-8 man --warnings -l "$page" 2>&1 >/dev/null)" ] || fail "man finds fault with the manual page"
  fi
  cmp "$root/usr/share/bash-completion/completions/orvikdtm" <(orvikdtm generate bash) || fail "the completion for bash is another"
  bash -n "$root/usr/share/bash-completion/completions/orvikdtm"
  cmp "$root/usr/share/zsh/vendor-completions/_orvikdtm" <(orvikdtm generate zsh) || fail "the completion for zsh is another"
}

# A copy, so that nothing can be found beside the sources.
check_find_package() {
  cp -r "$source/tests/consumer/stranger" "$scratch/stranger"
  cmake -G Ninja -S "$scratch/stranger" -B "$scratch/find_package" -DCMAKE_PREFIX_PATH="$root/usr" -DCMAKE_CXX_COMPILER="$compiler" \
    >"$scratch/find_package.log" || fail "find_package: $(cat "$scratch/find_package.log")"
  grep -qF "OrvikDTMAlgorithm_DIR:PATH=$root/usr/$libdir/cmake/OrvikDTMAlgorithm" "$scratch/find_package/CMakeCache.txt" ||
    fail "find_package has found another library"
  cmake --build "$scratch/find_package" >"$scratch/find_package.log" || fail "find_package: $(cat "$scratch/find_package.log")"
  LD_LIBRARY_PATH=$root/usr/$libdir "$scratch/find_package/stranger" || fail "the program built with find_package fails"
}

check_pkg_config() {
  export PKG_CONFIG_PATH=$root/usr/$libdir/pkgconfig
  [ "$(pkg-config --modversion OrvikDTMAlgorithm)" = "$version" ] || fail "pkg-config tells another version"
  CXX=$compiler "$source/tests/consumer/pkg-config.sh" "$compiler" "$root/usr" "$libdir" "$source/tests/consumer/stranger/main.cpp"
  # A program in C says whether the libraries of the C++ compiler are named, too.
  local libs=(--libs)
  $shared || libs=(--static --libs)
  # The flags are lists of words.
  # shellcheck disable=SC2046
  "$c_compiler" -std=c11 $(pkg-config --cflags OrvikDTMAlgorithm) "$source/examples/c/site.c" \
    $(pkg-config "${libs[@]}" OrvikDTMAlgorithm) -lm -o "$scratch/site" || fail "no program in C can be built with pkg-config"
  if readelf -d "$scratch/site" | grep -q "NEEDED.*OrvikDTM"; then $shared || fail "the library is not linked statically"; fi
}

case "$(cd "$build" && ls ./*.deb)" in
*"$library"_*)
  shared=true
  packages=("$library" liborvikdtmalgorithm-dev orvikdtm)
  ;;
*)
  shared=false
  packages=(liborvikdtmalgorithm-dev orvikdtm)
  ;;
esac
for step in check_fields unpack check_licences check_nothing_of_this_machine check_program check_help check_find_package check_pkg_config; do
  echo "== $step"
  $step
done
echo "== headers"
"$source/tests/consumer/headers.sh" "$compiler" "$root/usr/include"
echo "== ${#packages[@]} packages of version $version hold what they should"
