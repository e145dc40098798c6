// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "modeler/modeler.h"

namespace modeler {

/// Message for a run that failed without showing an error: it returned an error code, finished its
/// edit with an error, or never finished it. Empty if the run succeeded (even if it added nothing),
/// showed an error message, or was cancelled in its panel.
[[nodiscard]] std::string run_failure(const RunResult& result);

} // namespace modeler
