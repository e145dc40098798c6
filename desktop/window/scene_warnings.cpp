// SPDX-License-Identifier: MIT
#include "desktop/window/scene_warnings.h"

#include <cstddef>

#include <fmt/format.h>

#include "formats/clone_size.h"
#include "mesh/clone_numbers.h"
#include "modeler/background_layers.h"
#include "modeler/clone_layers.h"
#include "modeler/mesh_warnings.h"
#include "modeler/model_size.h"
#include "modeler/several_models.h"

namespace desktop {

namespace {

std::string several_models(const Workspace& workspace)
{
    const modeler::Modeler& session = workspace.session();
    formats::CopiedMesh clone;
    for (const mesh::Layer* const layer :
         modeler::background_layers(session.document(), session.roles()))
        formats::add_clone_of(*layer, clone);
    return modeler::several_models(workspace.models(), clone.points);
}

/// Warning that only clones of earlier runs are visible, but no ground: runs ignore clones.
std::string shown_clones(const Workspace& workspace)
{
    const modeler::Modeler& session = workspace.session();
    constexpr std::size_t most_named = 3;
    std::string layers;
    std::size_t count = 0;
    for (std::size_t i = 0; i < session.roles().size(); ++i) {
        if (session.roles()[i] != modeler::LayerRole::shown ||
            !mesh::holds_clones(session.document().layers[i]))
            continue;
        if (count++ < most_named)
            layers += (layers.empty() ? "" : ", ") + workspace.layer_title(i);
    }
    if (count == 0)
        return {};
    if (count > most_named)
        layers += fmt::format(" and {} more", count - most_named);
    return fmt::format("there are clones of an earlier run ({}) that are shown only: new clones "
                       "may stand in them, and with the same settings they have the same places; "
                       "change Random Seed for others",
                       layers);
}

/// Lists the layers with a role, for messages.
std::string layers_in(const Workspace& workspace, modeler::LayerRole role)
{
    std::string layers;
    const std::vector<modeler::LayerRole>& roles = workspace.session().roles();
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] == role)
            layers += (layers.empty() ? "" : ", ") + workspace.layer_title(i);
    return layers;
}

/// Advice if the sizes of ground and model would fit after swapping their roles.
std::string swap_advice(const Workspace& workspace)
{
    std::vector<modeler::LayerRole> swapped = workspace.session().roles();
    for (modeler::LayerRole& role : swapped) {
        if (role == modeler::LayerRole::foreground)
            role = modeler::LayerRole::background;
        else if (role == modeler::LayerRole::background)
            role = modeler::LayerRole::foreground;
    }
    if (modeler::size_mismatch(workspace.session().document(), swapped))
        return {};
    return fmt::format(
        "; or, if the files were opened in the wrong order, cancel and press Ctrl+5, "
        "which makes {} the ground and what is the ground now the model",
        layers_in(workspace, modeler::LayerRole::background));
}

} // namespace

std::vector<std::string> scene_warnings(const Workspace& workspace)
{
    const mesh::Document& document = workspace.session().document();
    const std::vector<modeler::LayerRole>& roles = workspace.session().roles();
    const auto title = [&](std::size_t layer) { return workspace.layer_title(layer); };
    std::vector<std::string> sentences = modeler::mesh_warnings(document, roles, title);
    const auto add = [&](const std::string& sentence, const std::string& help) {
        if (!sentence.empty())
            sentences.push_back(sentence + help);
    };
    add(modeler::earlier_clones(document, roles, title),
        "; select polygons of the ground itself to keep them off");
    add(shown_clones(workspace), "");
    if (const auto mismatch = modeler::size_mismatch(document, roles))
        add(modeler::to_sentence(*mismatch), swap_advice(workspace));
    add(several_models(workspace),
        "; to have one or the other, run once for each, with the role of the others 'shown'");
    return sentences;
}

std::string missing_model(const Workspace& workspace)
{
    const mesh::Document& document = workspace.session().document();
    const std::vector<modeler::LayerRole>& roles = workspace.session().roles();
    std::size_t with_polygons = 0;
    std::size_t proposed = roles.size();
    for (std::size_t i = 0; i < roles.size(); ++i) {
        if (document.layers[i].polygons.size() == 0)
            continue;
        if (roles[i] == modeler::LayerRole::background)
            return {};
        if (mesh::holds_only_clones(document.layers[i]))
            continue;
        ++with_polygons;
        proposed = i;
    }
    if (with_polygons < 2)
        return "There is nothing to clone in this scene: add the file of what is to be cloned "
               "(File > Add, Ctrl+Shift+O).";
    return fmt::format("No layer with polygons has the role background, so there is nothing to "
                       "clone: choose the layer that is to be cloned, such as {}, in the list of "
                       "layers and press Ctrl+2.",
                       workspace.layer_title(proposed));
}

} // namespace desktop
