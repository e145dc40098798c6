// SPDX-License-Identifier: MIT
#include "desktop/window/workspace.h"

#include <cstdlib>
#include <ctime>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"
#include "formats/surface_looks.h"
#include "modeler/module_places.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr const char* module_file = "dastrel.p";
constexpr const char* clock_variable = "DASTREL_CLOCK";

/// Fixes the clock that modules start their samplers from, so that it can be told.
std::string fixed_clock()
{
    const char* const set = std::getenv(clock_variable);
    if (set != nullptr && *set != '\0')
        return set;
    std::string now = fmt::format("{}", static_cast<std::uint32_t>(std::time(nullptr)));
    ::setenv(clock_variable, now.c_str(), 1);
    return now;
}

modeler::LayerRole first_role(const mesh::Layer& layer, bool first_file)
{
    constexpr unsigned hidden_flag = 1;
    if ((layer.flags & hidden_flag) != 0)
        return modeler::LayerRole::hidden;
    return first_file ? modeler::LayerRole::foreground : modeler::LayerRole::background;
}

/// The document with some of its layers.
mesh::Document copy_with(const mesh::Document& document, const std::vector<std::size_t>& layers)
{
    mesh::Document copy;
    for (const std::size_t layer : layers)
        copy.layers.push_back(document.layers[layer]);
    for (mesh::TagIndex tag = 0; tag < document.tags.size(); ++tag)
        copy.tags.append(document.tags[tag]);
    copy.head = document.head;
    copy.tail = document.tail;
    copy.file_tags = document.file_tags;
    return copy;
}

} // namespace

void Workspace::load_module(const fs::path& file)
{
    clock_ = fixed_clock();
    module_ = modeler::Module::load(file);
}

void Workspace::load_module()
{
    std::string looked;
    for (const fs::path& place : modeler::module_places(module_file)) {
        std::error_code ignored;
        if (fs::is_regular_file(place, ignored))
            return load_module(place);
        looked += "\n" + place.string();
    }
    throw std::runtime_error(fmt::format("the module {} was not found, so there is no command to "
                                         "run; it was looked for at{}",
                                         module_file, looked));
}

Workspace::ReadFile Workspace::read(const fs::path& path)
{
    ReadFile file;
    file.path = fs::absolute(path);
    file.document = formats::read_lwo2_file(path, [&](const std::string& text) {
        file.warnings.push_back(fmt::format("{}: {}", path.filename().string(), text));
    });
    return file;
}

void Workspace::add(ReadFile file, std::vector<std::string>& warnings)
{
    warnings.insert(warnings.end(), file.warnings.begin(), file.warnings.end());
    const bool first = empty();
    std::vector<modeler::LayerRole> roles = session_.roles();
    for (const mesh::Layer& layer : file.document.layers)
        roles.push_back(first_role(layer, first));
    before_edits_.clear();
    after_undos_.clear();
    if (first) {
        session_.replace(std::move(file.document), roles);
        path_ = file.path;
        saved_state_ = state_ = ++last_state_;
    } else {
        const std::vector<modeler::LayerRole> old_roles = session_.roles();
        mesh::Document document = session_.release();
        try {
            formats::append_document(document, std::move(file.document), file.path.stem().string(),
                                     [&](const std::string& text) { warnings.push_back(text); });
        } catch (const formats::LimitError&) {
            session_.replace(std::move(document), old_roles);
            throw;
        }
        session_.replace(std::move(document), roles);
        path_.clear();
        state_ = ++last_state_;
    }
    files_.push_back(file.path);
    layer_files_.resize(session_.document().layers.size(), file.path);
    renew_looks();
}

void Workspace::clear()
{
    session_.replace({}, {});
    path_.clear();
    files_.clear();
    layer_files_.clear();
    looks_.clear();
    before_edits_.clear();
    after_undos_.clear();
    saved_state_ = state_ = ++last_state_;
}

void Workspace::renew_looks() { looks_ = formats::surface_looks(session_.document()); }

void Workspace::write(const fs::path& path, bool foreground_only) const
{
    if (!foreground_only) {
        formats::write_lwo2_file(session_.document(), path);
        return;
    }
    std::vector<std::size_t> layers;
    for (std::size_t i = 0; i < session_.roles().size(); ++i)
        if (session_.roles()[i] == modeler::LayerRole::foreground)
            layers.push_back(i);
    formats::write_lwo2_file(copy_with(session_.document(), layers), path);
}

void Workspace::saved_as(const fs::path& path)
{
    path_ = fs::absolute(path);
    files_ = {path_};
    saved_state_ = state_;
}

std::string Workspace::title() const
{
    if (!path_.empty())
        return path_.filename().string();
    std::string names;
    for (const fs::path& file : files_)
        names += (names.empty() ? "" : " + ") + file.filename().string();
    return names;
}

void Workspace::note_edits()
{
    if (before_edits_.size() == session_.undo_steps())
        return;
    ++runs_;
    after_undos_.clear();
    while (before_edits_.size() < session_.undo_steps()) {
        before_edits_.push_back(state_);
        state_ = ++last_state_;
    }
}

void Workspace::undo()
{
    session_.undo();
    after_undos_.push_back(state_);
    state_ = before_edits_.back();
    before_edits_.pop_back();
}

void Workspace::redo()
{
    session_.redo();
    before_edits_.push_back(state_);
    state_ = after_undos_.back();
    after_undos_.pop_back();
}

} // namespace desktop
