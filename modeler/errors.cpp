// SPDX-License-Identifier: MIT
#include "modeler/errors.h"

#include <fmt/format.h>

namespace modeler {

ModuleError::ModuleError(const std::filesystem::path& file, std::string_view step,
                         std::string_view problem)
    : std::runtime_error(fmt::format("{}: {}: {}", file.string(), step, problem)), file_(file),
      step_(step)
{}

} // namespace modeler
