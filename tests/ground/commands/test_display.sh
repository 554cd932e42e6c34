#!/usr/bin/env bash
# tests/support/with_display: a display with a window manager, and nothing left of it.
#
# shellcheck disable=SC2016,SC2086,SC2317 # variables of the stand-ins, lists of words, functions found by name
source "$(dirname "${BASH_SOURCE[0]}")/harness.sh"

with_display=$project/tests/support/with_display

it_gives_the_command_a_display_and_its_exit_status() {
    try "$with_display" bash -c 'echo "display $DISPLAY"; exit 3'
    expect_status 3
    [[ $out =~ ^display\ :[0-9]+$ ]] || complain "a display expected"
}

it_leaves_no_process_behind() {
    local process processes
    # The server, the window manager and the command itself. Display numbers are taken again at once, processes are not.
    try "$with_display" bash -c 'cat /proc/$PPID/task/$PPID/children'
    read -r -a processes <<<"$out"
    [ ${#processes[@]} -eq 3 ] || complain "three processes expected"
    for process in "${processes[@]}"; do
        [ ! -d "/proc/$process" ] || complain "process $process is still there"
    done
}

it_hands_arguments_on_as_they_are() {
    try "$with_display" printf '<%s>' "a b" "*"
    [ "$out" = "<a b><*>" ] || complain "untouched arguments expected"
}

it_says_when_the_window_manager_is_missing() {
    only_programs bash env dirname mktemp rm mkfifo cat Xvfb
    try "$with_display" true
    expect_refusal "openbox is not installed"
    expect_status 125
}

run_all
