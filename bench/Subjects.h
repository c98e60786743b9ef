// SPDX-License-Identifier: MIT
// The subjects, one file each; `main` adds their rows.
#pragma once

namespace bench {

void addClockRows();
void addCrossoverRows();
void addGainsRows();
void addGraphDisplayRows();
void addRateChangeRows();
void addRenderingRows();
void addWholePathRows();

}  // namespace bench
