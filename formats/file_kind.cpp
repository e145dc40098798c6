// SPDX-License-Identifier: MIT
#include "formats/file_kind.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/format.h>

#include "formats/input_file.h"
#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/read/chunk_source.h"
#include "mesh/plural.h"
#include "mesh/printable.h"

namespace formats {

namespace {

using lwo2::fourcc;
using lwo2::FourCC;
using namespace std::string_view_literals;

struct Signature {
    std::size_t at; ///< where in the file it stands
    std::string_view bytes;
    std::string_view kind;
};

/// If one signature is a prefix of another, the longer one comes first.
constexpr std::array signatures{
    Signature{0, "glTF"sv, "a binary glTF file (.glb)"sv},
    Signature{0, "ply\n"sv, "a PLY mesh"sv},
    Signature{0, "ply\r"sv, "a PLY mesh"sv},
    Signature{0, "Kaydara FBX Binary"sv, "an FBX file"sv},
    Signature{0, "; FBX "sv, "an FBX file"sv},
    Signature{0, "BLENDER"sv, "a Blender file"sv},
    Signature{0, "OFF\n"sv, "an OFF mesh"sv},
    Signature{0, "OFF\r"sv, "an OFF mesh"sv},
    Signature{0, "xof 0"sv, "a DirectX mesh (.x)"sv},
    Signature{0, "#VRML"sv, "a VRML file"sv},
    Signature{0, "#usda"sv, "a USD file"sv},
    Signature{0, "PXR-USDC"sv, "a USD file"sv},
    Signature{0, "Ogawa"sv, "an Alembic file"sv},
    Signature{0, "\x89HDF\r\n"sv, "an HDF5 file"sv},
    Signature{0, "LWSC"sv, "a scene (LWSC), which names objects and holds none"sv},
    Signature{0, "\x89PNG\r\n\x1A\n"sv, "a PNG picture"sv},
    Signature{0, "\xFF\xD8\xFF"sv, "a JPEG picture"sv},
    Signature{0, "GIF8"sv, "a GIF picture"sv},
    Signature{0, "II*\0"sv, "a TIFF picture"sv},
    Signature{0, "MM\0*"sv, "a TIFF picture"sv},
    Signature{0, "8BPS"sv, "a Photoshop picture"sv},
    Signature{0, "v/1\x01"sv, "an OpenEXR picture"sv},
    Signature{0, "#?RADIANCE"sv, "a Radiance picture (.hdr)"sv},
    Signature{8, "WEBP"sv, "a WebP picture"sv},
    Signature{8, "WAVE"sv, "a WAVE sound"sv},
    Signature{0, "%PDF"sv, "a PDF document"sv},
    Signature{0, "PK\x03\x04"sv, "a zip archive; unpack it first"sv},
    Signature{0, "\x1F\x8B"sv, "compressed with gzip; unpack it first"sv},
    Signature{0, "\x28\xB5\x2F\xFD"sv, "compressed with zstd; unpack it first"sv},
    Signature{0,
              "\xFD"
              "7zXZ"sv,
              "compressed with xz; unpack it first"sv},
    Signature{0, "BZh"sv, "compressed with bzip2; unpack it first"sv},
    Signature{0, "7z\xBC\xAF"sv, "a 7z archive; unpack it first"sv},
    Signature{257, "ustar"sv, "a tar archive; unpack it first"sv},
    Signature{0,
              "\x7F"
              "ELF"sv,
              "a program or library"sv},
    Signature{0, "#!"sv, "a script"sv},
};

struct Form {
    FourCC id;
    std::string_view kind;
};

/// Types of FORM files other than LWO2 objects.
constexpr std::array forms{
    Form{fourcc("LWOB"),
         "is an object of the older form LWOB, which is not read; save it as LWO2 first"sv},
    Form{fourcc("LWLO"), "is a layered object of the older form LWLO, which is not read; save it "
                         "as LWO2 first"sv},
    Form{fourcc("LWO3"),
         "is an object of the newer form LWO3, which is not read; save it as LWO2 first"sv},
    Form{fourcc("LXOB"),
         "is an object of the form LXOB (.lxo), which is not read; export it as LWO2 first"sv},
    Form{fourcc("ILBM"), "is an IFF picture (ILBM)"sv},
    Form{fourcc("PBM "), "is an IFF picture (PBM)"sv},
    Form{fourcc("AIFF"), "is an AIFF sound"sv},
    Form{fourcc("AIFC"), "is an AIFF sound"sv},
    Form{fourcc("8SVX"), "is an IFF sound (8SVX)"sv},
};

constexpr std::string_view what_is_read = "only LWO2 object files (.lwo) are read";

std::string refusal(std::string_view kind) { return fmt::format("{}; {}", kind, what_is_read); }

std::string refusal_of_form(FourCC id)
{
    for (const Form& form : forms)
        if (form.id == id)
            return form.kind.find("which is not read") == std::string_view::npos
                       ? refusal(form.kind)
                       : std::string(form.kind);
    return refusal(fmt::format("is an IFF file of the form \"{}\"", mesh::to_text(id)));
}

bool is_text(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 ? byte != 0x7F : byte == '\t' || byte == '\n' || byte == '\r';
    });
}

bool has(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// The first line that is neither empty nor a comment, without leading blanks.
std::string_view first_line(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        const std::size_t start = line.find_first_not_of(" \t");
        if (start != std::string_view::npos && line[start] != '#')
            return line.substr(start);
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
    return {};
}

bool begins_with_one_of(std::string_view line, std::initializer_list<std::string_view> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return line.starts_with(word); });
}

std::string_view kind_of_text(std::string_view text)
{
    const std::string_view line = first_line(text);
    if (line.starts_with("{"))
        return has(text, "\"asset\"") || has(text, "\"meshes\"") ? "a glTF file" : "a JSON file";
    if (begins_with_one_of(line, {"<!DOCTYPE html", "<!doctype html", "<html", "<HTML"}))
        return "a web page";
    if (line.starts_with("<"))
        return has(text, "<COLLADA") ? "a COLLADA file" : "an XML file";
    if (line.starts_with("solid") && has(text, "facet"))
        return "an STL mesh";
    if (begins_with_one_of(
            line, {"v ", "vn ", "vt ", "vp ", "f ", "o ", "g ", "s ", "mtllib ", "usemtl "}))
        return "a Wavefront OBJ file";
    if (line.starts_with("newmtl "))
        return "a Wavefront material library (.mtl)";
    return "a text file";
}

std::uint32_t little_endian(std::string_view text, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8u | static_cast<unsigned char>(text[at + i]);
    return value;
}

/// Formats recognised by a size field.
std::string_view kind_by_size(std::string_view text, std::uint64_t size)
{
    constexpr std::size_t stl_header = 84;
    constexpr std::uint64_t stl_triangle = 50;
    if (text.size() >= stl_header &&
        size == stl_header + stl_triangle * little_endian(text, stl_header - 4))
        return "an STL mesh";
    if (text.starts_with("MM") && text.size() >= 6 && little_endian(text, 2) == size)
        return "a 3DS mesh";
    if (text.starts_with("BM") && text.size() >= 6 && little_endian(text, 2) == size)
        return "a BMP picture";
    return {};
}

std::string_view kind_of(std::string_view text, std::uint64_t size)
{
    for (const Signature& signature : signatures)
        if (text.size() >= signature.at && text.substr(signature.at).starts_with(signature.bytes))
            return signature.kind;
    if (const std::string_view kind = kind_by_size(text, size); !kind.empty())
        return kind;
    if (is_text(text))
        return kind_of_text(text);
    if (std::all_of(text.begin(), text.end(), [](char c) { return c == '\0'; }))
        return "nothing but zeros at its beginning";
    return {};
}

} // namespace

std::string foreign_kind(std::span<const std::byte> begin, std::uint64_t size)
{
    constexpr std::size_t header_size = 12;
    if (begin.empty())
        return refusal("is empty");
    const std::string_view text(reinterpret_cast<const char*>(begin.data()),
                                std::min(begin.size(), kind_bytes));
    constexpr std::string_view mark = "FORM";
    if (text.starts_with(mark) || mark.starts_with(text)) {
        if (begin.size() < header_size)
            return fmt::format("has only the first {} of an object; it is cut short",
                               mesh::counted(begin.size(), "byte"));
        const FourCC form = lwo2::read_u4(begin.data() + 8);
        return form == lwo2::id_lwo2 ? std::string() : refusal_of_form(form);
    }
    if (const std::string_view kind = kind_of(text, size); !kind.empty())
        return refusal(fmt::format("is {}", kind));
    return refusal(fmt::format("is of a kind that is not known (it begins with \"{}\", and an "
                               "object with \"FORM\")",
                               mesh::printable(text.substr(0, 4))));
}

std::string foreign_kind(const std::filesystem::path& path)
{
    const auto source = lwo2::file_source(open_input(path));
    const auto looked_at =
        static_cast<std::size_t>(std::min<std::uint64_t>(source->size(), kind_bytes));
    const auto begin = source->read(0, looked_at);
    return foreign_kind(begin.first(std::min(begin.size(), kind_bytes)), source->size());
}

} // namespace formats
