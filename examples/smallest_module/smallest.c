/* SPDX-License-Identifier: MIT */
/* The smallest module: its one command adds a triangle to the mesh. */
#include <stddef.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/module.h"

static int add_triangle(long version, GlobalFunc* global, void* local, void* server_data)
{
    /* One metre wide, on the plane Y = 0. Clockwise seen from above, so its front faces up. */
    static const double corners[3][3] = {{0, 0, 0}, {0, 0, 1}, {1, 0, 0}};
    MeshEditBegin* const begin = (MeshEditBegin*)(uintptr_t)local;
    MeshEditOp* const edit = begin(0, 0, OPSEL_USER);
    LWPntID points[3];
    int error = EDERR_NONE;
    (void)version, (void)global, (void)server_data;

    if (edit == NULL)
        return AFUNC_BADLOCAL;
    for (int i = 0; i < 3; ++i)
        points[i] = edit->addPoint(edit->state, corners[i]);
    if (edit->addPoly(edit->state, LWPOLTYPE_FACE, NULL, "Smallest", 3, points) == NULL)
        error = EDERR_NOMEMORY; /* the host then keeps nothing */
    edit->done(edit->state, error, 0);
    return AFUNC_OK;
}

static int alive; /* its address is the token: all that a token must not be is null */
static void* start(void) { return &alive; }
static void stop(void* token) { (void)token; }

static const ServerTagInfo tags[] = {{"Smallest", SRVTAG_VALUE(SRVTAG_USERNAME, LANGID_USENGLISH)},
                                     {NULL, 0}};

static const ServerRecord servers[] = {{"MeshDataEdit", "Smallest", add_triangle, tags},
                                       {NULL, NULL, NULL, NULL}};

MODULE_EXPORT const ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, start, stop, servers};
