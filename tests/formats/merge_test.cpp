// SPDX-License-Identifier: MIT
#include "formats/merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formats/errors.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/support/compare.h"
#include "tests/formats/support/reading.h"
#include "tests/formats/support/samples.h"

namespace {

using test::Bytes;
using test::chunk;
using test::envelope_chunk;
using test::File;
using test::form;
using test::image_chunk;
using test::surface_chunk;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// One layer whose polygons have the surfaces of these names, one each, and further chunks.
File object(const std::vector<std::string>& surfaces, std::initializer_list<Bytes> further = {},
            unsigned number = 0)
{
    Bytes tags;
    std::vector<std::vector<std::uint32_t>> polygons;
    std::vector<std::pair<std::uint32_t, unsigned>> rows;
    for (unsigned i = 0; i < surfaces.size(); ++i) {
        tags.text(surfaces[i]);
        polygons.push_back({i % 3});
        rows.emplace_back(i, i);
    }
    return form({chunk("TAGS", tags), test::layer_chunk(number), test::points_chunk(3),
                 test::polygons_chunk("FACE", polygons), test::tags_chunk("SURF", rows),
                 Bytes().add(further)});
}

struct Joined {
    mesh::Document document;
    std::vector<std::string> warnings;
    std::vector<File> tail; ///< the written chunks that speak of the whole file, but for TAGS
};

Joined join(const File& into, const File& from, const char* from_name = "tree")
{
    Joined joined;
    joined.document = formats::read_lwo2(into, {});
    formats::append_document(joined.document, formats::read_lwo2(from, {}), from_name,
                             [&](const std::string& text) { joined.warnings.push_back(text); });
    const File file = formats::write_lwo2(joined.document);
    EXPECT_EQ(test::difference(joined.document, test::read_clean(file)), "");
    for (File& part : test::split_chunks(file)) {
        const std::string name = test::chunk_name(part);
        if (name == "SURF" || name == "CLIP" || name == "ENVL")
            joined.tail.push_back(std::move(part));
    }
    return joined;
}

/// The names of the surfaces of a layer's polygons.
std::vector<std::string> surfaces_of(const mesh::Document& document, std::size_t layer)
{
    std::vector<std::string> names;
    const mesh::Polygons& polygons = document.layers[layer].polygons;
    for (std::size_t i = 0; i < polygons.size(); ++i)
        names.push_back(document.tags[polygons.surface(i)]);
    return names;
}

TEST(AppendDocument, PutsTheLayersBehindWithAllTheirData)
{
    mesh::Document into = formats::read_lwo2(test::triangle(), {});
    formats::append_document(into, formats::read_lwo2(test::rich(), {}), "rich", {});
    const auto rich = formats::read_lwo2(test::rich(), {});
    ASSERT_EQ(into.layers.size(), 4u);
    EXPECT_EQ(into.layers[1].name, "Tree");
    EXPECT_EQ(into.layers[1].flags, 0x8001);
    EXPECT_EQ(into.layers[1].polygons.flags(5), 1);
    for (std::size_t i = 1; i < 3; ++i) {
        EXPECT_EQ(into.layers[1 + i].points.size(), rich.layers[i].points.size());
        EXPECT_EQ(test::mesh_difference(into.layers[1 + i], into.tags, rich.layers[i], rich.tags),
                  "");
    }
    // the empty tag, which some readers skip, got a name on its way
    EXPECT_EQ(into.tags[into.layers[1].polygons.tag(mesh::fourcc("PART"), 2)], "unnamed");
    EXPECT_EQ(into.tags[into.layers[1].polygons.tag(mesh::fourcc("COLR"), 0)], "DkBlu");
    EXPECT_EQ(into.tags.find(""), mesh::no_tag);
    EXPECT_EQ(test::difference(into, test::read_clean(formats::write_lwo2(into))), "");
}

TEST(AppendDocument, KeepsLayerNumbersUniqueAndParentsRight)
{
    const File into = form({test::layer_chunk(0), test::layer_chunk(2)});
    const auto with_parent = [](unsigned number, const char* name, unsigned parent) {
        return chunk("LAYR", Bytes().u2(number).u2(0).vec(0, 0, 0).text(name).u2(parent));
    };
    const File from = form({with_parent(2, "child", 0), test::layer_chunk(0, "root"),
                            with_parent(1, "grandchild", 2), with_parent(9, "lost", 77)});
    const auto layers = join(into, from).document.layers;
    ASSERT_EQ(layers.size(), 6u);
    EXPECT_EQ(layers[2].number, 3);
    EXPECT_EQ(layers[3].number, 4);
    EXPECT_EQ(layers[4].number, 1) << "it was free";
    EXPECT_EQ(layers[5].number, 9);
    EXPECT_EQ(layers[2].parent, 4);
    EXPECT_EQ(layers[3].parent, std::nullopt);
    EXPECT_EQ(layers[4].parent, 3);
    EXPECT_EQ(layers[5].parent, std::nullopt) << "it must not fall to a layer that comes later";
}

TEST(AppendDocument, OpensLayersThatTheirFilesDidNot)
{
    mesh::Document into = formats::read_lwo2(test::default_layer(), {});
    formats::append_document(into, formats::read_lwo2(test::default_layer(), {}), "more", {});
    ASSERT_EQ(into.layers.size(), 4u);
    std::vector<int> numbers;
    for (const mesh::Layer& layer : into.layers)
        numbers.push_back(layer.number);
    EXPECT_THAT(numbers, testing::UnorderedElementsAre(0, 1, 2, 3));
    EXPECT_EQ(into.layers[1].number, 0) << "the file's own number stays";
    const auto again = test::read_clean(formats::write_lwo2(into));
    EXPECT_EQ(test::difference(into, again), "");
}

TEST(AppendDocument, RefusesMoreLayersThanThereAreNumbers)
{
    mesh::Document into;
    into.layers.resize(65535);
    for (std::size_t i = 0; i < into.layers.size(); ++i)
        into.layers[i].number = static_cast<std::uint16_t>(i);
    mesh::Document from = formats::read_lwo2(test::triangle(), {});
    EXPECT_THROW(formats::append_document(into, std::move(from), "tree", {}), formats::LimitError);
    EXPECT_EQ(into.layers.size(), 65535u);
    EXPECT_EQ(into.tags.size(), 0u);
}

TEST(AppendDocument, BringsTheSurfacesThatPolygonsUseWithTheirImagesAndEnvelopes)
{
    const auto joined = join(
        object({"Grass"}, {surface_chunk("Grass")}),
        object({"Bark"}, {envelope_chunk(1, 1), envelope_chunk(2, 2), image_chunk(4, "bark.png"),
                          image_chunk(5, "other.png"), surface_chunk("Bark", 0.5f, 2, 4),
                          surface_chunk("Unused", 0.5f, 1, 5)}));
    EXPECT_THAT(joined.warnings, IsEmpty());
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Bark"));
    EXPECT_THAT(joined.tail,
                ElementsAre(envelope_chunk(2, 2).get(), image_chunk(4, "bark.png").get(),
                            surface_chunk("Grass").get(), surface_chunk("Bark", 0.5f, 2, 4).get()));
}

TEST(AppendDocument, RenumbersImagesAndEnvelopesWhoseNumbersAreTaken)
{
    const auto joined = join(object({"Grass"}, {envelope_chunk(1, 1), image_chunk(1, "grass.png"),
                                                surface_chunk("Grass", 0.5f, 1, 1)}),
                             object({"Bark"}, {envelope_chunk(1, 2), image_chunk(1, "bark.png"),
                                               surface_chunk("Bark", 0.5f, 1, 1)}));
    EXPECT_THAT(joined.warnings, IsEmpty());
    EXPECT_THAT(joined.tail,
                ElementsAre(envelope_chunk(1, 1).get(), image_chunk(1, "grass.png").get(),
                            envelope_chunk(2, 2).get(), image_chunk(2, "bark.png").get(),
                            surface_chunk("Grass", 0.5f, 1, 1).get(),
                            surface_chunk("Bark", 0.5f, 2, 2).get()));
}

TEST(AppendDocument, SharesImagesAndEnvelopesOfTheSameContent)
{
    const auto joined = join(object({"Grass"}, {envelope_chunk(7, 1), image_chunk(7, "same.png"),
                                                surface_chunk("Grass", 0.5f, 7, 7)}),
                             object({"Bark"}, {envelope_chunk(1, 1), image_chunk(1, "same.png"),
                                               surface_chunk("Bark", 0.5f, 1, 1)}));
    EXPECT_THAT(joined.tail,
                ElementsAre(envelope_chunk(7, 1).get(), image_chunk(7, "same.png").get(),
                            surface_chunk("Grass", 0.5f, 7, 7).get(),
                            surface_chunk("Bark", 0.5f, 7, 7).get()));
}

TEST(AppendDocument, RenumbersEveryPlaceThatNamesAnEnvelopeOrImage)
{
    const auto surface = [](std::uint32_t e, std::uint32_t i) {
        Bytes body;
        body.text("All").text("");
        body.add(sub_chunk("COLR", Bytes().vec(1, 1, 1).index(e)));
        for (const char* const id :
             {"DIFF", "LUMI", "SPEC", "REFL", "TRAN", "TRNL", "GLOS", "SHRP", "BUMP", "RIND",
              "RSAN", "RBLR", "TBLR", "CLRH", "CLRF", "ADTR", "GVAL"})
            body.add(sub_chunk(id, Bytes().f4(1).index(e)));
        body.add(sub_chunk("GLOW", Bytes().u2(1).f4(1).index(e).f4(2).index(e)));
        body.add(sub_chunk("LINE", Bytes().u2(1).f4(1).index(e).vec(1, 0, 0).index(e)));
        body.add(sub_chunk("LINE", Bytes().u2(1)));
        body.add(sub_chunk("VCOL", Bytes().f4(1).index(e).raw("RGBA").text("colour")));
        body.add(sub_chunk("RIMG", Bytes().index(i)));
        body.add(sub_chunk("TIMG", Bytes().index(i)));
        body.add(sub_chunk("CMNT", Bytes().raw("odd"))); // padded, and not understood
        body.add(sub_chunk("SIDE", Bytes().u2(3)));
        Bytes header;
        header.text("\x80\x01")
            .add(sub_chunk("CHAN", Bytes().raw("COLR")))
            .add(sub_chunk("OPAC", Bytes().u2(7).f4(1).index(e)));
        Bytes placing;
        placing.add(sub_chunk("CNTR", Bytes().vec(0, 0, 0).index(e)))
            .add(sub_chunk("SIZE", Bytes().vec(1, 1, 1).index(e)))
            .add(sub_chunk("ROTA", Bytes().vec(0, 0, 0).index(e)))
            .add(sub_chunk("FALL", Bytes().u2(1).vec(0, 0, 0).index(e)))
            .add(sub_chunk("OREF", Bytes().text("(none)")));
        Bytes layer;
        layer.add(sub_chunk("IMAP", header))
            .add(sub_chunk("TMAP", placing))
            .add(sub_chunk("IMAG", Bytes().index(i)))
            .add(sub_chunk("WRPW", Bytes().f4(1).index(e)))
            .add(sub_chunk("WRPH", Bytes().f4(1).index(e)))
            .add(sub_chunk("TAMP", Bytes().f4(1).index(e)));
        for (const char* const kind : {"PROC", "GRAD", "SHDR"})
            body.add(sub_chunk("BLOK", sub_chunk(kind, header)));
        return chunk("SURF", body.add(sub_chunk("BLOK", layer)));
    };
    const auto joined =
        join(object({"Grass"},
                    {envelope_chunk(3, 9), image_chunk(5, "grass.png"), surface_chunk("Grass")}),
             object({"All"}, {envelope_chunk(3, 1), image_chunk(5, "all.png"), surface(3, 5)}));
    EXPECT_EQ(joined.tail.back(), surface(1, 1).get());
}

TEST(AppendDocument, RenumbersToLongIndices)
{
    Bytes images;
    Bytes others;
    for (std::uint32_t i = 1; i < 0xFF00; ++i)
        images.add(image_chunk(i, "i" + std::to_string(i)));
    const auto joined =
        join(object({"Grass"}, {images}),
             object({"Bark"}, {image_chunk(1, "bark.png"), surface_chunk("Bark", 0.5f, 0, 1)}));
    // the index is two bytes longer, and so are the parts around it
    EXPECT_EQ(joined.tail.back(), surface_chunk("Bark", 0.5f, 0, 0xFF00).get());
}

TEST(AppendDocument, RenumbersWhatImagesName)
{
    const auto tinted = [](std::uint32_t number, std::uint32_t envelope) {
        return chunk("CLIP", Bytes()
                                 .u4(number)
                                 .add(sub_chunk("STIL", Bytes().text("a.png")))
                                 .add(sub_chunk("CONT", Bytes().f4(1).index(envelope))));
    };
    const auto copy_of = [](std::uint32_t number, std::uint32_t image) {
        return chunk("CLIP",
                     Bytes().u4(number).add(sub_chunk("XREF", Bytes().u4(image).text("copy"))));
    };
    const auto joined =
        join(object({"Grass"}, {envelope_chunk(1, 9), image_chunk(1, "g"), image_chunk(2, "h")}),
             object({"Bark"}, {envelope_chunk(1, 1), tinted(1, 1), copy_of(2, 1),
                               surface_chunk("Bark", 0.5f, 0, 2)}));
    EXPECT_THAT(joined.tail, ElementsAre(envelope_chunk(1, 9).get(), image_chunk(1, "g").get(),
                                         image_chunk(2, "h").get(), envelope_chunk(2, 1).get(),
                                         copy_of(3, 4).get(), tinted(4, 2).get(),
                                         surface_chunk("Bark", 0.5f, 0, 3).get()));
}

TEST(AppendDocument, EndsWithImagesThatNameEachOther)
{
    const auto copy_of = [](std::uint32_t number, std::uint32_t image) {
        return chunk("CLIP",
                     Bytes().u4(number).add(sub_chunk("XREF", Bytes().u4(image).text("copy"))));
    };
    const File circle =
        object({"Bark"}, {copy_of(1, 2), copy_of(2, 1), surface_chunk("Bark", 0.5f, 0, 1)});
    const auto joined = join(circle, circle);
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Bark (tree)"));
    EXPECT_EQ(joined.tail.size(), 6u);
}

TEST(AppendDocument, DoesNotShareAnImageThatNoSurfaceCanName)
{
    const auto joined =
        join(object({"Grass"}, {image_chunk(5, "moss.png"), image_chunk(0x01000005, "bark.png")}),
             object({"Bark"}, {image_chunk(1, "bark.png"), surface_chunk("Bark", 0.5f, 0, 1)}));
    EXPECT_THAT(joined.tail, ElementsAre(image_chunk(5, "moss.png").get(),
                                         image_chunk(0x01000005, "bark.png").get(),
                                         image_chunk(1, "bark.png").get(),
                                         surface_chunk("Bark", 0.5f, 0, 1).get()));
}

TEST(AppendDocument, RenumbersAnImageThatNoSurfaceCanName)
{
    const auto copy_of = [](std::uint32_t number, std::uint32_t image) {
        return chunk("CLIP",
                     Bytes().u4(number).add(sub_chunk("XREF", Bytes().u4(image).text("copy"))));
    };
    const auto joined =
        join(object({"Grass"}, {image_chunk(1, "moss.png")}),
             object({"Bark"}, {image_chunk(0x01000001, "bark.png"), copy_of(2, 0x01000001),
                               surface_chunk("Bark", 0.5f, 0, 2)}));
    EXPECT_THAT(joined.tail, ElementsAre(image_chunk(1, "moss.png").get(), copy_of(2, 3).get(),
                                         image_chunk(3, "bark.png").get(),
                                         surface_chunk("Bark", 0.5f, 0, 2).get()));
}

TEST(AppendDocument, SharesASurfaceThatIsTheSame)
{
    const File file = object({"Bark"}, {envelope_chunk(2, 1), image_chunk(1, "bark.png"),
                                        surface_chunk("Bark", 0.5f, 2, 1)});
    const auto joined = join(file, file);
    EXPECT_THAT(joined.warnings, IsEmpty());
    EXPECT_EQ(joined.document.tags.size(), 1u);
    EXPECT_THAT(joined.tail,
                ElementsAre(envelope_chunk(2, 1).get(), image_chunk(1, "bark.png").get(),
                            surface_chunk("Bark", 0.5f, 2, 1).get()));
}

TEST(AppendDocument, SharesANameThatOnlyOneSideDescribes)
{
    const File described = object({"Bark"}, {surface_chunk("Bark", 0.25f)});
    const File named = object({"Bark"});
    for (const auto& joined : {join(described, named), join(named, described)}) {
        EXPECT_THAT(joined.warnings, IsEmpty());
        EXPECT_THAT(surfaces_of(joined.document, 0), ElementsAre("Bark"));
        EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Bark"));
        EXPECT_THAT(joined.tail, ElementsAre(surface_chunk("Bark", 0.25f).get()));
    }
}

TEST(AppendDocument, RenamesASurfaceThatDiffers)
{
    const auto joined = join(object({"Default"}, {surface_chunk("Default", 0.25f)}),
                             object({"Default"}, {surface_chunk("Default", 0.75f)}));
    EXPECT_THAT(surfaces_of(joined.document, 0), ElementsAre("Default"));
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Default (tree)"));
    EXPECT_THAT(joined.tail, ElementsAre(surface_chunk("Default", 0.25f).get(),
                                         surface_chunk("Default (tree)", 0.75f).get()));
    EXPECT_THAT(joined.warnings,
                ElementsAre("surface \"Default\" of tree is not the one that is there; it is named "
                            "\"Default (tree)\" now"));
}

TEST(AppendDocument, TellsSurfacesApartByTheirImages)
{
    const auto with_image = [](const char* path) {
        return object({"Bark"}, {image_chunk(1, path), surface_chunk("Bark", 0.5f, 0, 1)});
    };
    const auto joined = join(with_image("oak.png"), with_image("pine.png"));
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Bark (tree)"));
    EXPECT_THAT(joined.tail,
                ElementsAre(image_chunk(1, "oak.png").get(), image_chunk(2, "pine.png").get(),
                            surface_chunk("Bark", 0.5f, 0, 1).get(),
                            surface_chunk("Bark (tree)", 0.5f, 0, 2).get()));
}

TEST(AppendDocument, FindsANewNameThatIsFree)
{
    const auto joined =
        join(object({"Default", "Default (tree 2)"}, {surface_chunk("Default", 0.25f)}),
             object({"Default", "Default (tree)"},
                    {surface_chunk("Default", 0.75f), surface_chunk("Default (tree)", 1)}));
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Default (tree 3)", "Default (tree)"));
}

TEST(AppendDocument, TakesTheNewNameAgainWhenTheSameComesAgain)
{
    const File ground = object({"Default"}, {surface_chunk("Default", 0.25f)});
    const File tree = object({"Default"}, {surface_chunk("Default", 0.75f)});
    mesh::Document document = formats::read_lwo2(ground, {});
    formats::append_document(document, formats::read_lwo2(tree, {}), "tree", {});
    formats::append_document(document, formats::read_lwo2(tree, {}), "tree", {});
    EXPECT_THAT(surfaces_of(document, 1), ElementsAre("Default (tree)"));
    EXPECT_THAT(surfaces_of(document, 2), ElementsAre("Default (tree)"));
    EXPECT_EQ(document.tail.size(), 2u);
}

TEST(AppendDocument, NamesASurfaceThatHasNoName)
{
    const auto joined =
        join(object({"Grass"}, {surface_chunk("Grass")}), object({""}, {surface_chunk("", 0.75f)}));
    EXPECT_THAT(surfaces_of(joined.document, 1), ElementsAre("Default (tree)"));
    EXPECT_EQ(joined.document.tags.find(""), mesh::no_tag);
}

TEST(AppendDocument, BringsTheSurfaceThatAnotherIsBasedOn)
{
    const auto based = [](const char* name, const char* source) {
        return chunk("SURF", Bytes().text(name).text(source).add(
                                 sub_chunk("DIFF", Bytes().f4(0.5f).index(0))));
    };
    const auto joined =
        join(object({"Grass"}, {surface_chunk("Grass"), surface_chunk("Base", 0.25f)}),
             object({"Bark"}, {based("Bark", "Base"), surface_chunk("Base", 0.75f)}));
    EXPECT_THAT(joined.tail,
                ElementsAre(surface_chunk("Grass").get(), surface_chunk("Base", 0.25f).get(),
                            based("Bark", "Base (tree)").get(),
                            surface_chunk("Base (tree)", 0.75f).get()));
}

TEST(AppendDocument, BringsEverythingForNodeDataAndWarnsWhenNumbersChange)
{
    const auto nodes = [](const char* name) {
        return chunk("SURF",
                     Bytes().text(name).text("").add(sub_chunk("NODS", Bytes().raw("opaque"))));
    };
    const auto joined =
        join(object({"Grass"}, {image_chunk(1, "grass.png"), surface_chunk("Grass")}),
             object({"Bark"}, {image_chunk(1, "bark.png"), nodes("Bark")}));
    EXPECT_THAT(joined.tail,
                ElementsAre(image_chunk(1, "grass.png").get(), image_chunk(2, "bark.png").get(),
                            surface_chunk("Grass").get(), nodes("Bark").get()));
    EXPECT_THAT(joined.warnings, ElementsAre(HasSubstr("node data, which is kept as it was")));
}

TEST(AppendDocument, LeavesOutWhatSpeaksOfTheOtherFileAsAWhole)
{
    const auto joined =
        join(object({"Grass"}), form({chunk("AUTH", Bytes().text("me")),
                                      chunk("UNKN", Bytes().u2(1)), test::layer_chunk(0)}));
    EXPECT_TRUE(joined.document.tail.empty());
    EXPECT_THAT(joined.warnings, ElementsAre("chunk UNKN of tree is left out; it belongs to no "
                                             "layer"));
}

TEST(AppendDocument, LeavesDamagedSurfacesAsTheyAre)
{
    const Bytes cut = chunk("SURF", Bytes().text("Bark").text("").raw("COLR").u2(900).u2(1));
    const auto joined = join(object({"Grass"}), object({"Bark"}, {cut}));
    EXPECT_EQ(joined.tail.front(), cut.get());
}

} // namespace
