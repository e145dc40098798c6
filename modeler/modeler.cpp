// SPDX-License-Identifier: MIT
#include "modeler/modeler.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "modeler/host/activation.h"
#include "modeler/module_loaded.h"

namespace modeler {

namespace {

void check_roles(const mesh::Document& document, const std::vector<LayerRole>& roles)
{
    if (roles.size() != document.layers.size())
        throw std::invalid_argument(
            fmt::format("{} roles are given for {} layers", roles.size(), document.layers.size()));
}

/// Throws while a command runs, since the document must not change then.
void check_idle(const mesh::Document& document)
{
    Activation* const activation = Activation::current();
    if (activation != nullptr && &activation->document() == &document)
        throw std::logic_error("the document cannot be changed while a command works on it");
}

ModuleError no_server(const Module& module, std::string_view name)
{
    std::string names;
    for (const Server& server : module.servers())
        names +=
            fmt::format("{}{} '{}'", names.empty() ? "" : ", ", server.class_name, server.name);
    return ModuleError(
        module.file(), "server list",
        fmt::format("there is no {} '{}'; there is {}", mesh_edit_class, name, names));
}

} // namespace

Modeler::Modeler(mesh::Document document, std::vector<LayerRole> roles)
    : document_(std::move(document)), roles_(std::move(roles))
{
    check_roles(document_, roles_);
}

void Modeler::replace(mesh::Document document, std::vector<LayerRole> roles)
{
    check_idle(document_);
    check_roles(document, roles);
    undo_.clear();
    redo_.clear();
    document_ = std::move(document);
    roles_ = std::move(roles);
    begin_state();
}

mesh::Document Modeler::release()
{
    check_idle(document_);
    mesh::Document document = std::exchange(document_, mesh::Document());
    undo_.clear();
    redo_.clear();
    roles_.clear();
    begin_state();
    return document;
}

void Modeler::append(const std::vector<LayerRole>& roles,
                     const std::function<void(mesh::Document&)>& append_layers)
{
    check_idle(document_);
    roles_.reserve(roles_.size() + roles.size());
    append_layers(document_);
    roles_.insert(roles_.end(), roles.begin(), roles.end());
    undo_.clear();
    redo_.clear();
    begin_state();
}

void Modeler::set_role(std::size_t layer, LayerRole role)
{
    check_idle(document_);
    roles_.at(layer) = role;
}

void Modeler::select(std::size_t layer, std::size_t polygon, bool on)
{
    check_idle(document_);
    if (layer >= document_.layers.size())
        throw std::out_of_range(fmt::format("there is no layer {}", layer));
    mesh::Polygons& polygons = document_.layers[layer].polygons;
    if (polygon >= polygons.size())
        throw std::out_of_range(fmt::format("there is no polygon {} in layer {}", polygon, layer));
    polygons.select(polygon, on);
}

bool Modeler::enabled(const Server& server) const
{
    if (server.enable_condition != "pol")
        return true;
    for (std::size_t i = 0; i < roles_.size(); ++i)
        if (roles_[i] == LayerRole::foreground && document_.layers[i].polygons.size() > 0)
            return true;
    return false;
}

RunResult Modeler::run(Module& module, std::string_view server, FrontEnd& front_end,
                       const RunOptions& options)
{
    ActivateFunc* const activate = module.loaded_->activation(mesh_edit_class, server);
    if (activate == nullptr)
        throw no_server(module, server);
    try {
        Activation activation(document_, roles_, front_end, module.file(), options);
        activation.call(activate);
        activation.rethrow();
        RunResult result = activation.take_result();
        undo_.reserve(undo_.size() + activation.finished_edits());
        roles_.reserve(document_.layers.size());
        if (result.applied)
            redo_.clear();
        for (UndoStep& step : activation.accept()) {
            undo_.push_back({std::move(step), state_});
            begin_state();
        }
        fit_roles();
        return result;
    } catch (const std::bad_alloc&) {
        throw ModuleError(module.file(), "run", "the host ran out of memory; nothing was changed");
    }
}

void Modeler::undo()
{
    check_idle(document_);
    if (undo_.empty())
        throw std::logic_error("there is no edit to take back");
    redo_.reserve(redo_.size() + 1);
    redo_.push_back({RedoStep(document_, undo_.back().step), state_});
    undo_.back().step.revert(document_);
    fit_roles();
    state_ = undo_.back().state;
    undo_.pop_back();
}

void Modeler::redo()
{
    check_idle(document_);
    if (redo_.empty())
        throw std::logic_error("there is no edit to make again");
    undo_.reserve(undo_.size() + 1);
    roles_.reserve(redo_.back().step.undo().layers());
    redo_.back().step.apply(document_);
    fit_roles();
    undo_.push_back({redo_.back().step.take_undo(), state_});
    state_ = redo_.back().state;
    redo_.pop_back();
}

} // namespace modeler
