// SPDX-License-Identifier: MIT
#include "cli/clock.h"

#include "cli/errors.h"
#include "settings/clock.h"
#include "settings/errors.h"

namespace cli {

std::int64_t fix_clock(std::string_view option)
{
    try {
        return settings::fix_clock(option);
    } catch (const settings::WrongSettings& error) {
        throw UsageError(error.what());
    }
}

} // namespace cli
