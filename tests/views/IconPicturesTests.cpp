#include "views/IconPictures.h"

#include <QDir>
#include <QIcon>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(IconPictures, ShowTheThemesFilesAsTheyAreNow) {
    const QTemporaryDir folder;
    const auto path = [&folder](const char* name) {
        return folder.filePath(QString::fromLatin1(name));
    };
    const auto write = [&path](const char* name, QColor colour) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(path(name)));
    };
    ASSERT_TRUE(QDir().mkpath(path("themes/own/16")));
    QFile index(path("themes/own/index.theme"));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=own\nDirectories=16\n[16]\nSize=16\nType=Threshold\n");
    index.close();
    write("themes/own/16/known.png", Qt::red);
    write("themes/own/16/application-x-executable.png", Qt::green);
    write("file.png", Qt::blue);
    QIcon::setThemeSearchPaths({path("themes")});
    QIcon::setThemeName(QStringLiteral("own"));

    int changes = 0;
    IconPictures pictures([&changes] { ++changes; });
    const auto colourOf = [&pictures](const std::string& icon) {
        QImage canvas(16, 16, QImage::Format_ARGB32);
        canvas.fill(Qt::white);
        QPainter painter(&canvas);
        pictures.draw(painter, QRectF(0, 0, 16, 16), Image(icon));
        return canvas.pixelColor(8, 8);
    };
    EXPECT_EQ(colourOf("known"), QColor(Qt::red));
    EXPECT_EQ(colourOf("unknown"), QColor(Qt::green));
    EXPECT_EQ(colourOf(path("file.png").toStdString()), QColor(Qt::blue));
    EXPECT_EQ(colourOf("/nowhere.png"), QColor(Qt::green));

    write("file.png", Qt::yellow);
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }));
    EXPECT_EQ(colourOf(path("file.png").toStdString()), QColor(Qt::yellow));
}

} // namespace
} // namespace tidewell
