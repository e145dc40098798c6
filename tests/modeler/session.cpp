// SPDX-License-Identifier: MIT
#include "tests/modeler/session.h"

#include <array>
#include <map>
#include <utility>

#include "tests/modeler/modules/script.h"

namespace {

session::Command current_command;

} // namespace

extern "C" __attribute__((visibility("default"))) int script_activate(long, GlobalFunc* global,
                                                                      void* local, void*)
{
    return current_command(global, reinterpret_cast<MeshEditBegin*>(local));
}

extern "C" __attribute__((visibility("default"))) void script_event(const char* what, void* token)
{
    session::module_events().emplace_back(what);
    session::module_token(what) = token;
}

namespace session {

namespace {

class LoggedProgress : public modeler::Progress {
public:
    explicit LoggedProgress(LoggingFrontEnd& owner) : owner_(owner) {}
    ~LoggedProgress() override { owner_.log.emplace_back("progress released"); }
    void start(int total) override { owner_.log.push_back("start " + std::to_string(total)); }
    bool step(int steps) override
    {
        owner_.log.push_back("step " + std::to_string(steps));
        return ++steps_ >= owner_.stop_at_step;
    }
    void finish() override { owner_.log.emplace_back("finish"); }

private:
    LoggingFrontEnd& owner_;
    int steps_ = 0;
};

std::string joined(std::string_view kind, std::string_view a, std::string_view b)
{
    std::string line(kind);
    line.append(": ").append(a);
    if (!b.empty())
        line.append(" / ").append(b);
    return line;
}

void set(mesh::Layer& layer, mesh::FourCC type, const char* name, std::vector<float> value,
         std::initializer_list<std::uint32_t> points)
{
    if (layer.find_map(type, name) == nullptr)
        layer.maps.emplace_back(type, name, value.size());
    for (const std::uint32_t point : points) {
        layer.find_map(type, name)->set(point, value);
        value[0] += 1.0f;
    }
}

void add(mesh::Document& document, mesh::Layer& layer, mesh::FourCC type,
         std::vector<std::uint32_t> points, const char* surface)
{
    layer.polygons.add(type, points);
    layer.polygons.set_surface(layer.polygons.size() - 1, document.tags.intern(surface));
}

} // namespace

void LoggingFrontEnd::info(std::string_view line1, std::string_view line2)
{
    log.push_back(joined("info", line1, line2));
    if (on_message)
        on_message();
}

void LoggingFrontEnd::error(std::string_view line1, std::string_view line2)
{
    log.push_back(joined("error", line1, line2));
    if (on_message)
        on_message();
}

bool LoggingFrontEnd::ask(std::string_view title, std::string_view line1, std::string_view line2)
{
    log.push_back(joined("ask " + std::string(title), line1, line2));
    return answer;
}

std::unique_ptr<modeler::Progress> LoggingFrontEnd::begin_progress(std::string_view title,
                                                                   std::string_view caption)
{
    log.push_back(joined("progress", title, caption));
    return shows_progress ? std::make_unique<LoggedProgress>(*this) : nullptr;
}

bool LoggingFrontEnd::run_panel(modeler::FormPanel& panel)
{
    log.push_back("panel: " + panel.form().title);
    return on_panel && on_panel(panel);
}

modeler::RunResult run(modeler::Modeler& host, modeler::FrontEnd& front_end, Command command,
                       const modeler::RunOptions& options)
{
    modeler::Module module = modeler::Module::load(module_file("script"));
    const Command outer = std::exchange(current_command, std::move(command));
    struct Restore {
        const Command& outer;
        ~Restore() { current_command = outer; }
    } restore{outer};
    return host.run(module, "Script", front_end, options);
}

modeler::RunResult run(modeler::Modeler& host, Command command)
{
    LoggingFrontEnd front_end;
    return run(host, front_end, std::move(command));
}

std::vector<std::string>& module_events()
{
    static std::vector<std::string> events;
    return events;
}

void*& module_token(const std::string& event)
{
    static std::map<std::string, void*> tokens;
    return tokens[event];
}

std::filesystem::path module_file(const std::string& name)
{
    return std::filesystem::path(DASTREL_TEST_MODULES) / (name + ".p");
}

mesh::Document sample_document()
{
    constexpr mesh::FourCC part = mesh::fourcc("PART");
    mesh::Document document;
    document.layers.resize(5);

    mesh::Layer& ground = document.layers[0];
    ground.name = "ground";
    for (const mesh::Vec3 p : {mesh::Vec3{0, 0, 0}, {0, 0, 2}, {2, 0, 2}, {2, 0, 0}, {9, 9, 9}})
        ground.points.push_back(p);
    add(document, ground, mesh::polygon_face, {0, 1, 2}, "Grass");
    add(document, ground, mesh::polygon_ptch, {0, 1, 2, 3}, "Rock");
    add(document, ground, mesh::polygon_face, {0, 2, 3}, "Grass");
    ground.polygons.set_tag(part, 0, document.tags.append("left"));
    ground.polygons.set_flags(0, 5);
    set(ground, mesh::map_wght, "Height", {0.5f}, {0, 2});
    set(ground, mesh::map_txuv, "Tex", {0.25f, 0.75f}, {0, 1, 2, 3});
    ground.find_map(mesh::map_txuv, "Tex")->edit_corners().polygons.push_back(1);
    ground.find_map(mesh::map_txuv, "Tex")->edit_corners().points.push_back(2);
    ground.find_map(mesh::map_txuv, "Tex")->edit_corners().values.append(std::array{0.5f, 1.0f});

    mesh::Layer& tree = document.layers[1];
    tree.name = "tree";
    tree.number = 1;
    for (const mesh::Vec3 p : {mesh::Vec3{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {1, 1, 1}})
        tree.points.push_back(p);
    add(document, tree, mesh::polygon_face, {0, 1, 2}, "Leaf");
    add(document, tree, mesh::polygon_curv, {2, 3}, "Bark");
    tree.polygons.set_tag(mesh::fourcc("COLR"), 0, document.tags.append("green"));
    tree.polygons.set_tag(part, 1, document.tags.append("twig"));
    tree.polygons.set_flags(0, 3);
    set(tree, mesh::map_morf, "Smile", {0.125f, -1.0f, 2.0f}, {1});
    set(tree, mesh::map_wght, "Sway", {0.1f}, {0, 1, 3});
    set(tree, mesh::map_wght, "Height", {8.0f}, {0});
    tree.maps.emplace_back(mesh::fourcc("PICK"), "Set", 0u);
    tree.maps.back().set(2, {});

    mesh::Layer& hidden = document.layers[2];
    hidden.number = 2;
    for (const mesh::Vec3 p : {mesh::Vec3{5, 0, 0}, {5, 1, 0}, {6, 0, 0}})
        hidden.points.push_back(p);
    add(document, hidden, mesh::polygon_face, {0, 1, 2}, "Grass");
    set(hidden, mesh::map_wght, "Hidden", {1.0f}, {0});

    mesh::Layer& path = document.layers[3];
    path.number = 3;
    for (const mesh::Vec3 p : {mesh::Vec3{3, 0, 0}, {3, 0, 1}, {4, 0, 0}})
        path.points.push_back(p);
    add(document, path, mesh::polygon_face, {0, 1, 2}, "Path");
    set(path, mesh::map_wght, "Worn", {0.5f}, {1});
    set(path, mesh::map_wght, "Height", {3.0f}, {1});

    mesh::Layer& dust = document.layers[4];
    dust.number = 4;
    dust.points.push_back({7, 7, 7});
    return document;
}

std::vector<modeler::LayerRole> sample_roles()
{
    using modeler::LayerRole;
    return {LayerRole::foreground, LayerRole::background, LayerRole::hidden, LayerRole::foreground,
            LayerRole::background};
}

modeler::Modeler sample_host() { return modeler::Modeler(sample_document(), sample_roles()); }

std::vector<LWPolID> scanned_polygons(MeshEditOp* edit, int layers)
{
    std::vector<LWPolID> ids;
    edit->polyScan(
        edit->state,
        [](void* data, const EDPolygonInfo* polygon) {
            static_cast<std::vector<LWPolID>*>(data)->push_back(polygon->pol);
            return int{EDERR_NONE};
        },
        &ids, layers);
    return ids;
}

std::vector<LWPntID> scanned_points(MeshEditOp* edit, LWPolID polygon)
{
    const EDPolygonInfo* const info = edit->polyInfo(edit->state, polygon);
    if (info == nullptr)
        return {};
    return {info->points, info->points + info->numPnts};
}

} // namespace session
