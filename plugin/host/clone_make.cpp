// SPDX-License-Identifier: MIT
// One run of the command, from start to end.
#include <cstddef>
#include <memory>

#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/engine/progress_monitor.h"
#include "plugin/host/gui_messages.h"
#include "plugin/host/run_state.h"
#include "plugin/host/servmain.h"
#include "plugin/settings/panel.h"
#include "plugin/settings/params.h"
#include "plugin/weights/LW6-weight.h"

namespace dastrel {

namespace {

/// Releases the run state at the end of a run, also when it ends by std::bad_alloc.
class run_memory {
public:
    run_memory() = default;
    run_memory(const run_memory&) = delete;
    run_memory& operator=(const run_memory&) = delete;
    ~run_memory() { free_memory(); }
};

void fetch_services(GlobalFunc* global)
{
    const auto fetch = [global](const char* service) {
        return global(service, GLOBAL_USE_TRANSIENT);
    };
    msg = static_cast<LWMessageFuncs*>(fetch(LWMESSAGEFUNCS_GLOBAL));
    objfunc = static_cast<LWObjectFuncs*>(fetch(LWOBJECTFUNCS_GLOBAL));
    xpanf = static_cast<LWXPanelFuncs*>(fetch(LWXPANELFUNCS_GLOBAL));
    monf = static_cast<LWMonitorFuncs*>(fetch(LWMONITORFUNCS_GLOBAL));
}

void finish(int code) { edit->done(edit->state, code, 0); }

void collect_map_names()
{
    get_any_map_names(objfunc, LWVMAP_TXUV, &UVs);
    get_any_map_names(objfunc, LWVMAP_WGHT, &WGs);
    get_any_map_names(objfunc, LWVMAP_MORF, &MMs);
    get_any_map_names(objfunc, LWVMAP_MNVW, &MNs);
    get_any_map_names(objfunc, LWVMAP_SPOT, &STs);
}

/// Shows the panel and takes its values over. False when the user cancelled.
bool ask_settings(char** weight_map_names)
{
    if (display_panel(&par, weight_map_names) == 0)
        return false;
    get_params(&par);
    xpanf->destroy(xpanel);
    return true;
}

/// Records the usable foreground polygons. Returns the scan's result.
int scan_ground()
{
    reserve_memory(num_polys);
    data = poly_data;
    poly_num = 0;
    const int result = edit->polyScan(edit->state, polscan, &par, OPLYR_FG);
    num_polys = poly_num;
    return result;
}

/// Scratch of one entry for each background point, and the list of texture maps once more. The
/// old list is given to `replaced`.
void prepare_clones(std::unique_ptr<UV_typ>& replaced)
{
    const int points = edit->pointCount(edit->state, OPLYR_BG, OPCOUNT_ALL);
    pointID = new LWPntID[static_cast<std::size_t>(points)];
    replaced.reset(UVs);
    UVs = nullptr;
    get_any_map_names(objfunc, LWVMAP_TXUV, &UVs);
    if (UVs == nullptr)
        UVs = replaced.release();
}

void make_clones()
{
    progress_monitor progress("Hello", par.clone_num);
    akt_item = pos_list;
    for (int i = 0; i < par.clone_num; ++i) {
        progress.step();
        par.akt_clone = i;
        clone_object(&par);
        akt_item = akt_item->next;
    }
}

/// The run after the checks. Returns the code to finish the edit with.
int scatter(int scan_result)
{
    weight_map reader(nullptr);
    reader.add_edit(edit);
    const std::unique_ptr<char*[]> weight_map_names(reader.get_list(objfunc));
    const run_memory memory;
    collect_map_names();
    if (!ask_settings(weight_map_names.get())) {
        finish(scan_result);
        return AFUNC_OK;
    }
    scan_result = scan_ground();
    if (num_polys == 0 && par.slope_limits == 1) {
        message("Change slope angle settings", "There are no valid polys to clone on.");
        finish(scan_result);
        return AFUNC_OK;
    }
    // The host's scan ended before its first polygon, or gave others than it had counted. There is
    // nothing that a clone could stand on.
    if (num_polys == 0 && par.clone_num > 0) {
        finish(scan_result);
        return AFUNC_OK;
    }
    if (par.size_wg > 0)
        get_wg_info(num_polys, &reader, par.size_wg);
    set_positions(&reader, &par);
    std::unique_ptr<UV_typ> replaced_names;
    prepare_clones(replaced_names);
    make_clones();
    finish(scan_result);
    return AFUNC_OK;
}

} // namespace

int CloneMake(long /*version*/, GlobalFunc* global, void* local, void* /*server_data*/)
{
    fetch_services(global);
    edit = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
    if (edit == nullptr)
        return AFUNC_BADLOCAL;
    int scan_result = EDERR_NONE;
    if (edit->polyCount(edit->state, OPLYR_FG, OPCOUNT_ALL) == 0) {
        message("Need some polys to clone on them", nullptr);
        finish(scan_result);
        return AFUNC_OK;
    }
    num_polys = edit->polyCount(edit->state, OPLYR_FG, OPCOUNT_SELECTED);
    scan_result = edit->polyScan(edit->state, check_for_nurbs, edit, OPLYR_FG);
    if (num_polys == 0) {
        message("SubDivs not supported in the foreground Layer", nullptr);
        finish(EDERR_NONE);
        return AFUNC_OK;
    }
    if (edit->pointCount(edit->state, OPLYR_BG, OPCOUNT_ALL) == 0) {
        message("Need some geometry in the background layer(s) to clone", nullptr);
        finish(scan_result);
        return AFUNC_OK;
    }
    return scatter(scan_result);
}

} // namespace dastrel
