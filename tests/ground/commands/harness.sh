# shellcheck shell=bash
# For the tests of the commands a person types: a copy of the command among stand-ins, away from the project.
#
# A test file defines functions whose names begin with "it_" and ends with "run_all". Each function runs in a shell and
# a folder of its own and fails by calling complain, which the expect_ functions do.
#
# shellcheck disable=SC2317 # the functions are called by the names that run_all finds

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd) || exit 1

# A program of that name, first in PATH; its text comes from standard input.
stand_in() {
    mkdir -p "$work/bin"
    { echo '#!/bin/bash'; cat; } >"$work/bin/$1"
    chmod +x "$work/bin/$1"
}

# A script of the copied project that writes its name, arguments and chosen variables to $work/calls, then what
# standard input says.
recorder() {
    mkdir -p "$(dirname "$work/project/$1")"
    { printf '#!/bin/bash\necho "%s $*" >>"%s/calls"\n' "$1" "$work"; cat; } >"$work/project/$1"
    chmod +x "$work/project/$1"
}

# The copied project with the given files of the real one.
copy_project() {
    local file
    for file in "$@"; do
        mkdir -p "$(dirname "$work/project/$file")"
        cp "$project/$file" "$work/project/$file"
    done
}

# From now on what is tried finds the stand-ins, the named programs of this system, and no others.
only_programs() {
    local program
    mkdir -p "$work/bare"
    for program in "$@"; do
        ln -sf "$(PATH=/usr/bin:/bin type -P "$program")" "$work/bare/$program"
    done
    path_of_the_tried=$work/bin:$work/bare
}

# Runs a command; keeps what it said in $out and $err and how it ended in $status.
try() {
    PATH=${path_of_the_tried:-$work/bin:$PATH} "$@" >"$work/out" 2>"$work/err" </dev/null
    status=$?
    out=$(cat "$work/out")
    err=$(cat "$work/err")
}

complain() {
    printf '    %s\n    status %s\n    stdout: %s\n    stderr: %s\n' "$1" "$status" "$out" "$err" >&2
    exit 1
}

expect_status() { [ "$status" -eq "$1" ] || complain "status $1 expected"; }

# The command failed and said one line that holds each of the texts, and nothing else.
expect_refusal() {
    local text
    [ "$status" -ne 0 ] || complain "a refusal expected"
    if [ "$(wc -l <<<"$err")" -ne 1 ] || [ -z "$err" ] || [ -n "$out" ]; then
        complain "one line expected"
    fi
    for text in "$@"; do
        [[ $err == *"$text"* ]] || complain "expected in it: $text"
    done
}

expect_calls() {
    local calls
    calls=$(cat "$work/calls" 2>/dev/null)
    [ "$calls" = "$1" ] || complain "calls expected: $1; made: $calls"
}

run_all() {
    local name failed=0
    for name in $(compgen -A function it_); do
        # The folder's name has a blank: people have such folders.
        work=$(mktemp -d)/"my work"
        mkdir -p "$work"
        if (cd "$work" && "$name"); then
            echo "PASS   : $name"
        else
            echo "FAIL!  : $name"
            failed=1
        fi
        rm -rf "$(dirname "$work")"
    done
    exit $failed
}
