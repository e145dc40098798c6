// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/mesh_edit.h"
#include "plugin/host/run_state.h"

namespace dastrel {

/// The longest value of the types that are carried over.
constexpr int most_floats = 3;

/// Reads the point's value in a map into `value`, an array as long as the type's dimension. Returns
/// false if the point has none.
inline bool read_value(LWID type, const char* name, LWPntID point, float* value)
{
    edit->pointVSet(edit->state, nullptr, type, name);
    return edit->pointVGet(edit->state, point, value) != 0;
}

/// Gives the point a value of `dimension` floats in a map, which the host makes if there is none.
inline void write_value(LWID type, const char* name, LWPntID point, int dimension,
                        const float* value)
{
    edit->pntVMap(edit->state, point, type, name, dimension, value);
}

} // namespace dastrel
