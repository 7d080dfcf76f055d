#!/usr/bin/env bash
# install_and_use.sh CMAKE GENERATOR COMPILER BUILD [TOOLCHAIN]
#
# Installs the build, moves what was installed, and uses it from outside: by the CMake package, by
# pkg-config, and as the application. VEMO_TEST_EMULATOR holds the words to be put in front of programs
# that are for another machine.
set -euo pipefail
cmake=$1 generator=$2 compiler=$3 build=$4
configure=("$cmake" -G "$generator" -D CMAKE_CXX_COMPILER="$compiler"
    ${5:+-D CMAKE_TOOLCHAIN_FILE="$5"})
read -ra emulator <<<"${VEMO_TEST_EMULATOR:-}"
here=$(cd "$(dirname "$0")" && pwd)

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
kit="$scratch/moved to/kit"
strict='-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Werror'
export XDG_CONFIG_HOME=$scratch/config HOME=$scratch LC_ALL=C.UTF-8
unset LD_LIBRARY_PATH CMAKE_PREFIX_PATH DESTDIR

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Runs a command, and shows what it said only if it fails.
quietly() {
    "$@" >"$scratch/log" 2>&1 || { cat "$scratch/log" >&2; fail "$*"; }
}

# The text has to be in the output of the command that went before.
expect() {
    grep -qF -- "$1" "$scratch/output" || { cat "$scratch/output" >&2; fail "$2: no \"$1\""; }
}

install_and_move() {
    quietly "$cmake" --install "$build" --prefix "$scratch/installed"
    mkdir "$scratch/moved to"
    mv "$scratch/installed" "$kit"
    # Neither where it was installed nor where it was built is written anywhere in it.
    local path
    for path in "$scratch/installed" "$build"; do
        ! grep -rlF -- "$path" "$kit" || fail "$path is named in these files"
    done
}

run_example() {
    "${emulator[@]}" "$1/example" >"$scratch/output" 2>&1 || { cat "$scratch/output" >&2; fail "example of $1"; }
    expect 'Good day, author. Built with ' "example of $1"
}

use_by_cmake() {
    quietly "${configure[@]}" -S "$here/consumer" -B "$scratch/by-cmake" \
        -D CMAKE_PREFIX_PATH="$kit" -D CMAKE_CXX_FLAGS="$strict"
    quietly "$cmake" --build "$scratch/by-cmake"
    run_example "$scratch/by-cmake"
}

use_by_pkg_config() {
    export CXX=$compiler CXXFLAGS=$strict PKG_CONFIG_PATH
    PKG_CONFIG_PATH=$(dirname "$(find "$kit" -name vemo_root.pc)")
    # The compiler splits at blanks what pkg-config quotes, so this goes by a link without any.
    ln -s "$kit" "$scratch/kit"
    PKG_CONFIG_PATH=${PKG_CONFIG_PATH/"$kit"/"$scratch/kit"}
    quietly "$here/consumer/build.sh" "$scratch/by-pkg-config"
    run_example "$scratch/by-pkg-config"
}

# Every installed header, together in one file.
use_all_headers() {
    (cd "$kit/include/vemo" && printf '#include <%s>\n' */*.h) >"$scratch/all.cpp"
    grep -qF '<mempool/mempool.h>' "$scratch/all.cpp" || fail "headers are missing"
    # shellcheck disable=SC2086
    quietly "$compiler" -std=c++20 $strict -fsyntax-only -I "$kit/include/vemo" "$scratch/all.cpp"
}

# A module without a visible entry isn't built, and the author is told why.
refuse_module() {
    local name=$1 source=$2 options=$3 reason=$4
    mkdir "$scratch/$name"
    printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' "project($name LANGUAGES CXX)" \
        'find_package(VemoRoot REQUIRED)' "vemo_add_module($name SOURCES $name.cpp)" \
        "target_link_options($name PRIVATE $options)" \
        >"$scratch/$name/CMakeLists.txt"
    printf '%s\n' "$source" >"$scratch/$name/$name.cpp"
    quietly "${configure[@]}" -S "$scratch/$name" -B "$scratch/$name/build" \
        -D CMAKE_PREFIX_PATH="$kit"
    ! "$cmake" --build "$scratch/$name/build" >"$scratch/output" 2>&1 || fail "$name was built"
    expect "$reason" "$name"
}

# The moved application, by the link in bin, with a module from outside among the user's.
run_application() {
    printf '{"version": 256, "language": "en-US", "Library": ["%s"]}\n' \
        "$scratch/by-cmake/libgreeting.so" >"$scratch/user.json"
    cd "$scratch"
    printf '%s\n' STATUS MODULES QUIT |
        "${emulator[@]}" "$kit/bin/vemocad" -u "$scratch/user.json" "$kit/lib/vemocad/drawings/floorplan.dxf" \
            >"$scratch/output" 2>&1 || { cat "$scratch/output" >&2; fail "vemocad"; }
    expect "$kit/lib/vemocad/vemo.json" "vemocad"
    expect 'floorplan.dxf' "vemocad"
    expect 'loaded   libgreeting.so' "vemocad"
    ! grep -F 'missing  lib' "$scratch/output" || fail "vemocad lacks modules"
}

# A guide, by somebody who has the kit and an empty folder.
follow_guide() {
    mkdir "$scratch/guide-$1"
    (cd "$scratch/guide-$1" && PATH=$kit/bin:$PATH CMAKE_PREFIX_PATH=$kit CXX=$compiler \
        quietly python3 "$here/follow_guide.py" "$here/../../docs/guides/$1.md")
}

install_and_move
use_all_headers
use_by_cmake
use_by_pkg_config
declaration='#include <drawing/runtime.h>
class M : public OdRxModuleBase { void initApp() override {} void uninitApp() override {} };'
refuse_module forgotten "$declaration" '' 'No source of it says ODRX_DEFINE_DYNAMIC_MODULE'
echo '{ local: *; };' >"$scratch/nothing.map"
refuse_module hidden "$declaration
ODRX_DEFINE_DYNAMIC_MODULE(M)" "-Wl,--version-script=$scratch/nothing.map" 'is there but hidden'
refuse_module undefined "$declaration
ODRX_DEFINE_DYNAMIC_MODULE(M)
void elsewhere();
void* used() { elsewhere(); return nullptr; }" '' 'elsewhere()'
run_application
# The guides' commands name programs without an emulator.
if [ ${#emulator[@]} -eq 0 ]; then
    follow_guide module
    follow_guide services
    follow_guide main-program
fi
