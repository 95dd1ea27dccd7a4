#include "ui/Translations.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace tidewell {
namespace {

TEST(Translations, SpeakTheUsersLanguageAndRunItsWay) {
    for (const auto& [locale, interval, direction] : {
             std::tuple{"de_AT", "Messabstand: %1 Sekunden", Qt::LeftToRight},
             std::tuple{"ar_EG", "الفاصل بين القياسات: %1 ثوانٍ", Qt::RightToLeft},
             std::tuple{"nl_NL", "Polling interval: %1 secs", Qt::LeftToRight}, // none of ours
         }) {
        const Translations translations(QStringLiteral(TRANSLATIONS),
                                        QLocale(QLatin1String(locale)));
        const QString text = QCoreApplication::translate("tidewell::PollingSettings",
                                                         "Polling interval: %1 secs", nullptr, 5);
        EXPECT_EQ(text.toStdString(), interval);
        EXPECT_EQ(QGuiApplication::layoutDirection(), direction) << locale;
    }
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

} // namespace
} // namespace tidewell
