// SPDX-License-Identifier: MIT
// Copies the model's vertex map values to the points of a clone.
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/map_values.h"
#include "plugin/host/run_state.h"
#include "plugin/settings/params.h"

namespace dastrel {

namespace {

/// Copies the values of all listed maps unchanged. Inline: most lists are empty, and a run calls it
/// for each point of each clone.
inline void carry(const UV_typ* list, LWID type, int dimension, LWPntID old_point,
                  LWPntID new_point)
{
    for (const UV_typ* map = list; map != nullptr; map = map->next) {
        float value[most_floats];
        if (read_value(type, map->name, old_point, value))
            write_value(type, map->name, new_point, dimension, value);
    }
}

/// Numbers the clones: the k-th of n gets k / n on all its points.
void write_index(LWPntID new_point, const params_typ& settings)
{
    const float index =
        static_cast<float>(settings.akt_clone) / static_cast<float>(settings.clone_num);
    write_value(LWVMAP_WGHT, "DT_index", new_point, 1, &index);
}

} // namespace

void get_any_map_names(LWObjectFuncs* object_functions, LWID type, UV_typ** list)
{
    const int n = object_functions != nullptr ? object_functions->numVMaps(type) : 0;
    if (n < 1)
        return;
    UV_typ* last = new UV_typ;
    last->name = object_functions->vmapName(type, 0);
    *list = last;
    for (int index = 1; index < n; ++index) {
        last->next = new UV_typ;
        last = last->next;
        last->name = object_functions->vmapName(type, index);
    }
}

void carry_vertex_maps(LWPntID old_point, LWPntID new_point, params_typ* settings)
{
    carry(UVs, LWVMAP_TXUV, 2, old_point, new_point);
    carry(WGs, LWVMAP_WGHT, 1, old_point, new_point);
    write_index(new_point, *settings); // in place of a "DT_index" that the model itself carried
    if (MMs != nullptr)
        carry_relative_morphs(old_point, new_point, settings);
    carry(MNs, LWVMAP_MNVW, 1, old_point, new_point);
    carry(STs, LWVMAP_SPOT, 3, old_point, new_point); // absolute positions: as they are
}

} // namespace dastrel
