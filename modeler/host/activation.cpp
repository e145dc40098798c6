// SPDX-License-Identifier: MIT
#include "modeler/host/activation.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>

#include <fmt/format.h>

#include "mesh/layer_numbers.h"
#include "modeler/host/read_only_data.h"
#include "modeler/host/services.h"
#include "modeler/module_call.h"

namespace modeler {

namespace {

/// The host's interface version of the class "MeshDataEdit".
constexpr long mesh_edit_version = 1;

thread_local Activation* running = nullptr;

MeshEditOp* begin_edit_now(int point_buffer, int polygon_buffer, int selection_mode) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr || point_buffer < 0 || polygon_buffer < 0 ||
        selection_mode != OPSEL_USER)
        return nullptr;
    return activation->guarded(static_cast<MeshEditOp*>(nullptr),
                               [&] { return activation->begin_edit(); });
}

} // namespace

Activation::Activation(mesh::Document& document, const std::vector<LayerRole>& roles,
                       FrontEnd& front_end, const std::filesystem::path& module_file,
                       const RunOptions& options)
    : document_(document), roles_(roles), front_end_(front_end), module_file_(module_file),
      options_(options), given_layers_(document.layers.size())
{
    if (running != nullptr)
        throw ModuleError(module_file, "run", "a command is running already; let it end first");
    running = this;
}

Activation::~Activation()
{
    running = nullptr;
    edits_.clear(); // rolls back an open edit first: it is newer than the committed ones
    for (auto step = committed_.rbegin(); step != committed_.rend(); ++step)
        step->revert(document_);
}

Activation* Activation::current() noexcept { return running; }

void Activation::call(ActivateFunc* activate) noexcept
{
    try {
        for (const auto memory : read_only_data(reinterpret_cast<const void*>(activate)))
            strings_.add_read_only(memory); // the module's string literals
        // The interface of a server class is passed as a void pointer.
        void* const local = reinterpret_cast<void*>(&begin_edit_now);
        const ModuleCall call(module_file_, "run");
        result_.code = activate(mesh_edit_version, &look_up_service, local, nullptr);
    } catch (const std::bad_alloc&) {
        capture_error("run", "the command ran out of memory; nothing was changed");
    } catch (const std::exception& problem) {
        capture_error("run", problem.what());
    } catch (...) {
        capture_error("run", "the command failed with an exception of an unknown kind");
    }
    for (const auto& table : edits_)
        if (table->edit().failed_in() != nullptr)
            capture_edit_error(table->edit());
    if (open_edit() != nullptr)
        edits_.back()->end(false);
}

void Activation::rethrow() const
{
    if (exception_)
        std::rethrow_exception(exception_);
}

std::vector<UndoStep> Activation::accept() noexcept { return std::exchange(committed_, {}); }

const MeshEdit* Activation::open_edit() const noexcept
{
    if (edits_.empty() || !edits_.back()->edit().open())
        return nullptr;
    return &edits_.back()->edit();
}

MeshEdit::Target Activation::edit_target()
{
    const auto first = std::find(roles_.begin(), roles_.end(), LayerRole::foreground);
    const auto ground = static_cast<std::uint32_t>(first - roles_.begin());
    if (options_.own_layer.empty())
        return {ground, false};
    if (document_.layers.size() > given_layers_) // created by an earlier, committed edit
        return {static_cast<std::uint32_t>(given_layers_), false};
    roles_.resize(given_layers_); // a rollback of the last edit may have removed its layer
    roles_.reserve(given_layers_ + 1);
    const std::optional<std::uint16_t> number = mesh::free_layer_number(document_);
    if (!number)
        throw ModuleError(module_file_, "run",
                          "all layer numbers are taken, and there is none for a layer of the "
                          "clones' own; join layers, or let the clones go into the ground's layer");
    mesh::Layer layer;
    layer.name = options_.own_layer;
    layer.number = *number;
    document_.layers.push_back(std::move(layer));
    roles_.push_back(LayerRole::foreground);
    return {static_cast<std::uint32_t>(given_layers_), true, ground,
            options_.wants_own_layer ? &options_.wants_own_layer : nullptr};
}

MeshEditOp* Activation::begin_edit()
{
    if (open_edit() != nullptr ||
        std::find(roles_.begin(), roles_.end(), LayerRole::foreground) == roles_.end())
        return nullptr;
    edits_.reserve(edits_.size() + 1);
    const MeshEdit::Target target = edit_target();
    try {
        edits_.push_back(std::make_unique<EditTable>(document_, roles_, target, strings_));
    } catch (...) {
        if (target.is_new && document_.layers.size() > given_layers_)
            document_.layers.pop_back();
        throw;
    }
    result_.last_edit = EditEnd::left_open;
    return edits_.back()->operations();
}

void Activation::end_edit(int error)
{
    const bool keep = error == EDERR_NONE;
    result_.last_edit = keep ? EditEnd::finished : EditEnd::with_error;
    result_.edit_error = error;
    if (keep)
        committed_.reserve(committed_.size() + 1);
    EditTable& table = *edits_.back();
    if (std::optional<UndoStep> step = table.end(keep)) {
        committed_.push_back(std::move(*step));
        catalog_.forget(); // there may be maps that it does not list
        record_commit(table.edit(), committed_.back());
    }
}

void Activation::record_commit(const MeshEdit& edit, const UndoStep& step)
{
    const mesh::Layer& target = document_.layers[edit.target()];
    result_.applied = true;
    result_.points_added += target.points.size() - step.points(edit.target());
    result_.polygons_added += target.polygons.size() - step.polygons(edit.target());
    for (const auto& [layer, number] : edit.written()) {
        const mesh::VertexMap& map = document_.layers[layer].maps[number];
        const bool created = number >= step.maps(layer);
        if (written_.emplace(map.type(), map.name()).second)
            result_.maps_written.push_back({map.type(), map.name(), map.dimension(), created});
    }
}

void Activation::capture_edit_error(const MeshEdit& edit) noexcept
{
    (void)guarded(0, [&] {
        if (const auto type = edit.refused_type())
            capture_error("mesh edit",
                          fmt::format("{}: no file can hold polygons of the type {}: a type "
                                      "is four printable characters, such as FACE; nothing "
                                      "was changed",
                                      edit.failed_in(), mesh::to_text(*type)));
        else
            capture_error(
                "mesh edit",
                fmt::format("{}: memory ended, or the layer cannot hold more (at most "
                            "4,294,967,295 points or corners, 65,536 types of polygons); nothing "
                            "was changed",
                            edit.failed_in()));
        return 0;
    });
}

void Activation::capture(std::exception_ptr problem) noexcept
{
    if (!exception_)
        exception_ = std::move(problem);
}

void Activation::capture_error(std::string_view step, std::string_view problem) noexcept
{
    if (exception_)
        return;
    try {
        throw ModuleError(module_file_, step, problem);
    } catch (...) {
        capture(std::current_exception());
    }
}

} // namespace modeler
