# shellcheck shell=bash disable=SC2034
# SPDX-License-Identifier: MIT
#
# Sourced by run and check: makes sure that what a command needs is there.
#
# A need is one word, "package=probe". The package is Debian's name; the probe says how to see that
# the thing is there without asking the package manager, and so on any system:
#
#     name=cmd:NAME      a program in PATH
#     name=header:FILE   a C++ header that the compiler finds
#     name=deb           nothing but the package manager can tell; elsewhere it counts as there

set -euo pipefail

# What it takes to build the library, the program and the tests.
SETUP_BUILD=(
    cmake=cmd:cmake ninja-build=cmd:ninja "g++=cmd:g++" python3=cmd:python3
    zlib1g-dev=header:zlib.h libminizip-dev=header:minizip/unzip.h
    libgtest-dev=header:gtest/gtest.h libcli11-dev=header:CLI/CLI.hpp libfmt-dev=header:fmt/core.h
)

# What `check --ci` needs beyond that: other compilers and tools, and the parser that a fuzz target
# compares the reader with.
SETUP_CI=(
    git=cmd:git pkg-config=cmd:pkg-config shellcheck=cmd:shellcheck doxygen=cmd:doxygen
    clang=cmd:clang++ clang-format=cmd:clang-format clang-tidy=cmd:clang-tidy
    libclang-rt-14-dev=deb libexpat1-dev=header:expat.h
)

# What it can do without: what makes and judges Debian packages, the shells that the program has
# completions for, and what compares binary interfaces.
SETUP_PACKAGES=(
    lintian=cmd:lintian dpkg-dev=cmd:dpkg-shlibdeps file=cmd:file man-db=cmd:man groff=deb
    mandoc=cmd:mandoc zsh=cmd:zsh fish=cmd:fish abigail-tools=cmd:abidiff
)

# And this: the libraries that tests and benchmarks compare with, the packages whose documents the
# tests read, and the look of the documentation.
SETUP_PEERS=(
    libxml2-dev=deb libpugixml-dev=header:pugixml.hpp libtinyxml2-dev=header:tinyxml2.h
    liblitehtml-dev=deb python3-tinycss2=deb
    libbenchmark-dev=header:benchmark/benchmark.h
    doxygen-awesome-css=deb
    shared-mime-info=deb docbook-xsl=deb xcb-proto=deb libvulkan-dev=deb adwaita-icon-theme=deb
    gir1.2-gtk-3.0=deb libgtk-3-dev=deb
)

setup_is_debian() { command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; }

setup_has_header() {
    local root
    for root in /usr/include /usr/local/include; do
        [[ -e $root/$1 ]] && return
    done
    command -v g++ >/dev/null && g++ -E -include "$1" -x c++ /dev/null >/dev/null 2>&1
}

setup_has_package() {
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# setup_has PACKAGE PROBE
setup_has() {
    case $2 in
    cmd:*) command -v "${2#cmd:}" >/dev/null ;;
    header:*) setup_has_header "${2#header:}" ;;
    deb) ! setup_is_debian || setup_has_package "$1" ;;
    *) echo "setup: unknown probe $2" >&2 && return 2 ;;
    esac
}

# Installs the packages given, or says how to.
setup_install() {
    local sudo=()
    if ! setup_is_debian; then
        printf 'Missing: %s\nThese are the names of Debian 12; install what your system calls them.\n' "$*" >&2
        return 1
    fi
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            printf 'Missing: %s\nAs root: apt-get install %s\n' "$*" "$*" >&2
            return 1
        fi
        sudo=(sudo)
    fi
    printf 'installing %s\n' "$*" >&2
    local log
    log=$(mktemp)
    # A failing update is no reason to stop: the packages may be in the cache.
    "${sudo[@]}" apt-get -q update >"$log" 2>&1 </dev/null || true
    if ! "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q -y install --no-install-recommends "$@" >>"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        printf 'Could not install: %s\n' "$*" >&2
        return 1
    fi
    rm -f "$log"
}

# setup_require NEED...: returns when all of them are there, after installing what is not.
setup_require() {
    local need missing=()
    for need in "$@"; do
        setup_has "${need%%=*}" "${need#*=}" || missing+=("${need%%=*}")
    done
    ((${#missing[@]} == 0)) || setup_install "${missing[@]}"
}

# setup_quietly LOG COMMAND...: runs the command with its output in LOG, shown only if it fails.
setup_quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        return 1
    fi
}

# setup_configure PRESET: configures build/PRESET unless that is done; later changes of the CMake
# files are seen by the build itself.
setup_configure() {
    [[ -e build/$1/build.ninja ]] || setup_quietly "build/$1-configure.log" cmake --preset "$1"
}
