#include "app/lists/ShowItemList.h"

#include "tests/fakes/ScopedEnvironment.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace tidewell {
namespace {

class ShowItemListTest : public testing::Test {
protected:
    ShowItemListTest() {
        list.resize(292, 205);
        list.show();
    }

    static std::vector<DisplayContainer> rows(int count) {
        std::vector<DisplayContainer> items;
        for (int i = 0; i < count; ++i) {
            auto& item = items.emplace_back().showItem;
            item.label = "row " + std::to_string(i);
            item.value = static_cast<std::uint64_t>(i) << 20U;
        }
        return items;
    }
    const ScopedEnvironment english{{{"LC_ALL", "en_GB.UTF-8"}}};
    ShowItemList list;
    QScrollBar& bar = *list.verticalScrollBar();
};

TEST_F(ShowItemListTest, IsWalkedByKeyboardAndStaysWhereItWas) {
    list.setItems(rows(9));
    EXPECT_EQ(bar.maximum(), 0) << "the panel's nine figures fit";
    list.setItems(rows(30));
    using Case = std::tuple<Qt::Key, std::size_t, int>;
    const int end = bar.maximum();
    for (const auto& [key, row, scrolled] :
         {Case{Qt::Key_Down, 0, 0}, Case{Qt::Key_Down, 1, 0}, Case{Qt::Key_PageDown, 8, 0},
          Case{Qt::Key_Down, 9, 23}, Case{Qt::Key_Up, 8, 23}, Case{Qt::Key_End, 29, end},
          Case{Qt::Key_Down, 29, end}, Case{Qt::Key_PageUp, 22, end}, Case{Qt::Key_Home, 0, 0},
          Case{Qt::Key_Up, 0, 0}}) {
        QTest::keyClick(&list, key);
        EXPECT_EQ(list.currentItem(), row) << key;
        EXPECT_EQ(bar.value(), scrolled) << key;
    }
    bar.setValue(228);
    list.setItems(rows(31));
    EXPECT_EQ(bar.value(), 228) << "new rows leave it where it was";
    list.setItems(rows(10));
    EXPECT_EQ(bar.value(), bar.maximum()) << "fewer rows: as far down as there are any";
}

TEST_F(ShowItemListTest, ShowsWholeRowsWhateverItsHeight) {
    list.setItems(rows(9));
    for (const int height : {205, 165, 125}) { // without prompts, with one, with two
        list.resize(292, height);
        const QRectF seen(list.viewport()->rect());
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Up, Qt::Key_PageUp}) {
            QTest::keyClick(&list, key);
            for (std::size_t row = 0; row < 9; ++row) {
                const QRectF frame = list.rowFrame(row);
                EXPECT_TRUE(seen.contains(frame) || !seen.intersects(frame)) << height << row;
            }
        }
    }
}

TEST_F(ShowItemListTest, KeepsTheFocusOnItsApplicationAndReadsItAloud) {
    auto items = rows(30);
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].usage = std::make_shared<const ApplicationUsage>(
            ApplicationUsage{.leader = static_cast<ProcessIdentifier>(100 + i),
                             .processes = 2,
                             .largest = 1234,
                             .largestCommand = "/bin/row <b> --x",
                             .resident = 5 << 20,
                             .proportional = 3 << 20,
                             .swapped = i << 20});
    }
    list.setSwapMark({.above = 1 << 20});
    list.setItems(items);
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&list);
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&list, Qt::Key_Down);
    }
    const QAccessibleInterface* const row = spoken->child(2);
    EXPECT_EQ(row->text(QAccessible::Name).toStdString(), "row 2 2 MB, Swap 2 MB");
    EXPECT_EQ(spoken->child(1)->text(QAccessible::Name).toStdString(), "row 1 1 MB");
    const std::string isolated = "\u2068/bin/row <b> --x\u2069";
    EXPECT_EQ(row->text(QAccessible::Description).toStdString(),
              "Processes: 2\nLargest process: 1234\n" + isolated +
                  "\nResident (RSS): 5 MB\nShared counted once (PSS): 3 MB\nIn swap: 2 MB");

    std::ranges::rotate(items, items.begin() + 2);
    list.setItems(items);
    EXPECT_EQ(list.currentItem(), 0U);
    EXPECT_EQ(spoken->indexOfChild(row), 0) << "still the same";
    items.erase(items.begin());
    list.setItems(items);
    EXPECT_EQ(list.currentItem(), 0U) << "its neighbour";
    list.setItems({});
    EXPECT_EQ(list.currentItem(), std::nullopt);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(list.currentItem(), std::nullopt) << "nothing to walk";
}

TEST_F(ShowItemListTest, TellsWhatAnApplicationUsesWhileThePointerIsOnItsRow) {
    auto items = rows(2);
    items[1].usage = std::make_shared<const ApplicationUsage>();
    list.setItems(items);
    const auto point = [this](std::size_t row) {
        const QPoint place = list.rowFrame(row).center().toPoint();
        QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        const auto* const tip = list.findChild<QLabel*>();
        return tip != nullptr && tip->isVisible();
    };
    EXPECT_FALSE(point(0)) << "a figure";
    ASSERT_TRUE(point(1));
    const auto* const tip = list.findChild<QLabel*>();
    EXPECT_TRUE(tip->windowFlags().testFlag(Qt::WindowTransparentForInput));
    list.setItems(items);
    EXPECT_TRUE(tip->isVisible());
    std::ranges::reverse(items);
    list.setItems(items);
    EXPECT_FALSE(tip->isVisible()) << "another row is there now";
}

TEST_F(ShowItemListTest, PaintsOnlyRowsThatLookOtherwise) {
    struct Painted : QObject {
        QRegion region;
        bool eventFilter(QObject* /*viewport*/, QEvent* event) override {
            if (event->type() == QEvent::Paint) {
                region += static_cast<QPaintEvent*>(event)->region();
            }
            return false;
        }
    } painted;
    auto items = rows(9);
    items[4].showItem.value = 5ULL << 30U;
    list.setItems(items);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    list.repaint();
    list.viewport()->installEventFilter(&painted);
    for (const auto& [grown, isSeen] : {std::pair(1U << 10U, false), std::pair(1U << 30U, true)}) {
        items[4].showItem.value += grown;
        list.setItems(items);
        QCoreApplication::processEvents();
        for (std::size_t row = 0; row < items.size(); ++row) {
            EXPECT_EQ(painted.region.intersects(list.rowFrame(row).toAlignedRect()),
                      row == 4 && isSeen)
                << row << " " << grown;
        }
    }
}

TEST_F(ShowItemListTest, CutsLabelsAndNeverByteCounts) {
    for (const auto layout : {Qt::LeftToRight, Qt::RightToLeft}) {
        list.setLayoutDirection(layout);
        auto items = rows(1);
        items[0].showItem.value = std::numeric_limits<std::uint64_t>::max(); // the longest there is
        list.setItems(items);
        const QImage unhindered = list.grab().toImage();
        items[0].showItem.label = std::string(400, 'x') + "\n\u202e";
        list.setItems(items);
        const QImage cut = list.grab().toImage();
        const QRect value(layout == Qt::LeftToRight ? 207 : 0, 0, 85, 30);
        EXPECT_EQ(cut.copy(value), unhindered.copy(value));
        EXPECT_NE(cut, unhindered);
    }
}

} // namespace
} // namespace tidewell
