#!/usr/bin/env bash
# ./run: what it refuses before anything is installed or built, and what it hands to the workbench.
#
# shellcheck disable=SC2016,SC2086,SC2317 # variables of the stand-ins, lists of words, functions found by name
source "$(dirname "${BASH_SOURCE[0]}")/harness.sh"

prepare() {
    copy_project run
    recorder tools/setup </dev/null
    recorder tools/build </dev/null
    recorder build/release/bin/workbench <<<'echo "platform ${QT_QPA_PLATFORM:-none}"; exit 7'
    unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
}

run=project/run

it_refuses_a_missing_file() {
    prepare
    try $run --screenshot out.png missing.glb
    expect_refusal "there is no file" "missing.glb"
    expect_calls ""
}

it_refuses_a_folder_as_file() {
    prepare
    mkdir folder
    try $run --screenshot out.png folder
    expect_refusal "is not a file"
    expect_calls ""
}

it_refuses_a_missing_display() {
    prepare
    try $run
    expect_refusal "DISPLAY" "--screenshot"
    expect_calls ""
}

it_refuses_a_display_that_does_not_answer() {
    prepare
    DISPLAY=:65001 try $run
    expect_refusal ":65001" "--screenshot"
    expect_calls ""
}

it_refuses_a_picture_in_a_missing_folder() {
    prepare
    try $run --screenshot missing/out.png
    expect_refusal "there is no folder" "missing"
    expect_calls ""
}

it_refuses_a_screenshot_without_a_name() {
    prepare
    try $run --screenshot
    expect_refusal "usage:"
    expect_status 2
}

it_refuses_two_files_and_unknown_options() {
    prepare
    touch a.glb b.glb
    try $run a.glb b.glb
    expect_refusal "one file at a time" "usage:"
    try $run --fast
    expect_refusal "--fast" "usage:"
    expect_calls ""
}

it_starts_the_workbench_with_the_absolute_path() {
    prepare
    touch "my scene.glb"
    QT_QPA_PLATFORM=minimal try $run "my scene.glb"
    expect_calls "tools/setup run
tools/build release workbench MetadataEditor
build/release/bin/workbench $PWD/my scene.glb"
    expect_status 7
}

it_takes_the_picture_without_a_display() {
    prepare
    touch a.glb
    try $run --screenshot out.png a.glb
    expect_calls "tools/setup run
tools/build release workbench MetadataEditor
build/release/bin/workbench --screenshot $PWD/out.png $PWD/a.glb"
    [ "$out" = "platform offscreen" ] || complain "the offscreen platform expected"
}

it_opens_the_sample_where_no_file_is_named() {
    prepare
    QT_QPA_PLATFORM=minimal try $run
    expect_calls "tools/setup run
tools/build release workbench MetadataEditor
build/release/bin/workbench --sample"
}

it_takes_a_file_whose_name_begins_with_a_dash() {
    prepare
    touch -- -odd.glb
    try $run --screenshot out.png -- -odd.glb
    [[ $(tail -n 1 calls) == *"$PWD/-odd.glb" ]] || complain "the odd name expected"
}

it_stops_when_the_packages_are_missing() {
    prepare
    recorder tools/setup <<<'exit 1'
    try $run --screenshot out.png
    expect_calls "tools/setup run"
    expect_status 1
}

it_stops_when_the_build_fails() {
    prepare
    recorder tools/build <<<'exit 1'
    try $run --screenshot out.png
    expect_calls "tools/setup run
tools/build release workbench MetadataEditor"
    expect_status 1
}

run_all
