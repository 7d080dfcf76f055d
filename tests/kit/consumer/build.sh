#!/bin/sh
# The same without CMake: build.sh FOLDER builds into the folder. CXX and CXXFLAGS are taken.
set -eu
here=$(dirname "$0")
mkdir -p "$1"

cflags="-std=c++20 -fPIC -fvisibility=hidden ${CXXFLAGS:-} $(pkg-config --cflags vemo_root)"
libs=$(pkg-config --libs vemo_root)
# Found also where the system's linker doesn't look.
libs="$libs -Wl,-rpath,$(pkg-config --variable=libdir vemo_root)"

# shellcheck disable=SC2086
{
    "${CXX:-g++}" $cflags "$here/main.cpp" -o "$1/example" $libs
    for module in desk greeting; do
        "${CXX:-g++}" $cflags -shared -Wl,-z,defs "$here/$module.cpp" -o "$1/lib$module.so" $libs
    done
}
cp "$here/vemo.json" "$1"
