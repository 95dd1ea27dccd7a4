#include "tests/fuzz/Require.h"
#include "updater/windows/NotesView.h"

#include <QApplication>
#include <QTextBlock>

#include <cstddef>
#include <cstdint>

// Qt lets the font library's tables go with the process.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so";
}

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(*count, *arguments); // to the end of the process
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const NotesView view(
        QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)).trimmed(), {});
    const QString shown = view.toPlainText();
    for (const QChar character : shown) { // neither a picture nor an override of the direction
        require(character != QChar::ObjectReplacementCharacter &&
                (character < u'\u202A' || character > u'\u202E') &&
                (character < u'\u2066' || character > u'\u2069'));
    }
    for (auto block = view.document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QUrl target(at.fragment().charFormat().anchorHref());
            require(shown.contains(target.host(QUrl::EncodeUnicode)));
        }
    }
    return 0;
}
