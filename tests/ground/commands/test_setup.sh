#!/usr/bin/env bash
# tools/setup: installs what is missing and only that, and says what to do where it cannot.
#
# shellcheck disable=SC2016,SC2086,SC2317 # variables of the stand-ins, lists of words, functions found by name
source "$(dirname "${BASH_SOURCE[0]}")/harness.sh"

# A system on which only the named packages are installed.
system_with() {
    copy_project tools/setup
    unset NK_SETUP
    only_programs bash env cat mkdir tail sed sort head dirname printf true grep
    # What apt-get installs is installed from then on; what it was asked is recorded.
    printf '%s\n' "$@" >installed
    stand_in dpkg-query <<EOS
for package; do :; done
grep -qx -- "\$package" '$work/installed' && printf installed
EOS
    stand_in apt-get <<EOS
echo "apt-get \$*" >>'$work/calls'
[ -e '$work/apt-fails' ] && { echo "E: no network" >&2; exit 100; }
exit 0
EOS
    stand_in cmake <<<'echo "cmake version 3.25.1"'
    stand_in id <<<'echo 0'
}

everything_for_run="g++ cmake ninja-build ccache qtbase5-dev qtbase5-dev-tools libqt5svg5 libqt5sql5-sqlite"
everything_for_run="$everything_for_run libqt5sql5-psql libassimp-dev fonts-dejavu-core"
everything_for_test="$everything_for_run postgresql assimp-testmodels xvfb openbox fontconfig xdotool"

setup=project/tools/setup

it_says_and_does_nothing_when_everything_is_there() {
    system_with $everything_for_test
    try $setup test
    expect_status 0
    [ -z "$out$err" ] || complain "silence expected"
    expect_calls ""
}

it_installs_only_what_is_missing() {
    system_with $everything_for_run
    try $setup test
    expect_status 0
    [ "$(grep -c update calls)" -eq 1 ] || complain "one update of the lists expected"
    [[ $(tail -n 1 calls) == *"install --no-install-recommends postgresql assimp-testmodels xvfb openbox fontconfig xdotool" ]] ||
        complain "an installation of the six expected"
}

it_needs_less_for_running_than_for_testing() {
    system_with $everything_for_run
    try $setup run
    expect_status 0
    expect_calls ""
}

it_refuses_without_root_and_sudo() {
    system_with g++
    stand_in id <<<'echo 1000'
    try $setup run
    expect_refusal "sudo" "apt-get install cmake ninja-build"
    expect_calls ""
}

it_refuses_when_sudo_says_no() {
    system_with g++
    stand_in id <<<'echo 1000'
    stand_in sudo <<<'exit 1'
    try $setup run
    expect_refusal "sudo was refused" "apt-get install cmake"
    expect_calls ""
}

it_installs_by_sudo_where_not_root() {
    system_with g++
    stand_in id <<<'echo 1000'
    stand_in sudo <<<'[ "$1" = -n ] && shift; exec "$@"'
    try $setup run
    expect_status 0
    [ "$(grep -c install calls)" -eq 1 ] || complain "one installation expected"
}

it_needs_no_sudo_when_nothing_is_missing() {
    system_with $everything_for_run
    stand_in id <<<'echo 1000'
    try $setup run
    expect_status 0
}

it_refuses_a_system_without_apt() {
    system_with $everything_for_run
    rm bin/apt-get
    try $setup run
    expect_refusal "no apt-get" "NK_SETUP=skip" "qtbase5-dev"
}

it_leaves_everything_alone_when_told_to_skip() {
    system_with g++
    rm bin/apt-get bin/dpkg-query
    NK_SETUP=skip try $setup run
    expect_status 0
}

it_shows_what_apt_said_when_it_fails() {
    system_with g++
    touch apt-fails
    try $setup run
    expect_status 1
    [[ $err == *"E: no network"* ]] || complain "apt's own words expected"
}

it_refuses_a_cmake_that_is_too_old() {
    system_with $everything_for_run
    stand_in cmake <<<'echo "cmake version 3.22.1"'
    try $setup run
    expect_refusal "3.25" "3.22.1"
}

it_refuses_an_unknown_purpose() {
    system_with g++
    try $setup everything
    expect_refusal "usage:"
    expect_status 2
}

run_all
