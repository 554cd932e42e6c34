#!/usr/bin/env bash
# ./test and .ci/run: what they build, and that ctest has the last word.
#
# shellcheck disable=SC2016,SC2086,SC2317 # variables of the stand-ins, lists of words, functions found by name
source "$(dirname "${BASH_SOURCE[0]}")/harness.sh"

prepare() {
    copy_project test .ci/run
    recorder tools/setup </dev/null
    recorder tools/build </dev/null
    recorder tools/check-format </dev/null
    stand_in ctest <<<'echo "ctest $1 $2 ${*:5}" >>"'"$work"'/calls"; echo "100% tests passed"; exit 8'
    stand_in nproc <<<'echo 2'
    unset CI
}

it_builds_the_debug_preset_and_ends_with_ctest() {
    prepare
    try project/test
    expect_calls "tools/setup test
tools/build debug -DNK_WERROR=OFF
ctest --preset debug "
    expect_status 8
    [ "$(tail -n 1 <<<"$out")" = "100% tests passed" ] || complain "ctest's summary expected last"
}

it_runs_the_sanitizer_preset_and_hands_the_rest_to_ctest() {
    prepare
    try project/test --asan -R layering
    expect_calls "tools/setup test
tools/build asan -DNK_WERROR=OFF
ctest --preset asan -R layering"
}

it_takes_warnings_for_errors_in_ci() {
    prepare
    CI=true try project/test
    [[ $(cat calls) == *"tools/build debug -DNK_WERROR=ON"* ]] || complain "warnings as errors expected"
}

it_does_not_test_what_does_not_build() {
    prepare
    recorder tools/build <<<'exit 1'
    try project/test
    expect_status 1
    [[ $(cat calls) != *ctest* ]] || complain "no ctest expected"
}

it_names_the_step_of_ci_that_failed() {
    prepare
    try project/.ci/run
    expect_status 1
    [[ $err == *'the step "build and tests" failed'* ]] || complain "the step's name expected"
    recorder tools/check-format <<<'exit 1'
    rm calls
    try project/.ci/run
    [[ $err == *'the step "formatting" failed'* ]] || complain "the step's name expected"
    [[ $(cat calls) != *ctest* ]] || complain "no tests behind a failed step expected"
}

run_all
