#include "platform/linux/IconThemes.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QIcon>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(IconThemes, AreTheConfiguredOneAndACompleteOneWhereTheToolkitKnowsNone) {
    const TemporaryFolder folder;
    for (const char* theme : {"hicolor", "Chosen", "breeze"}) {
        create_directories(folder.path() / "icons" / theme);
        writeText(folder.path() / "icons" / theme / "index.theme", "[Icon Theme]\nName=x\n");
    }
    create_directory(folder.path() / "gtk-3.0");
    const ScopedEnvironment environment({{"XDG_CONFIG_HOME", folder.path().string()}});
    QIcon::setThemeSearchPaths({QString::fromStdString((folder.path() / "icons").string())});

    const auto use = [&](const char* present, const char* configured) {
        QIcon::setThemeName(QString::fromLatin1(present));
        writeText(folder.path() / "gtk-3.0/settings.ini",
                  "[Settings]\ngtk-icon-theme-name=" + std::string(configured) + "\n");
        useInstalledIconThemes();
        return QIcon::themeName().toStdString();
    };
    EXPECT_EQ(use("hicolor", "Chosen"), "Chosen");
    EXPECT_EQ(use("breeze", "Chosen"), "breeze") << "the desktop's own choice";
    EXPECT_EQ(use("hicolor", "missing"), "hicolor");
    EXPECT_EQ(QIcon::fallbackThemeName().toStdString(), "breeze");
}

} // namespace
} // namespace tidewell
