#include "app/lists/IconPictures.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QIcon>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(IconPictures, ShowTheThemesFilesAsTheyAreNow) {
    const TemporaryFolder folder;
    const auto write = [&folder](const std::string& name, QColor colour) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(QString::fromStdString(folder.write(name, ""))));
    };
    folder.write("own/index.theme",
                 "[Icon Theme]\nName=own\nDirectories=16\n[16]\nSize=16\nType=Threshold\n");
    write("own/16/known.png", Qt::red);
    write("own/16/application-x-executable.png", Qt::green);
    write("file.png", Qt::blue);
    QIcon::setThemeSearchPaths({QString::fromStdString(folder.path())});
    QIcon::setThemeName(QStringLiteral("own"));

    int changes = 0;
    IconPictures pictures([&changes] { ++changes; });
    const auto colourOf = [&pictures](const std::string& name, const std::string& content = {}) {
        QImage canvas(16, 16, QImage::Format_ARGB32);
        canvas.fill(Qt::white);
        QPainter painter(&canvas);
        pictures.draw(painter, QRectF(0, 0, 16, 16), ThemeIcon(name, content));
        return canvas.pixelColor(8, 8);
    };
    EXPECT_EQ(colourOf("known"), QColor(Qt::red));
    EXPECT_EQ(colourOf("unknown"), QColor(Qt::green));
    EXPECT_EQ(colourOf("/file", readText(folder.path() / "file.png")), QColor(Qt::blue));
    EXPECT_EQ(colourOf((folder.path() / "file.png").string()), QColor(Qt::green)) << "not read";

    write("own/16/unknown.png", Qt::yellow);
    folder.write("own/touched", "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }));
    EXPECT_EQ(colourOf("unknown"), QColor(Qt::yellow));
}

} // namespace
} // namespace tidewell
