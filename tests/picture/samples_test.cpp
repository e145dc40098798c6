// SPDX-License-Identifier: MIT
#include <set>
#include <tuple>

#include <gtest/gtest.h>

#include "picture/render/samples.h"

namespace {

using picture::Sample2;
using picture::Samples;
using picture::SampleUse;

constexpr SampleUse uses[] = {SampleUse::pixel, SampleUse::sun, SampleUse::sky};

TEST(Samples, PutOneInEachBoxHoweverTheSquareIsDivided)
{
    constexpr unsigned count = 64;
    for (const unsigned first : {0U, 64U, 640U})
        for (const SampleUse use : uses)
            for (unsigned across = 1; across <= count; across *= 2) {
                std::set<std::pair<int, int>> boxes;
                for (unsigned i = first; i < first + count; ++i) {
                    const Sample2 drawn = Samples(17, 230, i).draw(use);
                    ASSERT_GE(drawn.x, 0.0F);
                    ASSERT_LT(drawn.x, 1.0F);
                    ASSERT_GE(drawn.y, 0.0F);
                    ASSERT_LT(drawn.y, 1.0F);
                    boxes.emplace(static_cast<int>(drawn.x * static_cast<float>(across)),
                                  static_cast<int>(drawn.y * static_cast<float>(count / across)));
                }
                EXPECT_EQ(boxes.size(), count) << "from " << first << ", " << across << " across";
            }
}

TEST(Samples, AreOthersForEachPixelUseAndNumber)
{
    std::set<std::pair<float, float>> seen;
    for (int x = 0; x < 20; ++x)
        for (int y = 0; y < 20; ++y)
            for (const SampleUse use : uses)
                for (unsigned i = 0; i < 4; ++i) {
                    const Sample2 drawn = Samples(x, y, i).draw(use);
                    seen.emplace(drawn.x, drawn.y);
                }
    EXPECT_EQ(seen.size(), 20U * 20U * 3U * 4U);
}

TEST(Samples, OfTwoUsesDoNotGoTogether)
{
    double sum = 0.0; // covariance of the first numbers of two uses
    constexpr int pixels = 400;
    constexpr unsigned count = 16;
    for (int x = 0; x < pixels; ++x)
        for (unsigned i = 0; i < count; ++i) {
            const Samples samples(x, 3, i);
            sum += static_cast<double>((samples.draw(SampleUse::sun).x - 0.5F) *
                                       (samples.draw(SampleUse::sky).x - 0.5F));
        }
    EXPECT_NEAR(sum / (pixels * count), 0.0, 0.005); // a twelfth if they were the same
}

} // namespace
