#include "desktop/appearance/IconThemes.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QIcon>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(IconThemes, AreTheInstalledOnesThatAreChosenAndACompleteOneBehindThem) {
    const TemporaryFolder folder;
    for (const char* file : {"Chosen/index.theme", "breeze/index.theme", "gtk-3.0/settings.ini"}) {
        create_directories((folder.path() / file).parent_path());
        writeText(folder.path() / file, "[Settings]\ngtk-icon-theme-name=Chosen\n");
    }
    const ScopedEnvironment environment({{"XDG_CONFIG_HOME", folder.path().string()}});
    QIcon::setThemeSearchPaths({QString::fromStdString(folder.path())});
    useInstalledIconThemes();
    EXPECT_EQ(QIcon::themeName().toStdString(), "Chosen");
    EXPECT_FALSE(useIconTheme(QStringLiteral("missing")));
    EXPECT_EQ(QIcon::themeName().toStdString(), "Chosen");
    EXPECT_TRUE(useIconTheme(QStringLiteral("breeze")));
    EXPECT_EQ(QIcon::themeName().toStdString(), "breeze");
    EXPECT_EQ(QIcon::fallbackThemeName().toStdString(), "breeze");
}

} // namespace
} // namespace tidewell
