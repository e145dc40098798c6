// SPDX-License-Identifier: MIT
#include "desktop/window/workspace.h"

#include <algorithm>
#include <functional>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "formats/file_identity.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"
#include "formats/surface_looks.h"
#include "mesh/clone_numbers.h"
#include "mesh/layer_numbers.h"
#include "modeler/clone_layers.h"
#include "modeler/module_search_paths.h"
#include "settings/clock.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t never_saved = ~std::uint64_t{0};
constexpr const char* module_file = "dastrel.p";

modeler::LayerRole first_role(const mesh::Layer& layer, bool first_file)
{
    constexpr unsigned hidden_flag = 1;
    if ((layer.flags & hidden_flag) != 0)
        return modeler::LayerRole::hidden;
    return first_file ? modeler::LayerRole::foreground : modeler::LayerRole::background;
}

/// Makes layers with only clones of earlier runs `shown`, if there is other ground.
void exclude_clones(const mesh::Document& document, std::vector<modeler::LayerRole>& roles)
{
    std::vector<modeler::LayerRole> without = roles;
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] == modeler::LayerRole::foreground &&
            mesh::holds_only_clones(document.layers[i]))
            without[i] = modeler::LayerRole::shown;
    if (std::find(without.begin(), without.end(), modeler::LayerRole::foreground) != without.end())
        roles.swap(without);
}

/// A copy of the document with some of its layers. Layers created by runs are renumbered as if the
/// omitted layers did not exist.
mesh::Document copy_with(const mesh::Document& document, const std::vector<std::size_t>& layers,
                         const std::function<bool(std::size_t)>& is_made)
{
    mesh::Document copy;
    for (const std::size_t layer : layers) {
        mesh::Layer one = document.layers[layer];
        if (is_made(layer))
            one.number = mesh::free_layer_number(copy).value_or(one.number);
        copy.layers.push_back(std::move(one));
    }
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
    clock_ = fmt::format("{}", settings::fix_clock());
    module_ = modeler::Module::load(file);
}

void Workspace::load_module()
{
    std::string looked;
    for (const fs::path& place : modeler::module_search_paths(module_file)) {
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

void Workspace::begin(ReadFile file, std::vector<std::string>& warnings)
{
    std::vector<modeler::LayerRole> roles;
    for (const mesh::Layer& layer : file.document.layers)
        roles.push_back(first_role(layer, true));
    exclude_clones(file.document, roles);
    std::vector<fs::path> files{file.path};
    std::vector<fs::path> layer_files(roles.size(), file.path);
    std::vector<std::string> all_warnings = warnings;
    all_warnings.insert(all_warnings.end(), file.warnings.begin(), file.warnings.end());
    session_.replace(std::move(file.document), std::move(roles));
    warnings.swap(all_warnings);
    saved_state_ = session_.state();
    take_over(std::move(file.path), std::move(files), std::move(layer_files));
}

void Workspace::begin_kept(ReadFile file, const std::vector<modeler::LayerRole>& roles)
{
    std::vector<std::string> ignored; // the file is our own
    begin(std::move(file), ignored);
    path_.clear();
    saved_state_ = never_saved;
    // The number of layers differs if one was too large for a file and was divided.
    if (roles.size() == session_.roles().size())
        for (std::size_t i = 0; i < roles.size(); ++i)
            session_.set_role(i, roles[i]);
}

void Workspace::add(ReadFile file, std::vector<std::string>& warnings)
{
    if (empty())
        return begin(std::move(file), warnings);
    const bool was_modified = modified();
    std::vector<modeler::LayerRole> roles;
    for (const mesh::Layer& layer : file.document.layers)
        roles.push_back(first_role(layer, false));
    std::vector<fs::path> files = files_;
    files.push_back(file.path);
    std::vector<fs::path> layer_files = layer_files_;
    layer_files.resize(session_.document().layers.size()); // those that runs made have no file
    layer_files.resize(layer_files.size() + roles.size(), file.path);
    std::vector<std::string> all_warnings = warnings;
    all_warnings.insert(all_warnings.end(), file.warnings.begin(), file.warnings.end());
    session_.append(roles, [&](mesh::Document& document) {
        formats::append_document(document, std::move(file.document), file.path.stem().string(),
                                 [&](const std::string& text) { all_warnings.push_back(text); });
    });
    warnings.swap(all_warnings);
    saved_state_ = was_modified ? never_saved : session_.state();
    take_over({}, std::move(files), std::move(layer_files));
}

void Workspace::clear()
{
    session_.replace({}, {});
    saved_state_ = session_.state();
    take_over({}, {}, {});
}

/// Replaces the file names and looks after a document was loaded.
void Workspace::take_over(fs::path path, std::vector<fs::path> files,
                          std::vector<fs::path> layer_files) noexcept
{
    path_.swap(path);
    files_.swap(files);
    layer_files_.swap(layer_files);
    try {
        looks_ = formats::surface_looks(session_.document());
    } catch (const std::bad_alloc&) {
        looks_.clear(); // out of memory: show default colours instead of failing
    }
}

void Workspace::write(const fs::path& path, bool foreground_only) const
{
    if (!foreground_only) {
        formats::write_lwo2_file(session_.document(), path);
        return;
    }
    std::vector<std::size_t> layers;
    for (std::size_t i = 0; i < session_.roles().size(); ++i)
        if (session_.roles()[i] == modeler::LayerRole::foreground ||
            (session_.roles()[i] == modeler::LayerRole::shown &&
             mesh::holds_only_clones(session_.document().layers[i])))
            layers.push_back(i);
    const auto is_made = [this](std::size_t layer) { return file_of(layer).empty(); };
    formats::write_lwo2_file(copy_with(session_.document(), layers, is_made), path);
}

void Workspace::saved_as(const fs::path& path)
{
    fs::path file = fs::absolute(path);
    std::vector<fs::path> files{file};
    path_.swap(file);
    files_.swap(files);
    saved_state_ = session_.state();
}

fs::path Workspace::open_file_at(const fs::path& path) const
{
    const auto wanted = formats::identify_file(path);
    const auto is_it = [&](const fs::path& file) {
        return !file.empty() && wanted && formats::identify_file(file) == wanted;
    };
    if (is_it(path_))
        return path_;
    const auto found = std::find_if(layer_files_.begin(), layer_files_.end(), is_it);
    return found == layer_files_.end() ? fs::path() : *found;
}

fs::path Workspace::suggested_file(const fs::path& folder, std::string_view written,
                                   std::string_view ending) const
{
    const fs::path ground = files_.empty() ? fs::path("scene.lwo") : files_.front();
    const fs::path& place = folder.empty() ? ground.parent_path() : folder;
    const std::string name = fmt::format("{}{}", ground.stem().string(), written);
    fs::path file = place / fmt::format("{}{}", name, ending);
    for (int number = 2; !open_file_at(file).empty(); ++number)
        file = place / fmt::format("{}-{}{}", name, number, ending);
    return file;
}

std::string Workspace::layer_title(std::size_t layer) const
{
    const std::string& name = session_.document().layers[layer].name;
    if (!name.empty())
        return fmt::format("layer {} '{}'", layer + 1, name);
    return fmt::format("layer {} of {}", layer + 1, file_of(layer).filename().string());
}

/// Whether the layer is in the same file as a layer of the ground; the file name then does not
/// describe the layer.
bool Workspace::shares_file_with_ground(std::size_t layer) const
{
    for (std::size_t i = 0; i < session_.roles().size(); ++i)
        if (session_.roles()[i] == modeler::LayerRole::foreground && file_of(i) == file_of(layer))
            return true;
    return false;
}

std::vector<std::string> Workspace::models() const
{
    std::vector<std::string> models;
    for (std::size_t i = 0; i < session_.roles().size(); ++i) {
        if (session_.roles()[i] != modeler::LayerRole::background)
            continue;
        std::string name = file_of(i).stem().string();
        if (name.empty() ||
            (shares_file_with_ground(i) && !session_.document().layers[i].name.empty()))
            name = session_.document().layers[i].name;
        if (models.empty() || models.back() != name)
            models.push_back(std::move(name));
    }
    return models;
}

std::string Workspace::clone_layer_name() const
{
    const mesh::Document& document = session_.document();
    return modeler::free_layer_name(modeler::clone_layer_name(models()), document,
                                    document.layers.size());
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

} // namespace desktop
