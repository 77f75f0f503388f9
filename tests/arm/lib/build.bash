# shellcheck shell=bash
# Runs in the ARM system: builds the project for ARM, and what tests preload into programs for both processors, as
# shells and the like are this machine's own. Arguments: folder of this test, folder for what is built, jobs at a time.
set -euo pipefail
here=$1 work=$2 jobs=$3
project=${here%/*/*}
native=$work/stand-ins/lib/$(gcc -print-multiarch)
arm=$work/stand-ins/lib/$(arm-linux-gnueabihf-gcc -print-multiarch)

cmake -S "$project" -B "$work/tree" -G Ninja --toolchain "$here/toolchain.cmake" -DNASSHARE_TESTS_OPTIONS=-O0 \
  "-DNASSHARE_STAND_INS=$work/stand-ins/\$LIB/libappliance-stand-ins.so"
cmake --build "$work/tree" -j "$jobs"

mkdir -p "$native" "$arm"
ln -sf "$work/tree/appliance/libappliance-stand-ins.so" "$arm/"
g++ -std=c++20 -O1 -shared -fPIC "$project/appliance/stand_ins.cpp" -o "$native/libappliance-stand-ins.so"
