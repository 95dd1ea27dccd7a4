#include "app/panel/SampleTimes.h"
#include "app/panel/ScrollingBarChart.h"
#include "app/panel/ScrollingBarChartFixed.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/WatcherSurroundings.h"
#include "ui/Palette.h"
#include "ui/TitledBox.h"

#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::Field;

/// A window with a chart of 300 × 100 points in it, and a pointer.
class ChartTest : public WatcherSurroundings {
protected:
    void show(BarChart& chart) {
        chart.setParent(&window);
        chart.setGeometry(20, 20, 300, 100);
        window.resize(340, 140);
        window.show();
        pointAt(-10, -10); // wherever the last test left it
    }

    /// Moves the pointer to a place in the chart, y upwards from its base.
    void pointAt(int x, int y) {
        QTest::mouseMove(window.windowHandle(), QPoint(20 + x, 120 - y));
        QCoreApplication::processEvents();
    }

    ScopedEnvironment english{{{"LC_ALL", "en_GB.UTF-8"}, {"TZ", "UTC"}}};
    QWidget window;
};

class PressureChart : public ChartTest {
protected:
    static std::vector<MemoryPressureItem> samples(int first, int count) {
        std::vector<MemoryPressureItem> items;
        for (int i = first; i < first + count; ++i) {
            items.push_back({30 + i, 1000.0 + i});
        }
        return items;
    }

    ScrollingBarChartFixed chart{100, {}, 3, 0, {0, 0.0}};
};

TEST_F(PressureChart, PublishesTheSampleUnderThePointer) {
    chart.setData({{40, 1}, {0, 2}, {37, 3}, {37, 4}});
    show(chart);
    const auto timeAt = [this](int x, int y) {
        pointAt(x, y);
        const auto marked = std::ranges::count_if(chart.bars(), &VerticalBarWithExtension::hovered);
        EXPECT_EQ(marked, chart.hoverValue() == noHover ? 0 : 1);
        return chart.hoverValue().timestamp;
    };
    EXPECT_EQ(timeAt(287, 10), noHover.timestamp) << "left of the oldest";
    EXPECT_EQ(timeAt(289, 10), 1);
    EXPECT_EQ(timeAt(289, 41), noHover.timestamp) << "above it";
    EXPECT_EQ(timeAt(292, 1), noHover.timestamp) << "of no height";
    EXPECT_EQ(timeAt(295, 36), 3);
    EXPECT_EQ(timeAt(297, 36), 4) << "straight from its neighbour";
    EXPECT_EQ(timeAt(297, 38), noHover.timestamp) << "on the extension";
    EXPECT_EQ(timeAt(299, -5), noHover.timestamp) << "out of the chart";
}

TEST_F(PressureChart, ColoursEachBarByItsOwnSample) {
    chart.setData({{30, 1}, {31, 2}, {55, 3}, {56, 4}, {80, 5}, {81, 6}});
    show(chart);
    const auto is = [](Colour fill) { return Field(&VerticalBarWithExtension::fill, fill); };
    using namespace colours;
    EXPECT_THAT(chart.bars(), ElementsAre(is(lightGray), is(systemGreen), is(systemGreen),
                                          is(systemOrange), is(systemOrange), is(systemRed)));
}

TEST_F(PressureChart, TellsARestingPointerOfTheBarsThatMoveUnderIt) {
    chart.setData(samples(0, 10));
    show(chart);
    pointAt(280, 10); // the fourth
    ASSERT_EQ(chart.hoverValue(), samples(3, 1)[0]);
    chart.setData(samples(0, 11));
    EXPECT_EQ(chart.hoverValue(), samples(4, 1)[0]) << "appearing first, the pointer's bar last";
    EXPECT_FALSE(chart.bars()[3].hovered);

    auto next = samples(1, 10);
    next.push_back({5, 2000});
    chart.setData(next); // full: the oldest goes
    EXPECT_EQ(chart.hoverValue(), samples(5, 1)[0]);

    pointAt(298, 3);
    ASSERT_EQ(chart.hoverValue().timestamp, 2000);
    next.push_back({1, 2002});
    chart.setData(next);
    EXPECT_EQ(chart.hoverValue(), noHover) << "the newest is too low for the pointer";
    next.pop_back();
    chart.setData(next);
    EXPECT_EQ(chart.hoverValue().timestamp, 2000) << "a bar that was there does not appear";
}

TEST_F(PressureChart, ForgetsThePointerWhenItIsHidden) {
    chart.setData(samples(0, 10));
    show(chart);
    pointAt(298, 10);
    window.hide();
    EXPECT_EQ(chart.hoverValue(), noHover);
    chart.setData(samples(0, 12));
    EXPECT_THAT(chart.bars(), testing::IsEmpty()) << "no work while hidden";
    window.show();
    EXPECT_THAT(chart.bars(), testing::SizeIs(12));
    EXPECT_EQ(chart.hoverValue(), noHover);
}

TEST_F(PressureChart, PublishesWhatTheArrowKeysMark) {
    chart.setData({{40, 1}, {0, 2}, {37, 3}, {36, 4}});
    show(chart);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Tab);
    ASSERT_TRUE(chart.hasFocus());
    using Case = std::pair<Qt::Key, double>;
    for (const auto& [key, time] :
         {Case{Qt::Key_Left, 4}, Case{Qt::Key_Left, 3}, Case{Qt::Key_Left, 1},
          Case{Qt::Key_Left, 1}, Case{Qt::Key_Right, 3}, Case{Qt::Key_Home, 1},
          Case{Qt::Key_End, 4}, Case{Qt::Key_Escape, noHover.timestamp}, Case{Qt::Key_Right, 4}}) {
        QTest::keyClick(&chart, key);
        EXPECT_EQ(chart.hoverValue().timestamp, time) << key;
    }
    chart.setData({{40, 1}, {0, 2}, {37, 3}, {36, 4}, {50, 5}});
    EXPECT_EQ(chart.hoverValue().timestamp, 4) << "stays on its sample";
    pointAt(292, 10);
    EXPECT_EQ(chart.hoverValue().timestamp, 3) << "the pointer has the last word";
    EXPECT_EQ(chart.itemText(0), QStringLiteral("40% at 00:00:01"));
}

TEST_F(PressureChart, StaysOffTheLineOfItsBox) {
    QWidget ground;
    auto* const inBox = new ScrollingBarChartFixed(100, {{100, 1}}, 3, 0, noHover);
    TitledBox box({}, inBox, &ground);
    box.setContentMargins({0, 4, 0, 4});
    box.resize(300, 128);
    ground.setPalette(paletteFor(Appearance::light));
    ground.show();
    const QImage image = ground.grab().toImage();
    const QColor bar = toQColor(colours::systemRed, Appearance::light);
    EXPECT_NE(image.pixelColor(299, 60), bar) << "the line";
    EXPECT_EQ(image.pixelColor(298, 60), bar);
    EXPECT_NE(image.pixelColor(298, 123), bar) << "the corner";
}

TEST(SampleTimes, TellGapsAndSpan) {
    const ScopedEnvironment english{{{"LC_ALL", "en_GB.UTF-8"}}};
    using Case = std::tuple<std::vector<double>, std::vector<std::size_t>, const char*>;
    for (const auto& [times, gaps, span] :
         {Case{{}, {}, ""}, Case{{7}, {}, ""}, Case{{0, 1, 2, 3, 6.5}, {4}, "last 7 s"},
          Case{{0, 60, 120, 480, 540}, {3}, "last 9 min"},
          Case{{0, 3000, 6000}, {}, "last 1 h 40 min"},
          Case{{0, 1, 2, 90'000 * 3}, {3}, "last 3 d"}, Case{{5, 5, 5.4}, {}, ""},
          Case{{3, 2, 1}, {}, ""}}) {
        EXPECT_EQ(gapsBefore(times), gaps) << span;
        EXPECT_EQ(spanText(times), QString::fromLatin1(span));
    }
}

TEST(Labels, ArePaddedToEightCharactersAsReadersCountThem) {
    for (const auto& [text, padded] :
         {std::pair{"1023.9 MB", "1023.9 MB"},
          {"١٫٢ GB", "  ١٫٢ GB"},
          {"e\u0301🇩🇪👩‍👩‍👧 MB", "  e\u0301🇩🇪👩‍👩‍👧 MB"}}) {
        EXPECT_EQ(paddedLabel(text), padded);
    }
}

class SwapChart : public ChartTest {
protected:
    std::vector<std::string> labels() const {
        std::vector<std::string> texts;
        for (const auto& bar : chart.bars()) {
            texts.push_back(bar ? bar->label : "none");
        }
        return texts;
    }

    static constexpr std::int64_t gigabyte = 1 << 30;
    ScrollingBarChart chart{watcher, {}, 22.1, 1.0};
};

TEST_F(SwapChart, ShowsTheTimeOfTheBarUnderThePointer) {
    chart.setData({{gigabyte, 1}, {0, 2}, {2 * gigabyte, 3}, {4 * gigabyte, 4}});
    show(chart);
    const std::vector<std::string> values{"    1 GB", "none", "    2 GB", "    4 GB"};
    const auto timeAt = [&](int x, int y) {
        pointAt(x, y);
        std::string times;
        for (std::size_t i = 0; i < values.size(); ++i) {
            times += labels()[i] == values[i] ? "" : labels()[i];
        }
        return times;
    };
    EXPECT_EQ(timeAt(290, 81), "") << "above it";
    EXPECT_EQ(timeAt(290, 79), "00:00:04");
    EXPECT_EQ(timeAt(256, 39), "00:00:03") << "straight from its neighbour";
    EXPECT_EQ(timeAt(277, 39), "") << "the gap";
    EXPECT_EQ(timeAt(240, 1), "") << "an empty slot";
    EXPECT_EQ(timeAt(212, 19), "00:00:01");
    EXPECT_EQ(timeAt(212, 22), "") << "on the label above the bar";
    EXPECT_EQ(timeAt(290, -1), "") << "out of the chart";
}

TEST_F(SwapChart, KnowsItsBarsByTheirPlace) {
    std::vector<SwapItem> items{{1024, 1}, {2048, 2}, {2048, 3}};
    chart.setData(items);
    show(chart);
    pointAt(290, 1);
    items.push_back({2048, 4}); // moves the bars on
    chart.setData(items);
    EXPECT_THAT(labels(), ElementsAre("    1 KB", "    2 KB", "    2 KB", "00:00:04"));
    items = {{2048, 2}, {2048, 3}, {2048, 4}, {3072, 5}}; // full: the samples move on
    chart.setData(items);
    EXPECT_THAT(labels(), ElementsAre("    2 KB", "    2 KB", "    2 KB", "00:00:05"));
    items.back().value = 1;
    chart.setData(items);
    EXPECT_EQ(labels().back(), "  1 byte") << "too low for the pointer";
    const QImage lowest = chart.grab().toImage();
    const auto inLastBar = [&](int above) {
        return lowest.pixelColor(lowest.width() - 3, lowest.height() - 1 - above);
    };
    EXPECT_NE(inLastBar(0), inLastBar(1)) << "a bar that is there is seen";

    items.assign(100, {4096, 6});
    chart.setData(items);
    EXPECT_EQ(labels().size(), 13U) << "what is beyond the edge is not made";
    EXPECT_EQ(labels().back(), "00:00:06");
}

TEST_F(SwapChart, TakesTheColourOfTheLevelForAllBars) {
    const std::vector<SwapItem> items{{100, 1}, {100, 2}};
    chart.setData(items);
    show(chart);
    EXPECT_EQ(chart.bars()[0]->barColor, colours::lightGray);
    probes.swap->used = *probes.physical;
    watcher->startPeriodicTask();
    settle();
    chart.setData(items);
    EXPECT_EQ(chart.bars()[0]->barColor, colours::systemOrange);
}

} // namespace
} // namespace tidewell
