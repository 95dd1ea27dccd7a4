#include "desktop/appearance/IconThemes.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QIcon>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(IconThemes, AreTheInstalledOnesThatAreChosenAndACompleteOneBehindThem) {
    const TemporaryFolder folder;
    for (const char* file : {"Chosen/index.theme", "breeze/index.theme"}) {
        create_directories((folder.path() / file).parent_path());
        writeText(folder.path() / file, {});
    }
    QIcon::setThemeSearchPaths({QString::fromStdString(folder.path())});
    useCompleteIconTheme();
    EXPECT_EQ(QIcon::fallbackThemeName().toStdString(), "breeze");
    EXPECT_TRUE(useIconTheme(QStringLiteral("Chosen")));
    EXPECT_FALSE(useIconTheme(QStringLiteral("missing")));
    EXPECT_EQ(QIcon::themeName().toStdString(), "Chosen");
}

} // namespace
} // namespace tidewell
