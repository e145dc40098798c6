// SPDX-License-Identifier: MIT
// A target needs a source file for its precompiled header; this one holds nothing else.
