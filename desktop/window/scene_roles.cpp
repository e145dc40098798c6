// SPDX-License-Identifier: MIT
#include "desktop/window/scene_roles.h"

#include <cstddef>
#include <exception>
#include <system_error>

#include <QSettings>
#include <QVariant>

#include "desktop/text.h"

namespace desktop {

namespace {

constexpr auto scenes_key = "scene roles";
constexpr auto file_key = "file";
constexpr auto names_key = "names";
constexpr auto roles_key = "roles";
constexpr qsizetype most_files = 50;
constexpr std::size_t most_layers = 1000; // the settings are read as a whole at every start

QString key_of(const std::filesystem::path& file)
{
    std::error_code failed;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(file, failed);
    return to_qt(failed ? file : canonical);
}

QVariantList names_of(const mesh::Document& document)
{
    QVariantList names;
    for (const mesh::Layer& layer : document.layers)
        names.append(QByteArray::fromStdString(layer.name)); // need not be UTF-8
    return names;
}

} // namespace

void remember_roles(const std::filesystem::path& file, const mesh::Document& document,
                    const std::vector<modeler::LayerRole>& roles) noexcept
{
    try {
        if (roles.size() > most_layers)
            return;
        QVariantList numbers;
        for (const modeler::LayerRole role : roles)
            numbers.append(static_cast<int>(role));
        const QString key = key_of(file);
        QVariantList scenes{
            QVariantMap{{file_key, key}, {names_key, names_of(document)}, {roles_key, numbers}}};
        QSettings settings;
        for (const QVariant& scene : settings.value(scenes_key).toList())
            if (scene.toMap().value(file_key) != key && scenes.size() < most_files)
                scenes.append(scene);
        settings.setValue(scenes_key, scenes);
    } catch (const std::exception&) {
        return;
    }
}

std::optional<std::vector<modeler::LayerRole>> remembered_roles(const std::filesystem::path& file,
                                                                const mesh::Document& document)
{
    const QString key = key_of(file);
    for (const QVariant& one : QSettings().value(scenes_key).toList()) {
        const QVariantMap scene = one.toMap();
        if (scene.value(file_key) != key)
            continue;
        const QVariantList numbers = scene.value(roles_key).toList();
        if (scene.value(names_key).toList() != names_of(document) ||
            static_cast<std::size_t>(numbers.size()) != document.layers.size())
            return std::nullopt;
        std::vector<modeler::LayerRole> roles;
        for (const QVariant& number : numbers) {
            const int role = number.toInt();
            if (role < 0 || role > static_cast<int>(modeler::LayerRole::shown))
                return std::nullopt;
            roles.push_back(static_cast<modeler::LayerRole>(role));
        }
        return roles;
    }
    return std::nullopt;
}

} // namespace desktop
