// SPDX-License-Identifier: MIT
#include "desktop/window/scene_warnings.h"

#include <cstddef>

#include "formats/clone_size.h"
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
    for (std::size_t i = 0; i < session.roles().size(); ++i)
        if (session.roles()[i] == modeler::LayerRole::background)
            formats::add_clone_of(session.document().layers[i], clone);
    return modeler::several_models(workspace.models(), clone.points);
}

} // namespace

std::vector<std::string> scene_warnings(const Workspace& workspace)
{
    const mesh::Document& document = workspace.session().document();
    const std::vector<modeler::LayerRole>& roles = workspace.session().roles();
    const auto title = [&](std::size_t layer) { return workspace.layer_title(layer); };
    std::vector<std::string> told = modeler::mesh_warnings(document, roles, title);
    const auto tell = [&](const std::string& sentence, const char* help) {
        if (!sentence.empty())
            told.push_back(sentence + help);
    };
    tell(modeler::earlier_clones(document, roles, title),
         "; select polygons of the ground itself to keep them off");
    if (const auto mismatch = modeler::size_mismatch(document, roles))
        tell(modeler::to_sentence(*mismatch), "");
    tell(several_models(workspace),
         "; to have one or the other, run once for each, with the role of the others 'shown'");
    return told;
}

} // namespace desktop
