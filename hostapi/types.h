// SPDX-License-Identifier: MIT
/// The plain types that a module and its host share, and the rules that hold for all headers of
/// this folder. Each of them is C11 and C++, and can be included alone.
///
/// Threads. There is one host thread for each run: the one on which the host calls the activation
/// function. Everything here is called on that thread, in both directions. A module may use threads
/// of its own for its own data, but makes no call to the host from them, and has ended or joined
/// them before the activation function returns. The tag in brackets at each function says when it
/// may be called:
///
///     [run]    from the call of the activation function until it returns
///     [edit]   from the moment the edit is begun until its `done` is called, within a run
///     [panel]  from the panel's `create` to its `destroy`, within a run
///     [load]   outside of every run, by the host
///
/// Memory. Each side frees what it made. What one side hands to the other is lent: the comment says
/// for how long. Nothing is handed over to be freed by the other side.
///
/// Errors. A call that fails gives the null or the code that its comment names. No exception comes
/// out of the host. None should leave a module: C++ modules catch theirs in the activation
/// function.
///
/// Texts are bytes that end with a zero byte, in no particular encoding: the host passes on the
/// names of layers, surfaces and maps exactly as they stand in files. Two names are the same when
/// their bytes are. Texts to be shown are UTF-8.
///
/// Space. Positions are in metres. X points to the right, Y up, Z forward: the axes are
/// left-handed. The points of a polygon run clockwise for one who looks at its front, the side to
/// which its normal points. Angles are in radians.
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
/// own: a module compares ids for equality and passes them on, and never follows them; they need
/// not be addresses. An id stays valid, and means the same element, from the moment it is handed
/// out until `done` of the edit it belongs to; one from an earlier edit names nothing. Null names
/// nothing.
typedef struct GCorePoint* LWPntID;
typedef struct GCorePolygon* LWPolID;

#ifdef __cplusplus
}
#endif
