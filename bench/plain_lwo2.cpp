// SPDX-License-Identifier: MIT
#include "bench/plain_lwo2.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/lwo2/ids.h"

namespace bench {

namespace {

using namespace formats::lwo2;

class Writer {
public:
    explicit Writer(const std::filesystem::path& path) : file_(path, std::ios::binary)
    {
        file_.exceptions(std::ios::failbit | std::ios::badbit);
    }

    void u1(std::uint32_t value) { file_.put(static_cast<char>(value & 0xFFu)); }
    void u2(std::uint32_t value)
    {
        u1(value >> 8u);
        u1(value);
    }
    void u4(std::uint32_t value)
    {
        u2(value >> 16u);
        u2(value);
    }
    void single(double value) { u4(std::bit_cast<std::uint32_t>(static_cast<float>(value))); }
    void index(std::uint32_t value)
    {
        if (value < first_long_index)
            u2(value);
        else
            u4(0xFF000000u | value);
    }
    void text(const std::string& text)
    {
        for (const char c : text)
            file_.put(c);
        u1(0);
        if (text.size() % 2 == 0)
            u1(0);
    }

    /// Begins a chunk. Gives its place, for `end`.
    std::streampos begin(FourCC id)
    {
        u4(id);
        u4(0); // known at the end
        return file_.tellp();
    }
    void end(std::streampos start)
    {
        const std::streampos here = file_.tellp();
        file_.seekp(start - std::streamoff{4});
        u4(static_cast<std::uint32_t>(here - start));
        file_.seekp(here);
    }

private:
    std::ofstream file_;
};

void write_layer(const mesh::Layer& layer, Writer& out)
{
    std::streampos chunk = out.begin(id_layr);
    out.u2(layer.number);
    out.u2(layer.flags);
    out.single(layer.pivot.x);
    out.single(layer.pivot.y);
    out.single(layer.pivot.z);
    out.text(layer.name);
    out.end(chunk);

    chunk = out.begin(id_pnts);
    mesh::Vec3 low = layer.points[0];
    mesh::Vec3 high = low;
    for (const mesh::Vec3& point : layer.points) {
        out.single(point.x);
        out.single(point.y);
        out.single(point.z);
        low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
    }
    out.end(chunk);

    chunk = out.begin(id_bbox);
    for (const double value : {low.x, low.y, low.z, high.x, high.y, high.z})
        out.single(value + 0.0); // no negative zero
    out.end(chunk);

    for (const mesh::VertexMap& map : layer.maps) {
        chunk = out.begin(id_vmap);
        out.u4(map.type());
        out.u2(static_cast<std::uint32_t>(map.dimension()));
        out.text(map.name());
        for (std::uint32_t point = 0; point < layer.points.size(); ++point) {
            if (!map.has(point))
                continue;
            out.index(point);
            for (const float component : map.find(point))
                out.u4(std::bit_cast<std::uint32_t>(component));
        }
        out.end(chunk);
    }

    chunk = out.begin(id_pols);
    out.u4(mesh::polygon_face);
    for (std::size_t p = 0; p < layer.polygons.size(); ++p) {
        const auto points = layer.polygons.points(p);
        out.u2(static_cast<std::uint32_t>(points.size()));
        for (const std::uint32_t point : points)
            out.index(point);
    }
    out.end(chunk);

    chunk = out.begin(id_ptag);
    out.u4(mesh::tag_surf);
    out.end(chunk);
}

class Reader {
public:
    explicit Reader(const std::filesystem::path& path) : file_(path, std::ios::binary)
    {
        file_.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
    }

    std::uint32_t u1()
    {
        ++at_;
        return static_cast<std::uint8_t>(file_.get());
    }
    std::uint32_t u2()
    {
        const std::uint32_t high = u1();
        return high << 8u | u1();
    }
    std::uint32_t u4()
    {
        const std::uint32_t high = u2();
        return high << 16u | u2();
    }
    double single() { return std::bit_cast<float>(u4()); }
    std::uint32_t index()
    {
        const std::uint32_t first = u2();
        return first < first_long_index ? first : (first & 0xFFu) << 16u | u2();
    }
    std::string text()
    {
        std::string text;
        for (std::uint32_t c = u1(); c != 0; c = u1())
            text += static_cast<char>(c);
        if (text.size() % 2 == 0)
            u1();
        return text;
    }
    /// How many bytes were read.
    [[nodiscard]] std::uint64_t at() const { return at_; }

private:
    std::ifstream file_;
    std::uint64_t at_ = 0;
};

void read_layer(mesh::Layer& layer, Reader& in)
{
    layer.number = static_cast<std::uint16_t>(in.u2());
    layer.flags = static_cast<std::uint16_t>(in.u2());
    layer.pivot.x = in.single();
    layer.pivot.y = in.single();
    layer.pivot.z = in.single();
    layer.name = in.text();
}

void read_points(mesh::Layer& layer, Reader& in, std::uint64_t end)
{
    while (in.at() < end) {
        mesh::Vec3 point;
        point.x = in.single();
        point.y = in.single();
        point.z = in.single();
        layer.points.push_back(point);
    }
}

void read_map(mesh::Layer& layer, Reader& in, std::uint64_t end)
{
    const FourCC type = in.u4();
    std::vector<float> value(in.u2());
    mesh::VertexMap& map = layer.maps.emplace_back(type, in.text(), value.size());
    while (in.at() < end) {
        const std::uint32_t point = in.index();
        for (float& component : value)
            component = std::bit_cast<float>(in.u4());
        map.set(point, value);
    }
}

void read_polygons(mesh::Layer& layer, Reader& in, std::uint64_t end)
{
    const FourCC type = in.u4();
    std::vector<std::uint32_t> points;
    while (in.at() < end) {
        points.resize(in.u2());
        for (std::uint32_t& point : points)
            point = in.index();
        layer.polygons.add(type, points);
    }
}

} // namespace

void write_lwo2_plainly(const mesh::Document& document, const std::filesystem::path& path)
{
    Writer out(path);
    const std::streampos form = out.begin(id_form);
    out.u4(id_lwo2);
    for (const mesh::Layer& layer : document.layers)
        write_layer(layer, out);
    out.end(form);
}

mesh::Document read_lwo2_plainly(const std::filesystem::path& path)
{
    mesh::Document document;
    Reader in(path);
    static_cast<void>(in.u4()); // FORM
    const std::uint64_t size = in.u4();
    const std::uint64_t file_end = in.at() + size;
    static_cast<void>(in.u4()); // LWO2
    while (in.at() < file_end) {
        const FourCC id = in.u4();
        const std::uint64_t length = in.u4();
        const std::uint64_t end = in.at() + length;
        if (id == id_layr)
            read_layer(document.layers.emplace_back(), in);
        else if (id == id_pnts)
            read_points(document.layers.back(), in, end);
        else if (id == id_vmap)
            read_map(document.layers.back(), in, end);
        else if (id == id_pols)
            read_polygons(document.layers.back(), in, end);
        else if (id != id_bbox && id != id_ptag)
            throw std::runtime_error("chunk " + mesh::to_text(id));
        while (in.at() < end)
            static_cast<void>(in.u1());
    }
    return document;
}

} // namespace bench
