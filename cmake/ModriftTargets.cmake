# What every target of ours shares: the language, the warnings, exact floating point.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(MODRIFT_SANITIZE "" CACHE STRING "Sanitizers to build with, as the compiler's -fsanitize= takes them")

add_library(modrift_options INTERFACE)
target_include_directories(modrift_options INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(modrift_options INTERFACE
  # The same samples on every build: no contraction into fused multiply-adds, no fast math.
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Werror
  -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-qual -Wcast-align -Wformat=2 -Wundef -Wimplicit-fallthrough)
if(MODRIFT_SANITIZE)
  target_compile_options(modrift_options INTERFACE
    -fsanitize=${MODRIFT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(modrift_options INTERFACE -fsanitize=${MODRIFT_SANITIZE})
endif()

# Reading the standard library anew for each file is a third of the work of a build. Off in the builds that people use, as
# it hides missing includes, and for clang-tidy, which can't read what another compiler has prepared.
option(MODRIFT_PRECOMPILE "Read the standard library's headers once for all files" OFF)
set(MODRIFT_STANDARD_HEADERS
  <algorithm> <array> <atomic> <bit> <chrono> <cmath> <cstddef> <cstdint> <cstdio> <cstdlib> <cstring> <filesystem>
  <fstream> <functional> <limits> <map> <memory> <numbers> <optional> <span> <string> <string_view> <thread> <utility>
  <vector>)
if(MODRIFT_PRECOMPILE)
  # Some of what we link asks for -pthread, and all must agree. Here gcc 12 sees overruns inside its own strings, where
  # it sees none in the builds without; those look for ours.
  target_compile_options(modrift_options INTERFACE -pthread -Wno-array-bounds -Wno-stringop-overflow)
endif()

# modrift_precompile(NAME KIND [HEADER...]): targets of one kind share what the first of them has read, the standard
# library and the named headers.
function(modrift_precompile name kind)
  if(NOT MODRIFT_PRECOMPILE)
    return()
  endif()
  get_property(owner GLOBAL PROPERTY modrift_precompiled_${kind})
  if(owner)
    target_precompile_headers(${name} REUSE_FROM ${owner})
  else()
    target_precompile_headers(${name} PRIVATE ${MODRIFT_STANDARD_HEADERS} ${ARGN})
    set_property(GLOBAL PROPERTY modrift_precompiled_${kind} ${name})
  endif()
endfunction()

# modrift_library(NAME SOURCES ... LINKS ... [HEADERS ...]): one folder, one static library; LINKS are the folders it may
# include, HEADERS those of other people that most of its files read.
function(modrift_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;HEADERS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC modrift_options ${ARG_LINKS})
  if(ARG_HEADERS)
    modrift_precompile(${name} ${name} ${ARG_HEADERS})
  else()
    modrift_precompile(${name} library)
  endif()
endfunction()
