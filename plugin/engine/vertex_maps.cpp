// SPDX-License-Identifier: MIT
// What the points of a clone take over from the model's vertex maps.
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/host/run_state.h"
#include "plugin/settings/params.h"
#include "plugin/util/stringi.h"

namespace dastrel {

namespace {

/// The longest value of the types that are carried over.
constexpr int most_floats = 3;

/// Reads the point's value in a map. False when it has none.
bool read_value(LWID type, const char* name, LWPntID point, float* value)
{
    edit->pointVSet(edit->state, nullptr, type, name);
    return edit->pointVGet(edit->state, point, value) != 0;
}

void write_value(LWID type, const char* name, LWPntID point, int dimension, const float* value)
{
    edit->pntVMap(edit->state, point, type, name, dimension, value);
}

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

/// Relative morphs are offsets: they are sized and turned like the points, but not moved. With
/// jitter each is drawn a factor of its own.
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
        Cstr name(map->name);
        if (morph_map_num != 0)
            name += Cstr(morph_map_num);
        write_value(LWVMAP_MORF, name, new_point, 3, value);
    }
}

} // namespace

void get_any_map_names(LWObjectFuncs* object_functions, LWID type, UV_typ** list)
{
    const int n = object_functions->numVMaps(type);
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
    carry_relative_morphs(old_point, new_point, settings);
    carry(MNs, LWVMAP_MNVW, 1, old_point, new_point);
    carry(STs, LWVMAP_SPOT, 3, old_point, new_point); // absolute positions: as they are
}

} // namespace dastrel
