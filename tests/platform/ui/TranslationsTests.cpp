#include "platform/ui/Translations.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace tidewell {
namespace {

TEST(Translations, SpeakTheUsersLanguageAndRunItsWay) {
    const QString folder = QStringLiteral(TRANSLATIONS);
    const auto text = [](const char* source, int count = -1) {
        return QCoreApplication::translate("tidewell::SettingsView", source, nullptr, count)
            .toStdString();
    };
    for (const auto& [locale, general, direction] : {
             std::tuple{"de_AT", "Allgemein", Qt::LeftToRight},
             std::tuple{"ja_JP", "一般", Qt::LeftToRight},
             std::tuple{"ar_EG", "عام", Qt::RightToLeft},
             std::tuple{"nl_NL", "General", Qt::LeftToRight}, // none of ours
         }) {
        const Translations translations(folder, QLocale(QLatin1String(locale)));
        EXPECT_EQ(text("General"), general) << locale;
        EXPECT_EQ(QGuiApplication::layoutDirection(), direction) << locale;
    }
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
    const Translations translations(folder, QLocale(QLocale::German));
    EXPECT_EQ(text("Polling interval: %1 sec", 1), "Messabstand: %1 Sekunde");
    EXPECT_EQ(text("Polling interval: %1 secs", 5), "Messabstand: %1 Sekunden");
}

} // namespace
} // namespace tidewell
