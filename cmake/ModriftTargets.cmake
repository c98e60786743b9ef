# SPDX-License-Identifier: MIT
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

# modrift_computes(NAME): what runs for long is optimised in the sanitizer builds too. All else is left as it is there,
# since checks in inlined templates are what such a build spends its time on: files full of them compile nearly twice as
# fast.
set(MODRIFT_COMPUTING_OPTIONS "" CACHE STRING "Compiler options of what computes, where the rest is not optimised")
function(modrift_computes name)
  target_compile_options(${name} PRIVATE ${MODRIFT_COMPUTING_OPTIONS})
endfunction()

# modrift_library(NAME SOURCES ... LINKS ...): one folder, one static library; LINKS are the folders it may include.
function(modrift_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC modrift_options ${ARG_LINKS})
endfunction()
