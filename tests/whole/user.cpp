// SPDX-License-Identifier: MIT
#include "tests/whole/user.h"

#include <cstdint>
#include <stdexcept>

namespace whole {

namespace {

std::string both(std::string_view line1, std::string_view line2)
{
    return std::string(line1) + "\n" + std::string(line2);
}

/// Writes down each call of a progress display.
class WrittenProgress : public modeler::Progress {
public:
    explicit WrittenProgress(std::vector<std::string>& log) : log_(log) {}

    void start(int total) override { log_.push_back("start " + std::to_string(total)); }
    [[nodiscard]] bool step(int steps) override
    {
        log_.push_back("step " + std::to_string(steps));
        return true; // the user wants to stop, and is not heard
    }
    void finish() override { log_.emplace_back("finish"); }

private:
    std::vector<std::string>& log_;
};

/// Calls `visit` with the label of each control that holds a setting, and the setting.
template <typename Settings, typename Visit> void for_each_setting(Settings& s, Visit visit)
{
    visit("Number of Clones", s.clone_num);
    visit("Independent Sizes", s.size_indep);
    visit("Size Variations", s.size_var_x);
    visit("Y", s.size_var_y);
    visit("Z", s.size_var_z);
    visit("Size WeightMap", s.size_wg);
    visit("Size WeightMap Influence", s.size_wg_influence);
    visit("Size depends on Poly Area", s.size_poly_area);
    visit("Dependence Power", s.dep_power);
    visit("Density WeightMap", s.density_wg);
    visit("Random rotation H Min", s.h_min);
    visit("H Max", s.h_max);
    visit("P Min", s.p_min);
    visit("P Max", s.p_max);
    visit("B Min", s.b_min);
    visit("B Max", s.b_max);
    visit("H Align with normals", s.h_align);
    visit("P Align with normals", s.p_align);
    visit("Jitter Cloned points", s.jitter);
    visit("Slope Angle Limits", s.slope_limits);
    visit("Min Slope Angle", s.slope_min);
    visit("Max Slope Angle", s.slope_max);
    visit("Distribution", s.distribution);
    visit("Iterations", s.iterations);
    visit("Random Seed", s.seed);
    visit("Auto morph maps", s.auto_morph_maps);
    visit("P angle weightmap", s.p_angle_wg);
    visit("Absolute", s.p_absolute);
}

const modeler::Control& control_of(const modeler::FormPanel& panel, std::string_view label)
{
    const modeler::Control* const control = panel.find(label);
    if (control == nullptr)
        throw std::logic_error("the panel has no control '" + std::string(label) + "'");
    return *control;
}

void take(const modeler::ControlValue& value, std::int32_t& setting)
{
    setting = std::get<int>(value);
}

void take(const modeler::ControlValue& value, double& setting)
{
    setting = std::get<double>(value);
}

} // namespace

void User::info(std::string_view line1, std::string_view line2)
{
    informed.push_back(both(line1, line2));
}

void User::error(std::string_view line1, std::string_view line2)
{
    warned.push_back(both(line1, line2));
}

bool User::ask(std::string_view /*title*/, std::string_view /*line1*/, std::string_view /*line2*/)
{
    return true;
}

std::unique_ptr<modeler::Progress> User::begin_progress(std::string_view title,
                                                        std::string_view caption)
{
    progress.push_back(std::string(title) + ": " + std::string(caption));
    return std::make_unique<WrittenProgress>(progress);
}

bool User::run_panel(modeler::FormPanel& panel)
{
    before = shown_settings(panel);
    return in_panel ? in_panel(panel) : true;
}

literal::Settings shown_settings(const modeler::FormPanel& panel)
{
    literal::Settings settings;
    for_each_setting(settings, [&panel](std::string_view label, auto& setting) {
        take(control_of(panel, label).value, setting);
    });
    return settings;
}

void fill(modeler::FormPanel& panel, const literal::Settings& settings)
{
    for_each_setting(settings, [&panel](std::string_view label, const auto& setting) {
        const modeler::Control& control = control_of(panel, label);
        const modeler::ControlValue value = setting;
        if (control.value != value)
            panel.fill(control.id, value);
    });
}

modeler::ControlId id_of(const modeler::FormPanel& panel, std::string_view label)
{
    return control_of(panel, label).id;
}

} // namespace whole
