#!/usr/bin/env bash
# tools/build: few lines while all goes well, the errors when it does not.
#
# shellcheck disable=SC2016,SC2086,SC2317 # variables of the stand-ins, lists of words, functions found by name
source "$(dirname "${BASH_SOURCE[0]}")/harness.sh"

prepare() {
    copy_project tools/build
}

it_hides_the_compiler_while_all_goes_well() {
    prepare
    stand_in cmake <<<'[ "$1" = --build ] && { for i in {1..40}; do echo "[$i/40] Building $i"; done; }; exit 0'
    try project/tools/build debug
    expect_status 0
    [ "$(wc -l <<<"$out")" -le 12 ] || complain "few lines expected"
    [ -z "$err" ] || complain "no complaint expected"
    grep -q 'Building 40' project/build/debug.log || complain "the whole output in the log expected"
}

it_shows_the_error_and_names_the_log() {
    prepare
    stand_in cmake <<<'[ "$1" = --build ] || exit 0; echo "[1/9] x"; echo "a.cpp:1: error: no such thing"; exit 1'
    try project/tools/build debug
    expect_status 1
    [[ $err == *"a.cpp:1: error: no such thing"* && $err == *"build/debug.log"* ]] || complain "the error expected"
}

it_shows_why_configuring_failed() {
    prepare
    stand_in cmake <<<'echo "CMake Error: Qt is not here"; exit 1'
    try project/tools/build debug
    expect_status 1
    [[ $err == *"Qt is not here"* && $err == *"configuring failed"* ]] || complain "the reason expected"
}

it_counts_warnings() {
    prepare
    stand_in cmake <<<'[ "$1" = --build ] && echo "a.cpp:1: warning: unused"; exit 0'
    try project/tools/build debug
    expect_status 0
    [[ $out == *"1 compiler warnings"* ]] || complain "the count expected"
}

it_tells_definitions_from_targets() {
    prepare
    stand_in cmake <<EOS
echo "\$*" >>'$work/calls'
EOS
    try project/tools/build release -DNK_WERROR=ON workbench MetadataEditor
    expect_calls "--preset release -DNK_WERROR=ON
--build build/release --target workbench MetadataEditor"
}

run_all
