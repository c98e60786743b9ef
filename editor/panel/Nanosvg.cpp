// SPDX-License-Identifier: MIT
// The code of the SVG parser, compiled once. The header expects these in front of it.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#define NANOSVG_IMPLEMENTATION
#include <nanosvg.h>
