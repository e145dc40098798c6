// SPDX-License-Identifier: MIT
#include "formats/surface_looks.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "formats/lwo2/ids.h"
#include "tests/formats/support/bytes.h"

namespace {

using test::Bytes;
using test::sub_chunk;

Bytes colour(float red, float green, float blue)
{
    return sub_chunk("COLR", Bytes().vec(red, green, blue).u2(0));
}

/// The looks of a document with these descriptions: a name, and the parts behind it.
std::vector<mesh::SurfaceLook> looks_of(const std::vector<std::pair<std::string, Bytes>>& surfaces)
{
    mesh::Document document;
    for (const auto& [name, parts] : surfaces)
        document.tail.push_back(
            {.id = formats::lwo2::id_surf, .body = Bytes().text(name).text("").add(parts).get()});
    return formats::surface_looks(document);
}

TEST(SurfaceLooks, AreReadFromBetweenOtherPartsOfOddSizeToo)
{
    const auto looks = looks_of({{"Grass", Bytes()
                                               .add(sub_chunk("AUVN", Bytes().raw("odd")))
                                               .add(colour(0.25F, 0.5F, 0.75F))
                                               .add(sub_chunk("DIFF", Bytes().f4(1.0F).u2(0)))
                                               .add(sub_chunk("SMAN", Bytes().f4(1.5F)))},
                                 {"Rock", colour(1.0F, 0.0F, -2.0F)}});
    ASSERT_EQ(looks.size(), 2U);
    EXPECT_EQ(looks[0].name, "Grass");
    EXPECT_EQ(looks[0].red, 0.25F);
    EXPECT_EQ(looks[0].green, 0.5F);
    EXPECT_EQ(looks[0].blue, 0.75F);
    EXPECT_EQ(looks[0].smoothing_angle, 1.5);
    EXPECT_EQ(looks[1].name, "Rock");
    EXPECT_EQ(looks[1].blue, -2.0F);
    EXPECT_EQ(looks[1].smoothing_angle, 0.0);
}

TEST(SurfaceLooks, OfANameDescribedTwiceAreTheFirst)
{
    const auto looks = looks_of({{"A", colour(0.1F, 0.1F, 0.1F)}, {"A", colour(0.9F, 0.9F, 0.9F)}});
    ASSERT_EQ(looks.size(), 1U);
    EXPECT_EQ(looks[0].red, 0.1F);
}

TEST(SurfaceLooks, KeepTheDefaultsForWhatIsDamaged)
{
    const mesh::SurfaceLook standard;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<std::pair<std::string, Bytes>> damaged = {
        {"short", sub_chunk("COLR", Bytes().f4(0.1F).f4(0.2F))},
        {"no number", colour(0.1F, nan, 0.3F)},
        {"no angle", sub_chunk("SMAN", Bytes().u2(1))},
        {"too long", Bytes().raw("COLR").u2(999).vec(0.1F, 0.2F, 0.3F)},
        {"nothing", Bytes()}};
    for (const mesh::SurfaceLook& look : looks_of(damaged)) {
        EXPECT_EQ(look.red, standard.red) << look.name;
        EXPECT_EQ(look.green, standard.green) << look.name;
        EXPECT_EQ(look.blue, standard.blue) << look.name;
        EXPECT_EQ(look.smoothing_angle, 0.0) << look.name;
    }
    EXPECT_EQ(looks_of(damaged).size(), damaged.size());
}

TEST(SurfaceLooks, AreReadFromEveryCutOffDescriptionWithoutHarm)
{
    const std::vector<std::byte> whole =
        Bytes().text("Grass").text("").add(colour(0.1F, 0.2F, 0.3F)).get();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        mesh::Document document;
        document.tail.push_back(
            {.id = formats::lwo2::id_surf, .body = {whole.data(), whole.data() + length}});
        const auto looks = formats::surface_looks(document);
        EXPECT_TRUE(looks.empty() || looks[0].red == mesh::SurfaceLook().red) << length;
    }
}

} // namespace
