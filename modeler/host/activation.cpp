// SPDX-License-Identifier: MIT
#include "modeler/host/activation.h"

#include <algorithm>
#include <new>

#include <fmt/format.h>

#include "modeler/host/read_only_data.h"
#include "modeler/host/services.h"

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
    return activation->shield(static_cast<MeshEditOp*>(nullptr),
                              [&] { return activation->begin_edit(); });
}

} // namespace

Activation::Activation(mesh::Document& document, const std::vector<LayerRole>& roles,
                       FrontEnd& front_end, const std::filesystem::path& module_file)
    : document_(document), roles_(roles), front_end_(front_end), module_file_(module_file)
{
    if (running != nullptr)
        throw ModuleError(module_file, "run", "a command is running already; let it end first");
    running = this;
}

Activation::~Activation()
{
    running = nullptr;
    edits_.clear(); // an edit that is still open is dropped: it came after those kept
    for (auto step = kept_.rbegin(); step != kept_.rend(); ++step)
        step->take_back(document_);
}

Activation* Activation::current() noexcept { return running; }

void Activation::call(ActivateFunc* activate) noexcept
{
    try {
        for (const auto memory : read_only_data(reinterpret_cast<const void*>(activate)))
            texts_.add_read_only(memory); // the names that stand in the module's source
        // The descriptor of a class hands its functions over as a plain pointer.
        void* const local = reinterpret_cast<void*>(&begin_edit_now);
        result_.code = activate(mesh_edit_version, &look_up_service, local, nullptr);
    } catch (const std::bad_alloc&) {
        blame("run", "the command ran out of memory; nothing was changed");
    } catch (const std::exception& problem) {
        blame("run", problem.what());
    } catch (...) {
        blame("run", "the command failed with an exception of an unknown kind");
    }
    for (const auto& table : edits_)
        if (const char* const operation = table->edit().failed_in())
            blame_edit(operation);
    if (open_edit() != nullptr)
        edits_.back()->end(false);
}

void Activation::rethrow() const
{
    if (held_)
        std::rethrow_exception(held_);
}

std::vector<UndoStep> Activation::accept() noexcept { return std::exchange(kept_, {}); }

const MeshEdit* Activation::open_edit() const noexcept
{
    if (edits_.empty() || !edits_.back()->edit().open())
        return nullptr;
    return &edits_.back()->edit();
}

MeshEditOp* Activation::begin_edit()
{
    if (open_edit() != nullptr ||
        std::find(roles_.begin(), roles_.end(), LayerRole::foreground) == roles_.end())
        return nullptr;
    edits_.push_back(std::make_unique<EditTable>(document_, roles_, texts_));
    return edits_.back()->operations();
}

void Activation::end_edit(bool keep)
{
    if (keep)
        kept_.reserve(kept_.size() + 1);
    EditTable& table = *edits_.back();
    if (std::optional<UndoStep> step = table.end(keep)) {
        kept_.push_back(std::move(*step));
        catalog_.forget(); // there may be maps that it does not list
        note_kept(table.edit(), kept_.back());
    }
}

void Activation::note_kept(const MeshEdit& edit, const UndoStep& step)
{
    const mesh::Layer& target = document_.layers[edit.target()];
    result_.applied = true;
    result_.points_added += target.points.size() - step.points(edit.target());
    result_.polygons_added += target.polygons.size() - step.polygons(edit.target());
    for (const auto& [layer, number] : edit.written()) {
        const mesh::VertexMap& map = document_.layers[layer].maps[number];
        const bool created = number >= step.maps(layer);
        const auto known = std::find_if(
            result_.maps_written.begin(), result_.maps_written.end(), [&](const WrittenMap& other) {
                return other.type == map.type() && other.name == map.name();
            });
        if (known == result_.maps_written.end())
            result_.maps_written.push_back({map.type(), map.name(), map.dimension(), created});
    }
}

void Activation::blame_edit(const char* operation) noexcept
{
    (void)shield(0, [&] {
        blame("mesh edit", fmt::format("{}: memory ended, or the layer cannot hold more (at most "
                                       "4,294,967,295 points or corners); nothing was changed",
                                       operation));
        return 0;
    });
}

void Activation::hold(std::exception_ptr problem) noexcept
{
    if (!held_)
        held_ = std::move(problem);
}

void Activation::blame(std::string_view step, std::string_view problem) noexcept
{
    if (held_)
        return;
    try {
        throw ModuleError(module_file_, step, problem);
    } catch (...) {
        hold(std::current_exception());
    }
}

} // namespace modeler
