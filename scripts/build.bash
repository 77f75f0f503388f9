# shellcheck shell=bash
# Building the project without a word, as long as all goes well.

# build_preset PRESET JOBS: what it says is kept in the file build.log of the build folder, and shown when it fails.
build_preset() {
  local log=build/$1/build.log
  mkdir -p "build/$1"
  if ! { cmake --preset "$1" && cmake --build --preset "$1" -j "$2"; } >"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
}
