# SPDX-License-Identifier: MIT
# The SVG parser, one header: of the system, or the one that scripts/setup has provided. nanosvg::nanosvg makes it
# available as <nanosvg.h>.
find_path(MODRIFT_NANOSVG_DIR nanosvg.h PATH_SUFFIXES nanosvg
  PATHS "${CMAKE_SOURCE_DIR}/build/third-party" DOC "Folder of nanosvg.h")
if(NOT MODRIFT_NANOSVG_DIR)
  message(FATAL_ERROR "nanosvg.h is missing; please run scripts/setup")
endif()
add_library(nanosvg::nanosvg INTERFACE IMPORTED GLOBAL)
target_include_directories(nanosvg::nanosvg SYSTEM INTERFACE "${MODRIFT_NANOSVG_DIR}")
