// SPDX-License-Identifier: MIT
#pragma once

#include "mesh/document.h"

namespace formats::lwo2 {

/// Calls `visit(chunk)` for every FileChunk of a document, in file order.
template <typename Visit> void for_each_chunk(const mesh::Document& document, Visit visit)
{
    for (const mesh::FileChunk& chunk : document.head)
        visit(chunk);
    for (const mesh::Layer& layer : document.layers)
        for (const mesh::FileChunk& chunk : layer.chunks)
            visit(chunk);
    for (const mesh::FileChunk& chunk : document.tail)
        visit(chunk);
}

} // namespace formats::lwo2
