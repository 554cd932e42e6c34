# Settings and helper functions shared by every target of the project.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Libraries and the workbench lie side by side; plug-ins in a folder of their own below them, where
# the workbench looks at start-up. Everything runs from the build tree as it is.
set(NK_BIN_DIR ${CMAKE_BINARY_DIR}/bin)
set(NK_PLUGIN_DIR ${NK_BIN_DIR}/plugins)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${NK_BIN_DIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${NK_BIN_DIR})

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(NK_CCACHE ccache)
if(NK_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${NK_CCACHE})
endif()

# Warnings, sanitizers and Qt strictness for a target of ours.
function(nk_target_defaults target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wpedantic)
  target_compile_definitions(${target} PRIVATE QT_NO_FOREACH QT_NO_KEYWORDS
    QT_DEPRECATED_WARNINGS QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)
  if(NK_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(NK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined
      -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
  if(NK_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# A shared library of the host: the declarations in HOST_DIR (moc reads them too) and the
# implementation in the calling folder. PARTS are those files (without suffix) that the application uses too
# though no declaration speaks of them; they are compiled once, as the object library TARGETParts.
function(nk_host_library target)
  cmake_parse_arguments(ARG "" "HOST_DIR;EXPORT" "LINKS;PARTS" ${ARGN})
  file(GLOB declarations CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/host/${ARG_HOST_DIR}/*.h)
  file(GLOB_RECURSE implementation CONFIGURE_DEPENDS *.cpp *.h *.qrc)
  set(parts)
  foreach(part IN LISTS ARG_PARTS)
    list(APPEND parts ${CMAKE_CURRENT_SOURCE_DIR}/${part}.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${part}.h)
  endforeach()
  if(parts)
    list(REMOVE_ITEM implementation ${parts})
    add_library(${target}Parts OBJECT ${parts})
    target_include_directories(${target}Parts PRIVATE ${CMAKE_SOURCE_DIR}/host ${CMAKE_SOURCE_DIR}/workbench)
    target_link_libraries(${target}Parts PUBLIC ${ARG_LINKS})
    nk_target_defaults(${target}Parts)
    list(APPEND implementation $<TARGET_OBJECTS:${target}Parts>)
  endif()
  add_library(${target} SHARED ${declarations} ${implementation})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/host PRIVATE
    ${CMAKE_SOURCE_DIR}/workbench)
  target_compile_definitions(${target} PRIVATE ${ARG_EXPORT})
  target_link_libraries(${target} PUBLIC ${ARG_LINKS})
  nk_target_defaults(${target})
endfunction()
