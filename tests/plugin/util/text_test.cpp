// SPDX-License-Identifier: MIT
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "plugin/util/stringi.h"

namespace dastrel {
namespace {

std::string read(const Cstr& text) { return static_cast<const char*>(text); }

TEST(Text, CopiesWhatItIsMadeOf)
{
    char source[] = "Smile";
    const Cstr text(source);
    source[0] = 'X';
    EXPECT_EQ(read(text), "Smile");
}

TEST(Text, OfNullIsEmpty) { EXPECT_EQ(read(Cstr(static_cast<const char*>(nullptr))), ""); }

TEST(Text, OfANumberIsItsDecimalForm)
{
    EXPECT_EQ(read(Cstr(0)), "0");
    EXPECT_EQ(read(Cstr(12)), "12");
    EXPECT_EQ(read(Cstr(-1)), "-1");
    EXPECT_EQ(read(Cstr(std::numeric_limits<int>::min())), "-2147483648");
}

TEST(Text, Grows)
{
    Cstr text("Smile");
    text += Cstr(12);
    EXPECT_EQ(read(text), "Smile12");
    text += "";
    text += "-long enough to need a new buffer for certain";
    EXPECT_EQ(read(text), "Smile12-long enough to need a new buffer for certain");
    text += static_cast<const char*>(text); // its own text
    EXPECT_EQ(read(text).size(), 2 * 52U);
}

} // namespace
} // namespace dastrel
