// SPDX-License-Identifier: MIT
#include "plugin/host/servmain.h"

namespace dastrel {

void Shutdown(void* /*token*/) {}

} // namespace dastrel
