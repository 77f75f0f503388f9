#!/usr/bin/env bash
# host_programs.sh PROJECT: what a host program and a firmware need is in an installed copy. The README's program is
# built against it in every way that the README names; a program's and a firmware's own platform win.
set -euo pipefail

project=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
strict=(-Wall -Wextra -Wpedantic -Werror)
run_path=("-Wl,-rpath-link,$work/usr/lib")
export LD_LIBRARY_PATH=$work/usr/lib # as on a system where the libraries are installed

fail() {
  echo "$*" >&2
  exit 1
}

build_and_install() {
  cmake -S "$project" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DNASSHARE_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX="$work/usr" -DCMAKE_INSTALL_LIBDIR=lib "$@" >"$work/log" || fail "$(cat "$work/log")"
  cmake --build "$work/build" -j2 >"$work/log" || fail "$(cat "$work/log")"
  cmake --install "$work/build" >"$work/log" || fail "$(cat "$work/log")"
}

pkg_config() { PKG_CONFIG_PATH=$work/usr/lib/pkgconfig pkg-config "$@" nasshare; }

readme_program_builds() {
  awk '/^```c$/ { code = 1; next } /^```$/ { code = 0 } code' "$project/README.md" >"$work/host.c"
  [ "$(wc -l <"$work/host.c")" -ge 12 ] || fail "no program in the README"
  local flags
  read -ra flags <<<"$(pkg_config --cflags --libs)"
  gcc -std=c11 "${strict[@]}" "$work/host.c" "${flags[@]}" "${run_path[@]}" -o "$work/host-c11"
  g++ -std=c++11 -x c++ "${strict[@]}" "$work/host.c" -x none "${flags[@]}" "${run_path[@]}" -o "$work/host-cpp11"
  ldd "$work/host-c11" >"$work/needed"
  grep -F "$work/usr/lib/libnasshare.so.1 " "$work/needed" >/dev/null || fail "another libnasshare is loaded"
  grep -F "$work/usr/lib/libnasplatform.so.1 " "$work/needed" >/dev/null || fail "another libnasplatform is loaded"
}

cmake_package_is_found() {
  mkdir "$work/consumer"
  cp "$work/host.c" "$work/consumer/"
  cat >"$work/consumer/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.25)
project(consumer C)
find_package(nasshare 1 REQUIRED)
add_executable(host host.c)
target_link_libraries(host PRIVATE nasshare::nasshare)
CMAKE
  cmake -S "$work/consumer" -B "$work/consumer/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/usr" >"$work/log"
  cmake --build "$work/consumer/build" >"$work/log" || fail "$(cat "$work/log")"
}

# Prints the workgroup, which the configuration database answers.
reader() {
  cat <<'C'
#include <nasshare/nasshare.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  read_global_setting();
  puts(pss->workgroup);
  return 0;
}
C
}

# A configuration database that answers every key with the key, behind a word of its own.
database() {
  cat <<C
#include <nasshare/platform.h>
#include <stdio.h>

int xml_get_int(const char *key) { (void)key; return 0; }
void xml_get_str(const char *key, int size, char *destination) { snprintf(destination, (size_t)size, "$1%s", key); }
void xml_set_str(const char *key, const char *value) { (void)key, (void)value; }
C
}

packages() {
  cat <<'C'
void MODX_COMMAND(int a, int b) { (void)a, (void)b; }
void MODX_ReadAllXml(void) {}
void MODX_FreeAllXml(void) {}
static struct modx_package_list none;
struct modx_package_list *p_lib_list = &none;
C
}

programs_own_platform_wins() {
  local flags
  read -ra flags <<<"$(pkg_config --cflags --libs)"
  { reader; database own; } >"$work/own.c"
  gcc -std=c11 "${strict[@]}" "$work/own.c" "${flags[@]}" "${run_path[@]}" -o "$work/own"
  [ "$("$work/own")" = own/system_mgr/samba/workgroup ] || fail "the reference platform answered the program"
}

firmwares_platform_takes_the_place() {
  local flags
  read -ra flags <<<"$(pkg_config --cflags --libs)"
  { database firmware; packages; } >"$work/firmware.c"
  gcc -std=c11 -shared -fPIC -I"$work/usr/include" "$work/firmware.c" -Wl,-soname,libfirmware.so -o "$work/usr/lib/libfirmware.so"
  build_and_install -DNASSHARE_PLATFORM_LIBRARY="$work/usr/lib/libfirmware.so"
  reader >"$work/reader.c"
  gcc -std=c11 "${strict[@]}" "$work/reader.c" "${flags[@]}" "${run_path[@]}" -o "$work/reader"
  [ "$("$work/reader")" = firmware/system_mgr/samba/workgroup ] || fail "the firmware was not asked"
  ldd "$work/reader" >"$work/needed"
  ! grep -F libnasplatform "$work/needed" || fail "the reference platform is still loaded"
}

build_and_install
readme_program_builds
cmake_package_is_found
programs_own_platform_wins
firmwares_platform_takes_the_place
echo "host programs build and run against an installed copy"
