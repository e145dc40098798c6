// SPDX-License-Identifier: MIT
// A file that is no LWO2 object is told as what it is, by its first bytes.
#include "formats/file_kind.h"

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "tests/formats/support/samples.h"

namespace {

using namespace std::string_view_literals;

std::string kind_of(std::string_view bytes)
{
    return formats::foreign_kind(std::as_bytes(std::span(bytes)), bytes.size());
}

std::string fault_of(std::string_view bytes)
{
    try {
        static_cast<void>(formats::read_lwo2(std::as_bytes(std::span(bytes)), {}));
    } catch (const formats::FormatError& fault) {
        return fault.what();
    }
    return {};
}

struct KindCase {
    const char* name;
    std::string bytes;
    const char* kind;
};

void PrintTo(const KindCase& tested, std::ostream* out) { *out << tested.name; }

class KindTest : public testing::TestWithParam<KindCase> {};

TEST_P(KindTest, IsNamedWithWhatIsRead)
{
    const std::string wanted =
        std::string(GetParam().kind) + "; only LWO2 object files (.lwo) are read";
    EXPECT_EQ(kind_of(GetParam().bytes), wanted);
    EXPECT_EQ(fault_of(GetParam().bytes), wanted);
}

std::string text(std::string_view bytes) { return std::string(bytes); }

std::string stl_of_two()
{
    std::string file(80, ' ');
    return file + text("\2\0\0\0"sv) + std::string(100, '\1');
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(FileKind, KindTest, testing::Values(
    KindCase{"empty", "", "is empty"},
    KindCase{"obj", "# made by hand\r\n\r\n  v 0 0 0\n", "is a Wavefront OBJ file"},
    KindCase{"obj_with_materials", "mtllib a.mtl\no box\n", "is a Wavefront OBJ file"},
    KindCase{"materials", "newmtl Bark\n", "is a Wavefront material library (.mtl)"},
    KindCase{"gltf", " {\n \"asset\": {\"version\": \"2.0\"}}", "is a glTF file"},
    KindCase{"glb", text("glTF\2\0\0\0"sv), "is a binary glTF file (.glb)"},
    KindCase{"json", "{\"seed\": 1}", "is a JSON file"},
    KindCase{"ply", "ply\nformat ascii 1.0\n", "is a PLY mesh"},
    KindCase{"stl", "solid box\n facet normal 0 0 1\n", "is an STL mesh"},
    KindCase{"binary_stl", stl_of_two(), "is an STL mesh"},
    KindCase{"binary_fbx", text("Kaydara FBX Binary  \0\x1A\0"sv), "is an FBX file"},
    KindCase{"fbx", "; FBX 7.3.0 project file\n", "is an FBX file"},
    KindCase{"blender", "BLENDER-v300", "is a Blender file"},
    KindCase{"three_ds", text("MM\x08\0\0\0\1\1"sv), "is a 3DS mesh"},
    KindCase{"collada", "<?xml version=\"1.0\"?>\n<COLLADA>", "is a COLLADA file"},
    KindCase{"xml", "<?xml version=\"1.0\"?>\n<svg>", "is an XML file"},
    KindCase{"web_page", "<!DOCTYPE html>\n", "is a web page"},
    KindCase{"png", text("\x89PNG\r\n\x1A\n\0\0"sv), "is a PNG picture"},
    KindCase{"jpeg", text("\xFF\xD8\xFF\xE0\0"sv), "is a JPEG picture"},
    KindCase{"bmp", text("BM\x08\0\0\0\0\0"sv), "is a BMP picture"},
    KindCase{"ilbm", text("FORM\0\0\0\x04ILBM"sv), "is an IFF picture (ILBM)"},
    KindCase{"aiff", text("FORM\0\0\0\x04" "AIFF"sv), "is an AIFF sound"},
    KindCase{"another_form", text("FORM\0\0\0\x04T\x1BXT"sv), "is an IFF file of the form \"T\\x1BXT\""},
    KindCase{"zip", text("PK\3\4\x14\0"sv), "is a zip archive; unpack it first"},
    KindCase{"gzip", text("\x1F\x8B\x08\0"sv), "is compressed with gzip; unpack it first"},
    KindCase{"text", "Dear reader,\n\xC3\xA4 letter\n", "is a text file"},
    KindCase{"zeros", std::string(5000, '\0'), "is nothing but zeros at its beginning"},
    KindCase{"unknown", text("\1\x1B\0z123"sv),
             "is of a kind that is not known (it begins with \"\\x01\\x1B\\x00z\", and an object with \"FORM\")"}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

TEST(FileKind, OfOtherFormsOfObjectsSaysWhatToDo)
{
    EXPECT_EQ(kind_of("FORM\0\0\0\x04LWOB"sv),
              "is an object of the older form LWOB, which is not read; save it as LWO2 first");
}

TEST(FileKind, OfAnObjectThatIsCutShortSaysSo)
{
    EXPECT_EQ(kind_of("FORM\0\0\0"sv), "has only the first 7 bytes of an object; it is cut short");
    EXPECT_EQ(kind_of("FO"), "has only the first 2 bytes of an object; it is cut short");
}

TEST(FileKind, OfAnObjectIsNothing)
{
    const auto object = test::triangle();
    EXPECT_EQ(formats::foreign_kind(object, object.size()), "");
}

} // namespace
