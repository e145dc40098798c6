// SPDX-License-Identifier: MIT
#include <cstdint>

#include "plugin/host/servmain.h"

namespace dastrel {

// The token only has to be something: 4 by habit of this module.
void* Startup() { return reinterpret_cast<void*>(std::uintptr_t{4}); }

} // namespace dastrel
