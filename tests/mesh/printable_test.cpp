// SPDX-License-Identifier: MIT
#include "mesh/printable.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::is_control;
using mesh::printable;
using namespace std::string_view_literals;

TEST(Printable, KeepsValidTextAsItIs)
{
    for (const std::string_view text :
         {""sv, "tree.lwo"sv, "a 'quoted' \\ name"sv, "B\xC3\xA4ume"sv, "\xE2\x88\x86"sv,
          "\xF0\x9F\x8C\xB2 \xE2\x80\x8D"sv, "\xED\x9F\xBF\xEE\x80\x80"sv, "\xF4\x8F\xBF\xBF"sv,
          "\xC2\xA0"sv})
        EXPECT_EQ(printable(text), text);
}

TEST(Printable, EscapesControlCharacters)
{
    EXPECT_EQ(printable("a\x1b[31mb"), "a\\x1B[31mb");
    EXPECT_EQ(printable("a\r\nb\tc"), "a\\x0D\\x0Ab\\x09c");
    EXPECT_EQ(printable("\0\x7F"sv), "\\x00\\x7F");
    EXPECT_EQ(printable("\xC2\x80\xC2\x9B\xC2\x9F"), "\\xC2\\x80\\xC2\\x9B\\xC2\\x9F");
}

TEST(Printable, IsWrittenPieceByPieceAlike)
{
    static std::string written;
    written.clear();
    const std::string_view text = "a\x1b[2J\n\xC3\xA4\xC2\x9B\xED\xA0\x80 end\xE2"sv;
    mesh::write_printable(text, [](std::string_view piece) { written += piece; });
    EXPECT_EQ(written, printable(text));
}

TEST(Printable, EscapesSeparatorsAndDirectionControls)
{
    EXPECT_EQ(printable("\xE2\x80\xA8"), "\\xE2\\x80\\xA8"); // line separator
    EXPECT_EQ(printable("\xE2\x80\xA9"), "\\xE2\\x80\\xA9"); // paragraph separator
    EXPECT_EQ(printable("\xE2\x80\xAE"), "\\xE2\\x80\\xAE"); // right-to-left override
    EXPECT_EQ(printable("\xE2\x81\xA6"), "\\xE2\\x81\\xA6"); // left-to-right isolate
    EXPECT_EQ(printable("\xE2\x80\x8F"), "\\xE2\\x80\\x8F"); // right-to-left mark
    EXPECT_EQ(printable("\xD8\x9C"), "\\xD8\\x9C");          // Arabic letter mark
}

TEST(Printable, EscapesWhatIsNotValidUtf8)
{
    EXPECT_EQ(printable("a\xFF\xFE"), "a\\xFF\\xFE");
    EXPECT_EQ(printable("\x9B"), "\\x9B");                              // continuation alone
    EXPECT_EQ(printable("\xC3"), "\\xC3");                              // cut short
    EXPECT_EQ(printable("\xE2\x88x"), "\\xE2\\x88x");                   // cut short within
    EXPECT_EQ(printable("\xED\xA0\x80"), "\\xED\\xA0\\x80");            // surrogate
    EXPECT_EQ(printable("\xC0\x9B"), "\\xC0\\x9B");                     // overlong
    EXPECT_EQ(printable("\xE0\x80\x9B"), "\\xE0\\x80\\x9B");            // overlong
    EXPECT_EQ(printable("\xF0\x80\x80\x9B"), "\\xF0\\x80\\x80\\x9B");   // overlong
    EXPECT_EQ(printable("\xF4\x90\x80\x80z"), "\\xF4\\x90\\x80\\x80z"); // above U+10FFFF
}

RC_GTEST_PROP(Printable, NeverGivesAControlCharacter, (const std::string& bytes))
{
    const std::string shown = printable(bytes);
    for (const char c : shown)
        RC_ASSERT(static_cast<unsigned char>(c) >= 0x20u);
    RC_ASSERT(printable(shown) == shown);
}

} // namespace
