// SPDX-License-Identifier: MIT
#include "modeler/edit/map_index.h"

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using modeler::MapIndex;
using modeler::NamedMap;
using modeler::StringPool;

mesh::Document of_one_layer()
{
    mesh::Document document;
    document.layers.emplace_back();
    return document;
}

class MapIndexTest : public testing::Test {
protected:
    mesh::Document document = of_one_layer();
    std::vector<modeler::LayerRole> roles{modeler::LayerRole::foreground};
    modeler::Scope scope{document, roles};
    StringPool strings;
};

TEST_F(MapIndexTest, ALastingNameIsKnownOnceItWasFound)
{
    const char* const name = strings.intern("Leaves");
    MapIndex index(document, scope, strings);
    EXPECT_EQ(index.find_cached(mesh::map_wght, name), nullptr);
    NamedMap& found = index.find(mesh::map_wght, name);
    EXPECT_EQ(index.find_cached(mesh::map_wght, name), &found);
    EXPECT_EQ(index.find_cached(mesh::map_txuv, name), nullptr) << "another type";
    EXPECT_EQ(index.find_cached(mesh::map_wght, nullptr), nullptr);
}

TEST_F(MapIndexTest, ANameThatDoesNotLastIsComparedAnew)
{
    MapIndex index(document, scope, strings);
    char name[] = "A";
    NamedMap* const first = &index.find(mesh::map_morf, name);
    EXPECT_EQ(index.find_cached(mesh::map_morf, name), nullptr);
    EXPECT_EQ(&index.find(mesh::map_morf, name), first);
    std::strcpy(name, "B");
    EXPECT_NE(&index.find(mesh::map_morf, name), first) << "the address is the same";
    std::strcpy(name, "A");
    EXPECT_EQ(&index.find(mesh::map_morf, name), first);
}

TEST_F(MapIndexTest, HoweverManyLastingNamesThereAreAllAreKnown)
{
    MapIndex index(document, scope, strings);
    std::vector<const char*> names;
    for (int i = 0; i < 20000; ++i)
        names.push_back(strings.intern("map " + std::to_string(i)));
    for (const char* const name : names)
        (void)index.find(mesh::map_wght, name);
    for (const char* const name : names) {
        const NamedMap* const map = index.find_cached(mesh::map_wght, name);
        ASSERT_NE(map, nullptr) << name;
        ASSERT_EQ(map->name, name);
        ASSERT_EQ(index.find_cached(mesh::map_txuv, name), nullptr);
    }
}

TEST_F(MapIndexTest, ManyNamesEachLeadToTheirOwnRecord)
{
    MapIndex index(document, scope, strings);
    std::vector<const char*> names;
    for (int i = 0; i < 3000; ++i)
        names.push_back(strings.intern("map " + std::to_string(i)));
    std::set<const NamedMap*> records;
    for (int round = 0; round < 3; ++round)
        for (const char* const name : names) {
            const NamedMap& found = index.find(mesh::map_wght, name);
            ASSERT_EQ(found.name, name);
            records.insert(&found);
        }
    EXPECT_EQ(records.size(), names.size());
}

} // namespace
