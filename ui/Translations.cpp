#include "ui/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>

#include <utility>

namespace tidewell {

namespace {

// Qt reads the layout direction from its own translations (qtbase_*.qm), which not every system
// installs. The program's own say it as well.
[[maybe_unused]] constexpr const char* direction =
    QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION");

} // namespace

Translations::Translations(const QString& folder, const QLocale& locale) {
    // The last one installed is asked first.
    for (const auto& [name, place] :
         {std::pair(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)),
          std::pair(QStringLiteral("tidewell"), folder)}) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(locale, name, QStringLiteral("_"), place) &&
            QCoreApplication::installTranslator(translator.get())) {
            translators_.push_back(std::move(translator));
        }
    }
}

} // namespace tidewell
