#include "ui/Translations.h"

#include "tests/fakes/ScopedEnvironment.h"
#include "ui/TextDirection.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace tidewell {
namespace {

TEST(Translations, SpeakTheUsersLanguageAndRunItsWay) {
    for (const auto& [locale, interval, direction, percent] : {
             std::tuple{"de_AT", "Messabstand: %1 Sekunden", Qt::LeftToRight, "67%"},
             // The sign stays behind the digits within text that runs the other way.
             std::tuple{"ar_EG", "الفاصل بين القياسات: %1 ثوانٍ", Qt::RightToLeft,
                        "\u2066٦٧%\u2069"},
             std::tuple{"nl_NL", "Polling interval: %1 secs", Qt::LeftToRight, "67%"}, // not ours
         }) {
        const Translations translations(QStringLiteral(TRANSLATIONS),
                                        QLocale(QLatin1String(locale)));
        const QString text = QCoreApplication::translate("tidewell::PollingSettings",
                                                         "Polling interval: %1 secs", nullptr, 5);
        EXPECT_EQ(text.toStdString(), interval);
        EXPECT_EQ(QGuiApplication::layoutDirection(), direction) << locale;
        const ScopedEnvironment digits({{"LC_ALL", std::string(locale) + ".UTF-8"}});
        EXPECT_EQ(percentText(67).toStdString(), percent) << locale;
    }
    EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

} // namespace
} // namespace tidewell
