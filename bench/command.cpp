// SPDX-License-Identifier: MIT
#include "bench/command.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "bench/silent_front_end.h"
#include "settings/form_filling.h"
#include "settings/given.h"

namespace bench {

namespace {

/// Fills the panel and presses OK.
class Filler : public SilentFrontEnd {
public:
    explicit Filler(const std::string& settings)
        : given_(settings::read_settings_text(settings, "settings"))
    {}

    bool run_panel(modeler::FormPanel& panel) override
    {
        settings::fill_form(panel, given_);
        return true;
    }

private:
    std::vector<settings::GivenSetting> given_;
};

mesh::Document scene(mesh::Layer ground, std::vector<mesh::Layer> model)
{
    mesh::Document document;
    document.layers.push_back(std::move(ground));
    for (mesh::Layer& layer : model) {
        layer.number = static_cast<std::uint16_t>(document.layers.size());
        document.layers.push_back(std::move(layer));
    }
    return document;
}

std::vector<modeler::LayerRole> roles(std::size_t model_layers)
{
    std::vector<modeler::LayerRole> all(1 + model_layers, modeler::LayerRole::background);
    all[0] = modeler::LayerRole::foreground;
    return all;
}

std::vector<mesh::Layer> one(mesh::Layer layer)
{
    std::vector<mesh::Layer> layers;
    layers.push_back(std::move(layer));
    return layers;
}

} // namespace

Command::Command(const std::filesystem::path& module, mesh::Layer ground, mesh::Layer model)
    : Command(module, std::move(ground), one(std::move(model)))
{}

Command::Command(const std::filesystem::path& module, mesh::Layer ground,
                 std::vector<mesh::Layer> model)
    : module_(modeler::Module::load(module)), session_()
{
    const std::size_t model_layers = model.size();
    session_.replace(scene(std::move(ground), std::move(model)), roles(model_layers));
}

modeler::RunResult Command::run(const std::string& settings)
{
    Filler filler(settings);
    return session_.run(module_, "Dastrel", filler);
}

} // namespace bench
