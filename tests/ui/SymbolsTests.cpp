#include "ui/Symbols.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

constexpr std::uint32_t tint = 0x34c759;

TEST(Symbols, AreTintedExactlyAndSymmetricAtEverySize) {
    for (const auto* name : {"circle.dotted", "circle.fill", "exclamationmark.triangle", "gear",
                             "info.circle", "power"}) {
        for (const int size : {12, 16, 22, 24, 32, 44, 48, 64}) {
            SCOPED_TRACE(std::string(name) + " of " + std::to_string(size));
            const auto image = symbolImage(name, tint, size, 1).value();
            int coverage = 0;
            for (int i = 0; i < size * size; ++i) {
                const QRgb pixel = image.pixel(i % size, i / size);
                EXPECT_EQ(pixel & 0xffffffU, tint);
                EXPECT_NEAR(qAlpha(pixel), qAlpha(image.pixel(size - 1 - i % size, i / size)), 1);
                coverage += qAlpha(pixel);
            }
            EXPECT_GT(coverage, 255 * 0.08 * size * size) << "too faint to be seen";
        }
    }
    EXPECT_EQ(symbolImage("", tint, 16, 1), std::nullopt);
}

TEST(Symbols, EndOnWholePixelsOfTheirRatio) {
    const auto disc = symbolImage("circle.fill", tint, 16, 1.5).value();
    EXPECT_EQ(disc.size(), QSize(24, 24));
    EXPECT_EQ(qAlpha(disc.pixel(12, 2)), 0);
    EXPECT_GT(qAlpha(disc.pixel(12, 3)), 200);
}

} // namespace
} // namespace tidewell
