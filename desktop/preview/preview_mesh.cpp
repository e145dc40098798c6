// SPDX-License-Identifier: MIT
#include "desktop/preview/preview_mesh.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <unordered_map>

#include <unistd.h>

namespace desktop {

namespace {

/// Serialises values in their memory representation, since both processes run the same program.
class Writer {
public:
    explicit Writer(int file) : file_(file) {}

    template <typename T> void put(const T& value) { bytes(&value, sizeof value); }

    void put(std::string_view text)
    {
        put(std::uint64_t{text.size()});
        bytes(text.data(), text.size());
    }

    template <typename T> void put_all(std::span<const T> values)
    {
        put(std::uint64_t{values.size()});
        bytes(values.data(), values.size_bytes());
    }

    void flush()
    {
        const std::byte* next = held_.data();
        std::size_t left = held_.size();
        while (left > 0) {
            const ssize_t written = ::write(file_, next, left);
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                throw std::system_error(errno, std::generic_category());
            next += written;
            left -= static_cast<std::size_t>(written);
        }
        held_.truncate(0);
    }

private:
    void bytes(const void* data, std::size_t size)
    {
        constexpr std::size_t block = std::size_t{1} << 20;
        held_.append({static_cast<const std::byte*>(data), size});
        if (held_.size() >= block)
            flush();
    }

    int file_;
    mesh::Buffer<std::byte> held_;
};

class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) : left_(bytes) {}

    template <typename T> [[nodiscard]] T get()
    {
        T value{};
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }

    [[nodiscard]] std::string text()
    {
        const std::span<const std::byte> bytes = take(get<std::uint64_t>());
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    template <typename T> [[nodiscard]] mesh::Buffer<T> all()
    {
        const auto count = get<std::uint64_t>();
        if (count > left_.size() / sizeof(T))
            throw std::runtime_error("the preview broke off");
        mesh::Buffer<T> values;
        values.resize(count);
        const std::span<const std::byte> bytes = take(count * sizeof(T));
        if (count > 0)
            std::memcpy(static_cast<void*>(values.data()), bytes.data(), bytes.size());
        return values;
    }

private:
    [[nodiscard]] std::span<const std::byte> take(std::size_t size)
    {
        if (size > left_.size())
            throw std::runtime_error("the preview broke off");
        const std::span<const std::byte> taken = left_.first(size);
        left_ = left_.subspan(size);
        return taken;
    }

    std::span<const std::byte> left_;
};

/// Serialises the added elements of a layer, with point indices relative to the written points.
struct Gained {
    mesh::Buffer<mesh::Vec3> points;
    mesh::Buffer<mesh::FourCC> types;
    mesh::Buffer<std::uint32_t> counts;
    mesh::Buffer<std::uint32_t> corners;
    mesh::Buffer<mesh::TagIndex> surfaces;
};

Gained gained(const mesh::Layer& layer, const LayerCount& before)
{
    Gained added;
    added.points.append(layer.points.span().subspan(before.points));
    std::unordered_map<std::uint32_t, std::uint32_t> older;
    for (std::size_t i = before.polygons; i < layer.polygons.size(); ++i) {
        const std::span<const std::uint32_t> corners = layer.polygons.points(i);
        added.types.push_back(layer.polygons.type(i));
        added.counts.push_back(static_cast<std::uint32_t>(corners.size()));
        added.surfaces.push_back(layer.polygons.surface(i));
        for (const std::uint32_t point : corners) {
            if (point >= before.points) {
                added.corners.push_back(point - static_cast<std::uint32_t>(before.points));
                continue;
            }
            const auto [place, fresh] =
                older.emplace(point, static_cast<std::uint32_t>(added.points.size()));
            if (fresh)
                added.points.push_back(layer.points[point]);
            added.corners.push_back(place->second);
        }
    }
    return added;
}

void put_errors(Writer& writer, std::span<const modeler::Message> errors)
{
    writer.put(std::uint64_t{errors.size()});
    for (const modeler::Message& error : errors) {
        writer.put(std::string_view(error.line1));
        writer.put(std::string_view(error.line2));
    }
}

mesh::Layer read_layer(Reader& reader)
{
    mesh::Layer layer;
    layer.points = reader.all<mesh::Vec3>();
    const auto types = reader.all<mesh::FourCC>();
    const auto counts = reader.all<std::uint32_t>();
    const auto corners = reader.all<std::uint32_t>();
    const auto surfaces = reader.all<mesh::TagIndex>();
    layer.polygons.reserve(types.size(), corners.size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < types.size(); ++i) {
        layer.polygons.add(types[i], corners.span().subspan(next, counts[i]));
        layer.polygons.set_surface(i, surfaces[i]);
        next += counts[i];
    }
    return layer;
}

} // namespace

std::vector<LayerCount> count_layers(const mesh::Document& document)
{
    std::vector<LayerCount> counts;
    for (const mesh::Layer& layer : document.layers)
        counts.push_back({layer.points.size(), layer.polygons.size()});
    return counts;
}

void write_preview(int file, const mesh::Document& document, std::span<const LayerCount> before,
                   std::span<const modeler::Message> errors)
{
    Writer writer(file);
    put_errors(writer, errors);
    writer.put(std::uint64_t{document.layers.size()});
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        const mesh::Layer& layer = document.layers[i];
        const LayerCount was = i < before.size() ? before[i] : LayerCount{}; // the run made it
        const Gained added = gained(layer, was);
        writer.put(std::uint64_t{layer.points.size() - was.points});
        writer.put_all(added.points.span());
        writer.put_all(added.types.span());
        writer.put_all(added.counts.span());
        writer.put_all(added.corners.span());
        writer.put_all(added.surfaces.span());
    }
    writer.flush();
}

void write_failed_preview(int file, std::span<const modeler::Message> errors)
{
    Writer writer(file);
    put_errors(writer, errors);
    writer.put(std::uint64_t{0});
    writer.flush();
}

PreviewMesh read_preview(std::span<const std::byte> bytes)
{
    Reader reader(bytes);
    PreviewMesh mesh;
    for (auto errors = reader.get<std::uint64_t>(); errors > 0; --errors) {
        modeler::Message message;
        message.line1 = reader.text();
        message.line2 = reader.text();
        mesh.errors.push_back(std::move(message));
    }
    for (auto layers = reader.get<std::uint64_t>(); layers > 0; --layers) {
        mesh.points += reader.get<std::uint64_t>();
        mesh.layers.push_back(read_layer(reader));
        mesh.polygons += mesh.layers.back().polygons.size();
    }
    return mesh;
}

} // namespace desktop
