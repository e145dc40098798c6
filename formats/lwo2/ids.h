// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>

#include "formats/lwo2/capacity.h"
#include "mesh/fourcc.h"

namespace formats::lwo2 {

using mesh::FourCC;
using mesh::fourcc;

constexpr FourCC id_form = fourcc("FORM");
constexpr FourCC id_lwo2 = fourcc("LWO2");
constexpr FourCC id_tags = fourcc("TAGS");
constexpr FourCC id_layr = fourcc("LAYR");
constexpr FourCC id_pnts = fourcc("PNTS");
constexpr FourCC id_bbox = fourcc("BBOX");
constexpr FourCC id_pols = fourcc("POLS");
constexpr FourCC id_ptag = fourcc("PTAG");
constexpr FourCC id_vmap = fourcc("VMAP");
constexpr FourCC id_vmad = fourcc("VMAD");
constexpr FourCC id_vmpa = fourcc("VMPA");
constexpr FourCC id_surf = fourcc("SURF");
constexpr FourCC id_clip = fourcc("CLIP");
constexpr FourCC id_envl = fourcc("ENVL");

/// Whether chunks of this id apply to the whole file, independent of their position.
constexpr bool is_of_whole_file(FourCC id) noexcept
{
    constexpr std::array ids{id_tags,        id_surf,        id_clip,        id_envl,
                             fourcc("DESC"), fourcc("TEXT"), fourcc("ICON"), fourcc("AUTH")};
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

/// Indices below this are encoded in two bytes, others in four.
constexpr std::uint32_t first_long_index = 0xFF00;

constexpr std::uint16_t no_parent = 0xFFFF;

} // namespace formats::lwo2
