// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/util/chain.h"

namespace dastrel {

/// One name of a list of vertex maps, of any type. The text is the host's.
class UV_typ {
public:
    UV_typ() = default;
    UV_typ(const UV_typ&) = delete;
    UV_typ& operator=(const UV_typ&) = delete;
    /// Frees the rest of the chain.
    ~UV_typ() { delete_rest_of_chain(this); }

    const char* name = nullptr;
    UV_typ* next = nullptr; ///< owned
};

} // namespace dastrel
