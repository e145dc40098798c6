// SPDX-License-Identifier: MIT
#include "fuzz/lwo2_checks.h"

#include <utility>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"
#include "tests/formats/support/compare.h"

namespace fuzz {

namespace {

using Bytes = std::span<const std::byte>;

/// Points, polygons and their shapes; tags may get other names on their way.
std::string shape_difference(const mesh::Layer& a, const mesh::Layer& b)
{
    if (a.points.size() != b.points.size() || a.polygons.size() != b.polygons.size() ||
        a.maps.size() != b.maps.size())
        return "a count";
    for (std::size_t p = 0; p < a.polygons.size(); ++p) {
        const auto x = a.polygons.points(p);
        const auto y = b.polygons.points(p);
        if (a.polygons.type(p) != b.polygons.type(p) || x.size() != y.size() ||
            !std::equal(x.begin(), x.end(), y.begin()))
            return "polygon " + std::to_string(p);
        const bool tagged = a.polygons.surface(p) != mesh::no_tag;
        if (tagged != (b.polygons.surface(p) != mesh::no_tag))
            return "surface of polygon " + std::to_string(p);
    }
    return {};
}

std::string check_writing(const mesh::Document& document)
{
    const auto written = formats::write_lwo2(document);
    const auto again = formats::read_lwo2(written, {});
    if (const auto text = test::difference(document, again); !text.empty())
        return "written and read again: " + text;
    if (formats::write_lwo2(again) != written)
        return "written again: other bytes";
    return {};
}

std::string check_joining(Bytes bytes)
{
    auto joined = formats::read_lwo2(bytes, {});
    const std::size_t count = joined.layers.size();
    try {
        formats::append_document(joined, formats::read_lwo2(bytes, {}), "again", {});
    } catch (const formats::LimitError&) {
        return {}; // more layers, or longer surfaces, than the format can hold
    }
    const auto original = formats::read_lwo2(bytes, {});
    if (joined.layers.size() != 2 * count)
        return "joined: number of layers";
    for (std::size_t i = 0; i < count; ++i)
        if (const auto text = shape_difference(original.layers[i], joined.layers[count + i]);
            !text.empty())
            return "joined: " + text;
    try {
        return check_writing(joined);
    } catch (const formats::LimitError&) {
        return {}; // more tags than the format can number
    }
}

} // namespace

std::string check_lwo2(Bytes bytes)
{
    mesh::Document document;
    try {
        document = formats::read_lwo2(bytes, {});
    } catch (const formats::FormatError&) {
        return {};
    }
    try {
        if (const auto text = check_writing(document); !text.empty())
            return text;
    } catch (const formats::FormatError& fault) {
        return std::string("written and not readable: ") + fault.what();
    } catch (const formats::LimitError& error) {
        return std::string("read and not writable: ") + error.what();
    }
    return check_joining(bytes);
}

} // namespace fuzz
