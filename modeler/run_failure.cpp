// SPDX-License-Identifier: MIT
#include "modeler/run_failure.h"

#include <fmt/format.h>

namespace modeler {

std::string run_failure(const RunResult& result)
{
    if (!result.errors.empty() || result.panel_cancelled)
        return {};
    if (result.code != 0)
        return fmt::format("the command ended with code {}", result.code);
    switch (result.last_edit) {
    case EditEnd::never_begun:
        return "the command ended without doing anything (it began no edit)";
    case EditEnd::left_open:
        return "the command ended without finishing its edit, which was dropped";
    case EditEnd::with_error:
        return fmt::format("the command gave its edit up with error {}", result.edit_error);
    case EditEnd::finished:
        break;
    }
    return {};
}

} // namespace modeler
