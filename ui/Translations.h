#pragma once

#include <QLocale>
#include <QString>
#include <QTranslator>

#include <memory>
#include <vector>

namespace tidewell {

/// The program's texts, and Qt's own, in the user's language as long as this lives; what
/// has no translation stays as it is in the code. Layouts run from right to left in the languages
/// that are written so. After the application object, before any text is shown. Main thread.
class Translations {
public:
    /// `folder` holds the program's own translations. The locale is the user's.
    explicit Translations(const QString& folder, const QLocale& locale = QLocale());
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;
    ~Translations() = default; // a translator that goes is no longer asked

private:
    std::vector<std::unique_ptr<QTranslator>> translators_;
};

} // namespace tidewell
