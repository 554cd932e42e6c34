# Tests and how they run: always the same locale, time zone and platform, and never silently with warnings.

option(NK_X11_TESTS "Run the GUI tests a second time under Xvfb with a window manager" ON)

set(NK_TEST_SUPPORT_DIR ${CMAKE_SOURCE_DIR}/tests/support)

# What every test finds in its environment. The sandbox of the test support sets the same for a test that is
# started by hand.
set(NK_TEST_ENVIRONMENT LC_ALL=C.UTF-8 LANGUAGE=C TZ=UTC QT_LOGGING_TO_CONSOLE=1)
# strict_string_checks stays off: it takes strndup() of a bounded part of an X11 reply for an overflow.
set(NK_TEST_TIMEOUT 300)
if(NK_SANITIZE)
  set(NK_TEST_TIMEOUT 1500)
  list(APPEND NK_TEST_ENVIRONMENT
    ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=0:check_initialization_order=1:detect_stack_use_after_return=1
    LSAN_OPTIONS=suppressions=${NK_TEST_SUPPORT_DIR}/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1)
endif()

# Lines of Qt Test that fail a test whatever its exit status: a warning nobody declared with
# QTest::ignoreMessage(), a critical or fatal message, a skipped test function.
set(NK_TEST_FORBIDDEN_OUTPUT "QWARN  :;QSYSTEM:;QCRITICAL:;QFATAL :;SKIP   :")

# Sets what holds for every test of ours on the ctest entry NAME.
function(nk_test_properties name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "ENVIRONMENT")
  get_filename_component(room ${CMAKE_CURRENT_SOURCE_DIR} NAME)
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "${NK_TEST_ENVIRONMENT};${ARG_ENVIRONMENT}"
    FAIL_REGULAR_EXPRESSION "${NK_TEST_FORBIDDEN_OUTPUT}"
    LABELS ${room}
    TIMEOUT ${NK_TEST_TIMEOUT})
endfunction()

# nk_add_test(<name> SOURCES a.cpp... [LIBS lib...] [GUI])
#
# Builds test_<name> and registers it as the ctest entry <name>, run on the offscreen platform. With GUI it is
# registered once more as <name>.x11, run on a display of its own under a window manager: what depends on real
# window activation differs between the two. The main function comes from NK_TEST_MAIN(Class).
function(nk_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "GUI" "" "SOURCES;LIBS")
  if(NOT ARG_SOURCES OR ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "nk_add_test(${name}): SOURCES missing or unknown words: ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  add_executable(test_${name} ${ARG_SOURCES})
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_include_directories(test_${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/host
    ${CMAKE_SOURCE_DIR}/workbench)
  target_link_libraries(test_${name} PRIVATE testsupport ${ARG_LIBS})
  nk_target_defaults(test_${name})
  add_test(NAME ${name} COMMAND test_${name})
  nk_test_properties(${name} ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  if(ARG_GUI AND NK_X11_TESTS)
    add_test(NAME ${name}.x11 COMMAND ${NK_TEST_SUPPORT_DIR}/with_display $<TARGET_FILE:test_${name}>)
    nk_test_properties(${name}.x11 ENVIRONMENT QT_QPA_PLATFORM=xcb)
  endif()
endfunction()
