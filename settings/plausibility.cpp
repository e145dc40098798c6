// SPDX-License-Identifier: MIT
#include "settings/plausibility.h"

#include <cmath>
#include <cstdint>
#include <numbers>

#include <fmt/format.h>

namespace settings {

namespace {

/// For a fraction between 0 and 1 given as percent.
std::string small_percent_warning(double percent)
{
    if (percent <= 0.0 || percent > 1.0)
        return {};
    return fmt::format("was read as {:g} percent; for {:g} percent write {:g}%", percent,
                       percent * 100.0, percent * 100.0);
}

std::string percent_warning(const Setting& setting, double value)
{
    const double percent = value * 100.0;
    if (setting.field == "distribution") {
        constexpr double most = 200.0;
        if (percent > most)
            return fmt::format("was read as {:g} percent of an even spread; no clones can stand "
                               "that far apart, and the run takes longer to find none; write 80% "
                               "for an even spread",
                               percent);
    } else if (setting.field.starts_with("size_var_") && std::fabs(percent) > 100.0) {
        return fmt::format("was read as {:g} percent: sizes from {:g} to {:g} percent, and a clone "
                           "of a size below 0 is turned inside out; write {:g}% or less",
                           percent, 100.0 - std::fabs(percent), 100.0 + std::fabs(percent), 100.0);
    }
    return small_percent_warning(percent);
}

std::string fraction_warning(double value)
{
    if (std::fabs(value) <= 1.0)
        return {};
    const double percent = value * 100.0;
    return fmt::format("was read as {:g} percent: points move to between {:g} and {:g} times their "
                       "distance from the model's origin; for {:g} percent write {:g}%",
                       percent, 1.0 - std::fabs(value), 1.0 + std::fabs(value), value, value);
}

std::string angle_warning(const Setting& setting, double value)
{
    const double degrees = value * 180.0 / std::numbers::pi;
    // A round number of radians was probably meant as degrees.
    const bool round = std::fabs(value * 10.0 - std::round(value * 10.0)) < 1e-9;
    const std::string may_mean =
        round ? fmt::format("; for {0:g} degrees write {0:g}", value) : std::string();
    // No warning for 180 degrees in single precision or computed with 3.1415.
    constexpr double rounding = 1e-3;
    if (setting.field.starts_with("slope_")) {
        if (degrees < -rounding || degrees > 180.0 + rounding)
            return fmt::format("was read as {:.6g} degrees ({:g} radians); slopes lie between 0 "
                               "(level) and 180 (facing down){}",
                               degrees, value, may_mean);
    } else if (std::fabs(degrees) > 360.0 + rounding) {
        return fmt::format("was read as {:.6g} degrees ({:g} radians), more than a whole turn{}",
                           degrees, value, may_mean);
    }
    return {};
}

std::string count_warning(const Setting& setting, std::int32_t value)
{
    if (setting.field == "clone_num" && value < 0)
        return fmt::format("was read as {}: no clones are made", value);
    constexpr std::int32_t most_iterations = 10'000;
    if (setting.field == "iterations" && value > most_iterations)
        return fmt::format("was read as up to {} tries for each clone, which may take long; 15 to "
                           "100 are usual",
                           value);
    return {};
}

} // namespace

std::string implausible(const Setting& setting, const Value& value)
{
    switch (setting.unit) {
    case Unit::percent:
        return percent_warning(setting, std::get<double>(value));
    case Unit::fraction:
        return fraction_warning(std::get<double>(value));
    case Unit::angle:
        return angle_warning(setting, std::get<double>(value));
    case Unit::count:
        return count_warning(setting, std::get<std::int32_t>(value));
    case Unit::on_off:
    case Unit::map:
        break;
    }
    return {};
}

} // namespace settings
