#include "platform/ui/Symbols.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

constexpr std::uint32_t tint = 0x34c759;

double coverage(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            sum += qAlpha(image.pixel(x, y)) / 255.0;
        }
    }
    return sum;
}

class Symbols : public testing::TestWithParam<const char*> {};

TEST_P(Symbols, AreTintedExactlyAndSymmetricAtEverySize) {
    for (const int size : {12, 16, 22, 24, 32, 44, 48, 64}) {
        const auto image = symbolImage(GetParam(), tint, size, 1);
        ASSERT_TRUE(image);
        ASSERT_EQ(image->size(), QSize(size, size));
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const QRgb pixel = image->pixel(x, y);
                EXPECT_EQ(pixel & 0xffffffU, tint);
                EXPECT_NEAR(qAlpha(pixel), qAlpha(image->pixel(size - 1 - x, y)), 1)
                    << size << " px, at " << x << "," << y;
            }
        }
        EXPECT_GT(coverage(*image), 0.08 * size * size) << size << " px: too faint to be seen";
    }
}

INSTANTIATE_TEST_SUITE_P(All, Symbols,
                         testing::Values("circle", "circle.dotted", "circle.fill",
                                         "exclamationmark.triangle"));

TEST(Symbol, EndsOnWholePixelsAndCoversWhatItsShapeDoes) {
    // Twelve of sixteen pixels: the disc's uppermost row is covered in the middle, the one above
    // it not at all.
    const auto disc = symbolImage("circle.fill", tint, 16, 1).value();
    EXPECT_EQ(qAlpha(disc.pixel(8, 1)), 0);
    EXPECT_GT(qAlpha(disc.pixel(8, 2)), 200);
    EXPECT_NEAR(coverage(disc), 3.14159 * 36, 1);
    const auto sign = symbolImage("exclamationmark.triangle", tint, 22, 1).value();
    EXPECT_EQ(qAlpha(sign.pixel(11, 18)), 255) << "the base is crisp";
    EXPECT_EQ(qAlpha(sign.pixel(11, 19)), 0);
    EXPECT_EQ(qAlpha(sign.pixel(11, 16)), 0) << "and apart from the mark";
}

TEST(Symbol, IsMadeForThePixelRatioAndUnknownNamesGiveNone) {
    const auto image = symbolImage("circle.dotted", tint, 16, 1.5).value();
    EXPECT_EQ(image.size(), QSize(24, 24));
    EXPECT_EQ(image.devicePixelRatio(), 1.5);
    EXPECT_TRUE(hasSymbol("circle"));
    EXPECT_FALSE(hasSymbol("circle.filled"));
    EXPECT_EQ(symbolImage("", tint, 16, 1), std::nullopt);
}

} // namespace
} // namespace tidewell
