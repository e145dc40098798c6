// SPDX-License-Identifier: MIT
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/map_values.h"
#include "plugin/host/run_state.h"
#include "plugin/util/stringi.h"

namespace dastrel {

namespace {

/// Writes to the map of this name, or of one composed of it and the clone's number. The host finds
/// a map faster by the pointer of its own name than by a copy.
void write_offset(const char* name, LWPntID point, const float* value)
{
    if (morph_map_num == 0 && name != nullptr) {
        write_value(LWVMAP_MORF, name, point, 3, value);
        return;
    }
    Cstr composed(name);
    if (morph_map_num != 0)
        composed += Cstr(morph_map_num);
    write_value(LWVMAP_MORF, composed, point, 3, value);
}

} // namespace

void carry_relative_morphs(LWPntID old_point, LWPntID new_point, params_typ* settings)
{
    for (const UV_typ* map = MMs; map != nullptr; map = map->next) {
        float value[most_floats];
        if (!read_value(LWVMAP_MORF, map->name, old_point, value))
            continue;
        const XYZ6_typ offset =
            calc_cloned_point(XYZ6_typ(static_cast<double>(value[0]), static_cast<double>(value[1]),
                                       static_cast<double>(value[2])),
                              settings);
        value[0] = static_cast<float>(offset.x());
        value[1] = static_cast<float>(offset.y());
        value[2] = static_cast<float>(offset.z());
        write_offset(map->name, new_point, value);
    }
}

} // namespace dastrel
