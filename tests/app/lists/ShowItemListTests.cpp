#include "app/lists/ShowItemList.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

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

TEST_F(ShowItemListTest, ScrollsWhatDoesNotFitByKeyboardAndStaysThere) {
    list.setItems(rows(9));
    EXPECT_EQ(bar.maximum(), 0) << "the panel's nine figures fit";
    list.setItems(rows(30));
    for (const auto& [key, expected] : {std::pair{Qt::Key_Down, 23}, {Qt::Key_PageDown, 228}}) {
        QTest::keyClick(&list, key);
        EXPECT_EQ(bar.value(), expected) << key;
    }
    list.setItems(rows(31));
    EXPECT_EQ(bar.value(), 228) << "new rows leave it where it was";
    list.setItems(rows(10));
    EXPECT_EQ(bar.value(), bar.maximum()) << "fewer rows: as far down as there are any";
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
