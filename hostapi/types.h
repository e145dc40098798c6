// SPDX-License-Identifier: MIT
/// The plain types that a module and its host share. Every header of this folder is C and C++.
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Four characters packed into 32 bits, the first one in the highest byte: the type of a polygon or
/// of a vertex map.
typedef uint32_t LWID;

/// Packs four characters into an LWID.
#define LWID_PACK(a, b, c, d)                                              \
    (((LWID)(unsigned char)(a) << 24) | ((LWID)(unsigned char)(b) << 16) | \
     ((LWID)(unsigned char)(c) << 8) | (LWID)(unsigned char)(d))

#define LWPOLTYPE_FACE LWID_PACK('F', 'A', 'C', 'E') ///< an ordinary polygon
#define LWPOLTYPE_CURV LWID_PACK('C', 'U', 'R', 'V') ///< a spline through its points
#define LWPOLTYPE_PTCH LWID_PACK('P', 'T', 'C', 'H') ///< a subdivision patch

#define LWVMAP_TXUV LWID_PACK('T', 'X', 'U', 'V') ///< texture coordinates: 2 floats, u and v
#define LWVMAP_WGHT LWID_PACK('W', 'G', 'H', 'T') ///< weight: 1 float
#define LWVMAP_MORF LWID_PACK('M', 'O', 'R', 'F') ///< relative morph: 3 floats, an offset
#define LWVMAP_MNVW LWID_PACK('M', 'N', 'V', 'W') ///< subpatch weight: 1 float
#define LWVMAP_SPOT LWID_PACK('S', 'P', 'O', 'T') ///< absolute morph: 3 floats, a position
#define LWVMAP_TDVT LWID_PACK('T', 'D', 'V', 'T') ///< only ever counted, never read

/// A point and a polygon as the host names them. The records behind the pointers are the host's
/// own: a module compares and passes ids on, and never looks behind them. An id stays valid from
/// the moment it is handed out until the edit it belongs to is finished. Null names nothing.
typedef struct GCorePoint* LWPntID;
typedef struct GCorePolygon* LWPolID;

#ifdef __cplusplus
}
#endif
