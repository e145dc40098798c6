// SPDX-License-Identifier: MIT
#include "plugin/weights/LW6-weight.h"

#include <cstddef>
#include <memory>

#include "plugin/geometry/LW6-face.h"
#include "plugin/host/run_state.h"
#include "plugin/util/chain.h"

namespace dastrel {

namespace {

/// What the popup shows for index 0. An array, because the list's texts are not const.
char none_entry[] = "none";

/// The list's elements are not const because the host's type is not; the names are never written
/// to.
char* list_entry(const char* name) { return const_cast<char*>(name); }

} // namespace

weight_map::WG_typ::~WG_typ() { delete_rest_of_chain(this); }

weight_map::weight_map(MeshEditOp* mesh_edit) : head(nullptr), edit(mesh_edit), count(0) {}

weight_map::~weight_map()
{
    delete head;
    head = nullptr;
}

void weight_map::add_edit(MeshEditOp* mesh_edit) { edit = mesh_edit; }

char** weight_map::get_list(LWObjectFuncs* object_functions)
{
    count = object_functions != nullptr ? object_functions->numVMaps(LWVMAP_WGHT) : 0;
    if (count < 1)
        return new char* [2] { none_entry, nullptr };
    auto owned_list = std::make_unique<char*[]>(static_cast<std::size_t>(count) + 2);
    char** const list = owned_list.get();
    list[0] = none_entry;
    head = new WG_typ;
    head->name = object_functions->vmapName(LWVMAP_WGHT, 0);
    list[1] = list_entry(object_functions->vmapName(LWVMAP_WGHT, 0));
    WG_typ* last = head;
    for (int i = 1; i < count; ++i) {
        last->next = new WG_typ;
        last = last->next;
        last->name = object_functions->vmapName(LWVMAP_WGHT, i);
        list[i + 1] = list_entry(object_functions->vmapName(LWVMAP_WGHT, i));
    }
    list[count + 1] = nullptr;
    return owned_list.release();
}

weight_map::WG_typ* weight_map::get_name(int index)
{
    int number = 1;
    for (WG_typ* node = head; node != nullptr; node = node->next)
        if (number++ == index)
            return node;
    return nullptr;
}

double weight_map::calc_weight(LWPolID polygon, XYZ6_typ /*position*/, const char* name)
{
    if (head == nullptr || name == nullptr || edit == nullptr || edit->state == nullptr)
        return 1.0;
    edit->pointVSet(edit->state, nullptr, LWVMAP_WGHT, name);
    float sum = 0.0F;
    const EDPolygonInfo* const info = edit->polyInfo(edit->state, polygon);
    if (info == nullptr)
        return 0.0;
    for (int i = 0; i < info->numPnts; ++i) {
        const EDPointInfo* const point = edit->pointInfo(edit->state, info->points[i]);
        if (point->vmap_value != nullptr)
            sum += point->vmap_value[0];
    }
    return static_cast<double>(sum / static_cast<float>(info->numPnts));
}

bool weight_map::get_td_info(LWObjectFuncs* object_functions)
{
    return object_functions->numVMaps(LWVMAP_TDVT) > 0;
}

const char* weight_map_name(weight_map& reader, int index)
{
    const weight_map::WG_typ* const node = reader.get_name(index);
    return node != nullptr ? node->name : nullptr;
}

void get_wg_info(int n, weight_map* reader, int index)
{
    delete[] WG_val;
    WG_val = nullptr;
    WG_val = new double[static_cast<std::size_t>(n)];
    const weight_map::WG_typ* const node = reader->get_name(index);
    for (int i = 0; i < n; ++i)
        WG_val[i] =
            node == nullptr ? 1.0 : reader->calc_weight(poly_data[i].polID, XYZ6_typ(), node->name);
}

} // namespace dastrel
