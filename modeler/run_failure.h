// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "modeler/modeler.h"

namespace modeler {

/// Why a run came to nothing although the command showed no error: it returned a code, gave its
/// edit up, or never finished one. A sentence for the user; empty for a run that was sound (also
/// one that added nothing), refused with an error box, or cancelled in a panel.
[[nodiscard]] std::string run_failure(const RunResult& result);

} // namespace modeler
