// SPDX-License-Identifier: MIT
#include "bench/command.h"

#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "modeler/front_end.h"
#include "settings/form_filling.h"
#include "settings/given.h"

namespace bench {

namespace {

/// Fills the panel and presses OK.
class Filler : public modeler::FrontEnd {
public:
    explicit Filler(const std::string& settings)
        : given_(settings::read_settings_text(settings, "settings"))
    {}

    void info(std::string_view /*line1*/, std::string_view /*line2*/) override {}
    void error(std::string_view line1, std::string_view /*line2*/) override
    {
        throw std::runtime_error(std::string(line1));
    }
    bool ask(std::string_view /*title*/, std::string_view /*line1*/,
             std::string_view /*line2*/) override
    {
        return true;
    }
    std::unique_ptr<modeler::Progress> begin_progress(std::string_view /*title*/,
                                                      std::string_view /*caption*/) override
    {
        return nullptr;
    }
    bool run_panel(modeler::FormPanel& panel) override
    {
        settings::fill_form(panel, given_);
        return true;
    }

private:
    std::vector<settings::GivenSetting> given_;
};

mesh::Document scene(mesh::Layer ground, mesh::Layer model)
{
    mesh::Document document;
    model.number = 1;
    document.layers.push_back(std::move(ground));
    document.layers.push_back(std::move(model));
    return document;
}

} // namespace

Command::Command(const std::filesystem::path& module, mesh::Layer ground, mesh::Layer model)
    : module_(modeler::Module::load(module)),
      session_(scene(std::move(ground), std::move(model)),
               {modeler::LayerRole::foreground, modeler::LayerRole::background})
{}

modeler::RunResult Command::run(const std::string& settings)
{
    Filler filler(settings);
    return session_.run(module_, "Dastrel", filler);
}

} // namespace bench
